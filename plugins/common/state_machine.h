/// A machine that travels between up to ten poses, and as a camera between ten lenses too.
///
/// There are no transitions: the present input alone says which state is wanted, and the machine
/// goes there on a soft line within limits. All poses are those in the frame of the machine's cage.
#pragma once

#include "plugins/common/helper_meshes.h"
#include "plugins/common/tool_object.h"
#include "util/transform.h"

#include <array>
#include <utility>

namespace tvw::rgs::machine {

inline constexpr std::size_t kStates = 10;

/// How the machine goes to a state. A limit of 0 is none. Factors are shares of the way per 0.04 s;
/// at 0, and where a frame covers all of the way, the state is reached at once.
struct StateLimits
{
    double dMaxVel = 0.0;    ///< [units of the cage / s]
    double dMaxAngVel = 0.0; ///< [degrees/s]
    double dVelRespFactor = 0.1;
    double dRotVelRespFactor = 0.1;
    double dMaxFov = 0.0; ///< [degrees/s]
    double dFovRespFactor = 0.1;
    double dMaxTargetDist = 0.0; ///< [units/s]
    double dTDistRespFactor = 0.1;
};

struct Lens
{
    double fieldOfView = 0.0; ///< [degrees]
    double targetDistance = 0.0;
};

/// One frame of dt [s]. memory: the first of two filters in series; current: the pose of the frame
/// before, and then of this one.
void travel(QTransformd& current, QTransformd& memory, const QTransformd& wanted,
            const StateLimits& limits, double dt);
void travel(Lens& current, const Lens& wanted, const StateLimits& limits, double dt);

struct Settings : GeneralModes
{
    bool bSimplifiedSettings = true; ///< `simplified` for all states
    StateLimits simplified;
    std::array<StateLimits, kStates> states;

    constexpr Settings(const StateLimits& all, const StateLimits& each) : simplified(all)
    {
        states.fill(each);
    }

    /// state: 1 to 10.
    constexpr const StateLimits& limitsOf(std::size_t state) const
    {
        return bSimplifiedSettings ? simplified : states[state - 1];
    }
};

enum NodeIndex : std::size_t { kCage, kCurrent, kFirstState };

inline constexpr std::string_view kNumbers[kStates] = {"01", "02", "03", "04", "05",
                                                       "06", "07", "08", "09", "10"};
inline constexpr std::string_view kWantedState = "WantedState";
inline constexpr std::string_view kInitialize = "Initialize";
inline constexpr std::string_view kHideHelpers = "Hide Helpers";
inline constexpr std::string_view kHideDuringRecording = "Hide Helpers During Recording";

/// Where a state stands at first: on a circle about the cage's Y axis, facing outward.
Matrix4 placeOnCircle(std::size_t index);

/// The cage, the machine, and its states in the cage. kind: a `nodekind`; mesh: of the machine and
/// the states. Where the states are is the user's: a run leaves their keys alone.
constexpr std::array<NodeRow, kFirstState + kStates> nodeRows(std::int64_t kind, CMesh (*mesh)())
{
    std::array<NodeRow, kFirstState + kStates> rows{};
    rows[kCage] = {.prefix = {},
                   .name = "RelativeCageMesh",
                   .mesh = &shape::relativeCage,
                   .color = kReferenceColor,
                   .keyed = false,
                   .selected = true};
    rows[kCurrent] = {
        .prefix = {}, .name = "CurrentState", .mesh = mesh, .parent = kCage, .kind = kind};
    const auto fill = [&]<std::size_t... I>(std::index_sequence<I...>)
    {
        ((rows[kFirstState + I] = {.prefix = kNumbers[I],
                                   .name = kWantedState,
                                   .mesh = mesh,
                                   .color = kCameraColor,
                                   .parent = kCage,
                                   .kind = kind,
                                   .place = [] { return placeOnCircle(I); },
                                   .keyed = false}),
         ...);
    };
    fill(std::make_index_sequence<kStates>{});
    return rows;
}

/// An input for each state, by the state's name.
constexpr std::array<InputRow, kStates> inputRows()
{
    constexpr std::uint32_t kAll = 15;
    std::array<InputRow, kStates> rows{};
    for (std::size_t i = 0; i < kStates; ++i)
        rows[i] = {.prefix = kNumbers[i], .name = kWantedState, .kindMask = kAll};
    return rows;
}

/// A group of items for each state. Rows: has a static `make<Access>()` with the rows of the
/// `StateLimits` that the captureless lambda Access reaches from S&.
template <class S, class Rows>
constexpr auto stateGroups()
{
    const auto group = []<std::size_t I>() {
        const std::array head{Item<S>{
            .kind = ItemKind::Group, .owner = kNumbers[I], .label = kWantedState, .tooltip = {}}};
        return join(head, Rows::template make<[](S& s) -> StateLimits& { return s.states[I]; }>(),
                    std::array{Items<S>::end()});
    };
    return [&]<std::size_t... I>(std::index_sequence<I...>)
    {
        return join(group.template operator()<I>()...);
    }
    (std::make_index_sequence<kStates>{});
}

/// The first rows of the table, up to the limits of all states.
template <class S>
constexpr auto firstItems(std::string_view group, std::string_view simplifiedTip)
{
    using I = Items<S>;
    return std::array{
        I::group("General Modes"),
        I::template checkBox<&S::hideHelpers>(kHideHelpers, kHideHelpers, kHeard),
        I::template checkBox<&S::hideDuringRecording>(kHideDuringRecording, kHideDuringRecording),
        I::end(),
        I::group(group),
        I::template checkBox<&S::bSimplifiedSettings>("Use Simplified Settings", simplifiedTip),
    };
}

/// The last ones: the end of the parameters, and the button, last so that it moves no item's
/// number.
template <class S>
constexpr auto lastItems()
{
    using I = Items<S>;
    return std::array{
        I::end(),
        I::group("Initialization"),
        I::button(kInitialize, "The next run starts from where the CurrentState stands then."),
        I::end(),
    };
}

} // namespace tvw::rgs::machine

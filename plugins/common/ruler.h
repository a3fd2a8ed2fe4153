/// Tools that measure something between nodes and give it out, beside where it stands between two
/// limits. They move nothing.
#pragma once

#include "plugins/common/accessory_meshes.h"
#include "plugins/common/tool_object.h"

#include <algorithm>
#include <string>

namespace tvw::rgs {

namespace ruler {

inline constexpr std::string_view kUpdateValues = "Update Values";
inline constexpr std::string_view kHideDuringRecording = "Hide Helpers During Recording";

struct Limits
{
    double minimum;
    double maximum;

    /// 0 at the minimum and below, 1 at the maximum and above.
    constexpr double fraction(double value) const
    {
        if (minimum == maximum)
            return value >= maximum ? 1.0 : 0.0;
        return std::clamp(1.0 - (maximum - value) / (maximum - minimum), 0.0, 1.0);
    }

    /// A value that equals a limit triggers nothing.
    constexpr double above(double value) const { return value > maximum ? 1.0 : 0.0; }
    constexpr double below(double value) const { return value < minimum ? 1.0 : 0.0; }
};

/// A trigger is 0 or 1, and fits inputs for buttons and for axes.
inline constexpr auto kTrigger =
    static_cast<std::int32_t>(unidevice::kind::binary | unidevice::kind::analogue);

/// A point that the user moves or links to what is measured.
constexpr NodeRow pointRow(std::string_view name, Matrix4 (*place)() = nullptr)
{
    return {.prefix = {},
            .name = name,
            .mesh = &shape::measuringPoint,
            .color = kReferenceColor,
            .place = place,
            .keyed = false};
}

/// The row of a tool's first point, which is selected when the tool is made.
constexpr NodeRow selected(NodeRow row)
{
    row.selected = true;
    return row;
}

template <class S>
constexpr auto generalItems()
{
    using I = Items<S>;
    return std::array{
        I::group("General Modes"),
        I::template checkBox<&S::hideDuringRecording>(kHideDuringRecording, kHideDuringRecording),
        I::end(),
    };
}

} // namespace ruler

template <class S>
class RulerTool : public Tool<S>
{
protected:
    using Tool<S>::Tool;

    /// Reads the nodes at a time [s] into the settings, which the spinners and the outputs show.
    virtual void measure(double time) = 0;

    /// Registers what was measured under its names first, in the tool's constructor.
    void keepFlagsAndLimits(std::span<ruler::Limits* const> limits)
    {
        constexpr std::size_t kFlags = 2;
        PackedState& packed = this->state().packed("sDataChunkSaveStruct",
                                                   limits.size() * sizeof(ruler::Limits) + kFlags);
        for (ruler::Limits* const each : limits)
            packed.field(each->minimum).field(each->maximum);
        packed.field(this->settings.hideHelpers).field(this->settings.hideDuringRecording);
    }

private:
    bool recordsState() const override { return false; }
    void runStarts(double time) override { measure(time); }
    void step(double time) override { measure(time); }

    void itemActed(std::string_view label) override
    {
        if (label != ruler::kUpdateValues)
            return;
        this->state().pushUndo(this->runtime());
        measure(this->runtime().getTime());
        this->runtime().updateConfiguration();
    }
};

} // namespace tvw::rgs

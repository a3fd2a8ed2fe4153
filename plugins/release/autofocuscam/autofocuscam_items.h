/// The Zoom&FocusCam's parameters, and the tables that show them.
#pragma once

#include "plugins/common/actuator_channel.h"
#include "plugins/common/camera_items.h"
#include "plugins/common/helper_meshes.h"

namespace tvw::rgs::addon::autofocuscam {

struct Settings : CameraModes
{
    constexpr Settings() { hideCamera = true; }

    bool bUseSpherical = false;          ///< focus on a sphere round the camera, else on a plane
    double maxFOV = 140.0;               ///< [degrees]
    double minFOV = 0.01;                ///< [degrees]
    double integrationSpeedExponent = 5; ///< the angle is the zoom's sum to this power
    ActuatorSettings focus{.responseFactor = 0.2, .changeLimit = 20.0};
    ActuatorSettings zoom{.responseFactor = 0.7, .changeLimit = 0.3, .integrate = true};
    double currentFov = 50.0; ///< shown [degrees]
};

using S = Settings;
using I = Items<Settings>;

inline constexpr std::string_view kCurrentFov = "Current FOV";

template <auto Channel>
constexpr std::array<Item<S>, 4> channelItems(std::string_view name)
{
    return {
        I::spinner<[](S& s) -> double& { return (s.*Channel).responseFactor; }>(
            " Response Factor", "How quickly to respond to input value changes.", {0, 100, 0.001},
            kLive, name),
        I::spinner<[](S& s) -> double& { return (s.*Channel).changeLimit; }>(
            " Speed", "This parameter limits the rate of change (the velocity) of the input.",
            {0, 1000, 0.01}, kLive, name),
        I::checkBox<[](S& s) -> bool& { return (s.*Channel).keepState; }>(
            " Keep Binary State",
            "If checked the input value is held until activated again by which it returns to zero. "
            "If an analog input is used the trigger value is 0.5 (or -0.5).",
            kPlain, name),
        I::checkBox<[](S& s) -> bool& { return (s.*Channel).integrate; }>(
            " Integrate",
            "If checked the input value is integrated (the value is increased/decreased until the "
            "input value is zero again).",
            kPlain, name),
    };
}

inline constexpr auto kItems = join(
    hideItems<S>("General Modes"),
    std::array{
        I::group("Focus Parameters"),
        I::checkBox<&S::bUseSpherical>(
            "Use spherical focal surface",
            "When checked the focal distance is equal to the distance from the camera to the "
            "CurrFocalPoint. When unchecked the focus is located in a plane orthogonal to the "
            "front "
            "direction of the camera."),
        I::end(),
        I::group("Zoom Parameters"),
        I::spinner<&S::maxFOV>(
            "Maximum FOV", "The maximum value of the camera's Field of View (the minimum zoom).",
            {0, 179, 0.01}, kLive),
        I::spinner<&S::minFOV>(
            "Minimum FOV", "The minimum value of the camera's Field of View (the maximum zoom).",
            {0, 179, 0.01}, kLive),
        I::spinner<&S::integrationSpeedExponent>("Integration Speed Exponent",
                                                 "Change Speed = c*Input*(180-curr_FOV)^exponent.",
                                                 {0, 1e7, 0.01}, kLive),
        I::end(),
        I::group("Input Property Parameters"),
    },
    channelItems<&S::focus>("Focal Position"), channelItems<&S::zoom>("Zoom"),
    std::array{
        I::end(),
        I::group("Current Zoom Values"),
        I::spinner<&S::currentFov>(kCurrentFov, "The current Field of View value of the camera.",
                                   {0, 179, 0.01}, kHeard),
        I::end(),
    });
static_assert(isSound(kItems));

enum NodeIndex : std::size_t { kCamera, kFocalTarget1, kFocalTarget2, kCurrFocalPoint };

template <int Distance>
Matrix4 ahead()
{
    Matrix4 place;
    setTranslation(place, {0, 0, -Distance});
    return place;
}

inline constexpr NodeRow kNodes[] = {
    {.prefix = {},
     .name = "Camera",
     .mesh = &shape::camera,
     .color = kCameraColor,
     .kind = nodekind::camera,
     .group = NodeGroup::First,
     .keyed = false,
     .selected = true},
    {.prefix = {},
     .name = "FocalTarget_1",
     .mesh = &shape::target,
     .color = kReferenceColor,
     .place = &ahead<3>,
     .keyed = false},
    {.prefix = {},
     .name = "FocalTarget_2",
     .mesh = &shape::target,
     .color = kReferenceColor,
     .place = &ahead<8>,
     .keyed = false},
    {.prefix = {}, .name = "CurrFocalPoint", .mesh = &shape::target, .place = &ahead<3>},
};

enum Input : std::size_t { kFocus, kZoom };

inline constexpr std::uint32_t kAxis =
    unidevice::kind::trinary | unidevice::kind::analogue | unidevice::kind::unbounded;

inline constexpr InputRow kInputs[] = {
    {.prefix = {}, .name = "Focal Position", .kindMask = kAxis},
    {.prefix = {}, .name = "Zoom", .kindMask = kAxis},
};

inline constexpr ToolSpec kSpec{.nodes = kNodes, .inputs = kInputs, .switches = kCameraSwitches};

} // namespace tvw::rgs::addon::autofocuscam

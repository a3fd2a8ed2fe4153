/// The RayCaster's parameters, and the tables that show them.
#pragma once

#include "plugins/common/accessory_meshes.h"
#include "plugins/common/tool_object.h"

namespace tvw::rgs::addon::raycaster {

struct Settings : GeneralModes
{
    bool bAlingRayHitNodeToNormal = true; ///< else it is oriented as the origin is
    double maximumRayDistance = 0.0;      ///< [scene units]; 0: none
};

inline constexpr std::string_view kHideHelpers = "Hide Helpers";
inline constexpr std::string_view kHideDuringRecording = "Hide Helpers During Recording";
inline constexpr std::string_view kInitialize = "Initialize RayCaster";

using S = Settings;
using I = Items<Settings>;

inline constexpr std::array kItems{
    I::group("General Modes"),
    I::checkBox<&S::hideHelpers>(kHideHelpers, kHideHelpers, kHeard),
    I::checkBox<&S::hideDuringRecording>(kHideDuringRecording, kHideDuringRecording),
    I::end(),
    I::group("RayCaster Parameters"),
    I::button(
        kInitialize,
        "Casts a ray in the RayOrigin -z direction and places the RayHit mesh at the hit position"),
    I::checkBox<&S::bAlingRayHitNodeToNormal>(
        "Align RayHit to hit surface normal",
        "When checked the RayHit mesh will be aligned to the hit surface normal. If unchecked the "
        "RayHit node will have the same orientation as the RayOrigin mesh."),
    I::spinner<&S::maximumRayDistance>("Maximum Ray Distance", "The maximum distance for the ray.",
                                       {0, 1000000.0, 0.001}),
    I::end(),
};
static_assert(isSound(kItems));

/// Two units above the ground, looking down at it.
inline Matrix4 aboveGround()
{
    constexpr double kHeight = 2.0;
    Matrix4 onThirdAxis;
    setTranslation(onThirdAxis, {0, 0, kHeight});
    return rotationMatrix(-90, 1, 0, 0) * onThirdAxis;
}

inline constexpr Color kRayColor{0.78431374F, 0.8235294F, 0.5882353F};

enum NodeIndex : std::size_t { kRayOrigin, kRayHit, kHitSurfaceChild };

inline constexpr NodeRow kNodes[] = {
    {.prefix = {},
     .name = "RayOrigin",
     .mesh = &shape::rayOrigin,
     .color = kRayColor,
     .place = &aboveGround,
     .keyed = false,
     .selected = true},
    {.prefix = {}, .name = "RayHit", .mesh = &shape::rayHit},
    {.prefix = {},
     .name = "HitSurfaceChild",
     .mesh = &shape::surfaceMark,
     .color = kReferenceColor,
     .keyed = false},
};

inline constexpr ToolSpec kSpec{.nodes = kNodes};

} // namespace tvw::rgs::addon::raycaster

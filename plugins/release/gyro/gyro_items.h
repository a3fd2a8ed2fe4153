/// The Gyro's parameters, and the tables that show them.
#pragma once

#include "plugins/common/helper_meshes.h"
#include "plugins/common/tool_object.h"

namespace tvw::rgs::addon::gyro {

enum Restriction : std::int32_t { kYawOnly, kPitchOnly, kRollOnly };

inline constexpr std::string_view kRestrictions[] = {"Yaw only", "Pitch only", "Roll only"};

struct Settings : GeneralModes
{
    bool gyroRotation = true;            ///< else the gyro turns as the eye does
    std::int32_t restriction = kYawOnly; ///< which turn passes the gyro
    bool gyroRotX = true;                ///< held against the eye's turn about that axis; these
    bool gyroRotY = false;               ///< three follow the restriction
    bool gyroRotZ = true;
    bool projectX = false; ///< the eye's position along the pivot's axis passes
    bool projectY = false;
    bool projectZ = false;
    bool projectXScale = false; ///< the eye's scale passes
    bool projectYScale = false;
    bool projectZScale = false;
};

using S = Settings;
using I = Items<Settings>;

inline constexpr std::array kItems{
    I::group("General Modes"),
    I::checkBox<&S::hideHelpers>("Hide Helpers", {}, kHeard),
    I::checkBox<&S::hideDuringRecording>("Hide Helpers During Recording", {}),
    I::checkBox<&S::wireframe>("Wireframe Mode", {}, kHeard),
    I::end(),
    I::group("Gyro"),
    I::checkBox<&S::gyroRotation>("Enable Gyro", "Enables rotational gyro effect"),
    I::comboBox<&S::restriction>("Gyro Restriction", "Specifies the gyro restriction",
                                 kRestrictions),
    I::end(),
    I::group("Clone Eye's Position"),
    I::checkBox<&S::projectX>("Clone X-axis", {}),
    I::checkBox<&S::projectY>("Clone Y-axis", {}),
    I::checkBox<&S::projectZ>("Clone Z-axis", {}),
    I::end(),
    I::group("Clone Eye's Scale"),
    I::checkBox<&S::projectXScale>("Clone X-axis", {}),
    I::checkBox<&S::projectYScale>("Clone Y-axis", {}),
    I::checkBox<&S::projectZScale>("Clone Z-axis", {}),
    I::end(),
};
static_assert(isSound(kItems));

enum NodeIndex : std::size_t { kPivot, kEye, kGyro };

inline constexpr NodeRow kNodes[] = {
    {.prefix = {},
     .name = "pivot",
     .mesh = &shape::relativeCage,
     .color = kReferenceColor,
     .keyed = false},
    {.prefix = {},
     .name = "eye",
     .mesh = &shape::target,
     .color = kReferenceColor,
     .keyed = false,
     .selected = true},
    {.prefix = {}, .name = "gyro", .mesh = &shape::actuator},
};

inline constexpr ToolSpec kSpec{.nodes = kNodes};

} // namespace tvw::rgs::addon::gyro

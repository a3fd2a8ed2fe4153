/// The switches that nearly all cameras begin with.
#pragma once

#include "plugins/common/items.h"
#include "plugins/common/tool_object.h"

#include <array>

namespace tvw::rgs {

struct CameraModes : GeneralModes
{
    bool hideCamera = false; ///< nodes of NodeGroup::First
};

inline constexpr std::string_view kHideCamera = "Hide Camera";

/// A group with "Hide Helpers", "Hide Helpers During Recording" and "Hide Camera". S derives from
/// CameraModes.
template <class S>
constexpr std::array<Item<S>, 5> hideItems(std::string_view group)
{
    using I = Items<S>;
    constexpr std::string_view kHelpers = "Hide Helpers";
    constexpr std::string_view kDuring = "Hide Helpers During Recording";
    return {I::group(group), I::template checkBox<&S::hideHelpers>(kHelpers, kHelpers, kHeard),
            I::template checkBox<&S::hideDuringRecording>(kDuring, kDuring),
            I::template checkBox<&S::hideCamera>(kHideCamera, kHideCamera, kHeard), I::end()};
}

inline constexpr HideSwitch kCameraSwitches[] = {
    hideSwitch<CameraModes, &CameraModes::hideCamera>(kHideCamera, NodeGroup::First)};

} // namespace tvw::rgs

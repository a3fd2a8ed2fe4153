/// Ids in the layout "rgs_main.xml".
#pragma once

namespace tvw::rgs::app::id {

inline constexpr int window = 100;
inline constexpr int vehicles = 101, cameras = 102, accessories = 103, templates = 110;
inline constexpr int toolPage = 510;
inline constexpr int remove = 104, unplugAll = 105, configure = 106, inputs = 107, unplug = 108,
                     clone = 109, group = 111;
inline constexpr int fromFirst = 112, autoExpand = 113, lowPoly = 114, slowMotion = 115;
inline constexpr int record = 116, resimulate = 117, status = 118, tree = 119, menubar = 135;
inline constexpr int updateBar = 200;

// Items of the menus.
inline constexpr int itemBrowse = 136, itemSave = 141, itemUnplugAll = 123, itemPreferences = 125,
                     itemClose = 126, itemConfigure = 127, itemInputs = 128, itemDelete = 129,
                     itemClone = 130, itemHelp = 131, itemWebsite = 132, itemForum = 133,
                     itemUpdates = 137, itemAbout = 134;
inline constexpr int itemFirstTool = 20480, itemFirstHelp = 24576, itemToolEnd = 28672;

inline constexpr int first = 100, last = 201; ///< what the window reacts to

} // namespace tvw::rgs::app::id

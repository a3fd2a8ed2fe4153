/// The panel of a tool's configuration, built from its items.
#pragma once

#include "core/configadaptor/node.h"
#include "gui/component.h"

namespace tvw::rgs::app {

/// The items' layout as components, not shown yet: fields in one column, groups a little apart. Ids
/// are shifted as app/config_views.h says. Null if the layout does not build.
[[nodiscard]] gui::ComponentPtr buildConfigPanel(core::configadaptor::Node& items);

/// What stands there for "Main Preferences": a remark and a button of that id.
[[nodiscard]] gui::ComponentPtr buildPreferencesPanel(int buttonId);

/// What stands there for a tool without items.
[[nodiscard]] gui::ComponentPtr buildEmptyPanel();

} // namespace tvw::rgs::app

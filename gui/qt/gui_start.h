/// Start and end of the widget layer.
#pragma once

#include "util/result.h"

namespace tvw::gui {

/// Makes an application object if there is none, with our own look; a host's is used as it is. Then
/// registers the components. Any number of times. Fails, and nothing is registered, if the process
/// runs an application without widgets, or there is no display. [main thread]
Status startGui();

/// Whether a window could be shown. Qt ends the process where it could not.
[[nodiscard]] bool hasDisplay();

/// Registers every tag and background; what is registered already stays.
void registerComponents();
/// Drops them all. Windows that were built must be gone.
void unregisterComponents();

} // namespace tvw::gui

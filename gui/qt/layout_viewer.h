/// Shows a layout file by itself, for whoever writes one.
#pragma once

#include "gui/component.h"
#include "util/result.h"

#include <string>

namespace tvw::gui {

/// The window of a layout file, not shown yet: a root that is no dialog stands in one. Fails with
/// the file and the reason: no such file, broken XML, an unknown root tag. The widget layer runs.
Result<ComponentPtr> loadLayout(const std::string& path);

/// Shows it until it is closed; "[images]" and its kin stand for imagesFolder. With a screenshot
/// path the window is drawn into that file instead.
Status showLayout(const std::string& path, const std::string& imagesFolder,
                  const std::string& screenshot = {});

} // namespace tvw::gui

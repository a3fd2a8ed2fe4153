/// Loads images for the screen that they are for.
#pragma once

#include <QIcon>
#include <QPixmap>

#include <string>

namespace tvw::gui {

/// The image of a file or an embedded file, whose logical size is that of the plain image. On a
/// dense screen (devicePixelRatio above 1) "name@2x.png" is taken where there is one. A .png that
/// is missing is looked for as .svg, which is drawn at the screen's density. Null if there is no
/// such image.
QPixmap loadPixmap(const std::string& path, double devicePixelRatio);

/// The same as an icon, for all screens; null, as isNull() tells, if there is no such image.
QIcon loadIcon(const std::string& path);

} // namespace tvw::gui

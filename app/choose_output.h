/// Where to write a file.
#pragma once

#include <QString>

class QWidget;

namespace tvw::rgs::app {

/// Asks for the file; empty: the user gave up. start: the name to begin with. A name without an
/// ending gets this one, and an existing file of that name is asked about all the same.
[[nodiscard]] QString chooseOutput(QWidget* parent, const QString& title, const QString& start,
                                   const QString& filter, const QString& ending);

} // namespace tvw::rgs::app

/// How the program looks.
#pragma once

class QApplication;
class QWidget;

namespace tvw::gui {

/// A dynamic property of a button: on, it is red, since something is being recorded. A bool.
inline constexpr const char* kRecords = "rigstageRecords";

/// Dark, calm, with one accent colour: for our own program. In a host the host's look stays.
void applyStyle(QApplication& application);

/// A selection in a window that is not the active one stays readable: the active highlight's
/// colour, more transparent. For our own program and for a host.
void softenInactiveHighlight();

} // namespace tvw::gui

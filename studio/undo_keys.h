/// Who gets Ctrl+Z while a number has the focus.
#pragma once

class QAbstractSpinBox;

namespace tvw::rgs::studio {

/// The box keeps the keys of undo and redo only while there is typed text to take back; else they
/// are the scene's.
void letUndoPass(QAbstractSpinBox& box);

} // namespace tvw::rgs::studio

#include "studio/undo_keys.h"

#include <QAbstractSpinBox>
#include <QKeyEvent>
#include <QLineEdit>

namespace tvw::rgs::studio {

namespace {

class UndoFilter final : public QObject
{
public:
    explicit UndoFilter(QAbstractSpinBox& box) : QObject(&box) { box.installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() != QEvent::ShortcutOverride)
            return false;
        const auto* const line = object->findChild<QLineEdit*>();
        const auto& stroke = static_cast<const QKeyEvent&>(*event);
        const bool passes = (stroke.matches(QKeySequence::Undo) && !line->isUndoAvailable()) ||
                            (stroke.matches(QKeySequence::Redo) && !line->isRedoAvailable());
        if (passes)
            event->ignore(); // the window's shortcut takes it
        return passes;
    }
};

} // namespace

void letUndoPass(QAbstractSpinBox& box)
{
    new UndoFilter(box); // the box's own
}

} // namespace tvw::rgs::studio

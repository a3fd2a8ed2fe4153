#include "gui/qt/checkbox.h"

#include <QMouseEvent>

namespace tvw::gui::component::qt {

CheckBox::CheckBox(const util::xml::Element& element) : QtComponent(element)
{
    QCheckBox::setTristate(tristate());
    setCheckState(static_cast<Qt::CheckState>(defaultState()));
    CheckBox::applyLabel();
    QObject::connect(this, &QCheckBox::stateChanged, this, [this] {
        component::CheckBox::setState(state());
        if (!silent_)
            notify(message::checkChanged);
    });
}

void CheckBox::applyLabel()
{
    setText(QString::fromStdString(label()));
}

CheckState CheckBox::state() const
{
    return static_cast<CheckState>(checkState());
}

void CheckBox::setState(CheckState state)
{
    const bool before = silent_;
    silent_ = true;
    change(state);
    silent_ = before;
}

void CheckBox::nextCheckState()
{
    // Qt takes a box for one of three states once it has had the third one.
    if (tristate())
        QCheckBox::nextCheckState();
    else
        change(value() ? CheckState::Off : CheckState::On);
}

void CheckBox::setTristate(bool value)
{
    component::CheckBox::setTristate(value);
    QCheckBox::setTristate(value);
}

void CheckBox::mousePressEvent(QMouseEvent* event)
{
    changedAtPress_ =
        paintGroup() >= 0 && event->button() == Qt::LeftButton && hitButton(event->pos());
    if (!changedAtPress_) {
        QCheckBox::mousePressEvent(event);
        return;
    }
    nextCheckState();
    event->accept();
}

void CheckBox::mouseMoveEvent(QMouseEvent* event)
{
    if (!changedAtPress_) {
        QCheckBox::mouseMoveEvent(event);
        return;
    }
    if ((event->buttons() & Qt::LeftButton) && !hitButton(event->pos()))
        paintOver(event->globalPos());
    event->accept();
}

void CheckBox::paintOver(const QPoint& globalPosition)
{
    QWidget* const top = window();
    auto* const other = dynamic_cast<CheckBox*>(top->childAt(top->mapFromGlobal(globalPosition)));
    if (other && other != this && other->paintGroup() == paintGroup() &&
        other->QCheckBox::isEnabled() && other->state() != state())
        other->change(state());
}

void CheckBox::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton) {
        change(defaultState());
        event->accept();
    } else if (changedAtPress_) {
        changedAtPress_ = false; // the press has changed it
        event->accept();
    } else {
        QCheckBox::mouseReleaseEvent(event);
    }
}

} // namespace tvw::gui::component::qt

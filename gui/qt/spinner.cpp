#include "gui/qt/spinner.h"

#include <QContextMenuEvent>
#include <QCursor>
#include <QLineEdit>
#include <QMouseEvent>
#include <QWheelEvent>

namespace tvw::gui::component::qt {

Spinner::Spinner(const util::xml::Element& element) : QtComponent(element)
{
    setFocusPolicy(Qt::StrongFocus);
    setKeyboardTracking(false); // half a number is no value
    QDoubleSpinBox::setDecimals(fields_.decimals);
    setRange(min(), max());
    setSingleStep(step());
    QDoubleSpinBox::setValue(defaultValue());
    QObject::connect(this, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
                     [this] { notify(message::spinnerChanged); });
    QObject::connect(this, &QDoubleSpinBox::editingFinished, this,
                     [this] { notify(message::spinnerEdited); });
}

void Spinner::setMin(double value)
{
    component::Spinner::setMin(value);
    setMinimum(value);
}

void Spinner::setMax(double value)
{
    component::Spinner::setMax(value);
    setMaximum(value);
}

void Spinner::setStep(double value)
{
    component::Spinner::setStep(value);
    setSingleStep(value);
}

void Spinner::setDecimals(int count)
{
    component::Spinner::setDecimals(count);
    QDoubleSpinBox::setDecimals(count);
}

void Spinner::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isEnter) {
        QtComponent::keyPressEvent(event);
        return;
    }
    if (takeKey(*this, *event, message::keyPressed, false))
        return;
    const double before = value();
    interpretText(); // tells of a change by itself
    if (value() == before)
        notify(message::spinnerChanged);
    event->accept();
}

QPoint Spinner::cursor() const
{
    return QCursor::pos();
}

void Spinner::moveCursor(const QPoint& position)
{
    QCursor::setPos(position);
}

void Spinner::mousePressEvent(QMouseEvent* event)
{
    pressedAt_ = cursor();
    drag_ = {};
    QDoubleSpinBox::mousePressEvent(event);
}

void Spinner::mouseMoveEvent(QMouseEvent* event)
{
    const int pixels = pressedAt_.y() - cursor().y();
    if (!(event->buttons() & Qt::LeftButton) || pixels == 0) {
        QDoubleSpinBox::mouseMoveEvent(event);
        return;
    }
    // Ends the repetition that the press on an arrow has begun.
    QMouseEvent release(QEvent::MouseButtonRelease, event->localPos(), event->windowPos(),
                        event->screenPos(), Qt::LeftButton, Qt::NoButton, event->modifiers());
    QDoubleSpinBox::mouseReleaseEvent(&release);
    moveCursor(pressedAt_);
    drag(pixels, event->modifiers());
}

void Spinner::drag(int pixels, Qt::KeyboardModifiers modifiers)
{
    const int steps = drag_.steps(pixels, triggerLength(), modifiers & Qt::ControlModifier,
                                  modifiers & Qt::ShiftModifier);
    if (steps != 0)
        stepBy(steps);
}

void Spinner::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton)
        setValue(defaultValue());
    QDoubleSpinBox::mouseReleaseEvent(event);
}

void Spinner::contextMenuEvent(QContextMenuEvent* event)
{
    event->accept(); // the right button is the way back to the default
}

void Spinner::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

} // namespace tvw::gui::component::qt

#pragma once

#include "gui/component/spinner.h"
#include "gui/qt/qtcomponent.h"

#include <QDoubleSpinBox>

namespace tvw::gui::component::qt {

class Spinner : public QtComponent<QDoubleSpinBox, component::Spinner>
{
public:
    explicit Spinner(const util::xml::Element& element);

    double value() const override { return QDoubleSpinBox::value(); }
    void setValue(double value) override { QDoubleSpinBox::setValue(value); }
    void setMin(double value) override;
    void setMax(double value) override;
    void setStep(double value) override;
    void setDecimals(int count) override;

protected:
    bool passesUndoKeysOn() const override { return true; }
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

    /// Where the mouse is and where it is put back to during a drag, on the screen.
    [[nodiscard]] virtual QPoint cursor() const;
    virtual void moveCursor(const QPoint& position);

private:
    void drag(int pixels, Qt::KeyboardModifiers modifiers);

    QPoint pressedAt_;
    SpinnerDrag drag_;
};

} // namespace tvw::gui::component::qt

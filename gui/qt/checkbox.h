#pragma once

#include "gui/component/checkbox.h"
#include "gui/qt/qtcomponent.h"

#include <QCheckBox>

namespace tvw::gui::component::qt {

class CheckBox : public QtComponent<QCheckBox, component::CheckBox>
{
public:
    explicit CheckBox(const util::xml::Element& element);

    CheckState state() const override;
    void setState(CheckState state) override;
    void setTristate(bool value) override;

protected:
    void nextCheckState() override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void applyLabel() override;

private:
    void paintOver(const QPoint& globalPosition);
    /// As the user's own change: listeners hear of it.
    void change(CheckState state) { setCheckState(static_cast<Qt::CheckState>(state)); }

    bool silent_ = false;
    bool changedAtPress_ = false;
};

} // namespace tvw::gui::component::qt

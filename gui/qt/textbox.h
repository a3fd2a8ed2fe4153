#pragma once

#include "gui/component/textbox.h"
#include "gui/qt/qtcomponent.h"

#include <QLineEdit>

namespace tvw::gui::component::qt {

class TextBox : public QtComponent<QLineEdit, component::TextBox>
{
public:
    explicit TextBox(const util::xml::Element& element);

    std::string text() const override { return QLineEdit::text().toStdString(); }
    void setText(const std::string& text) override;
    QSize sizeHint() const override;

protected:
    bool passesUndoKeysOn() const override { return true; }
};

} // namespace tvw::gui::component::qt

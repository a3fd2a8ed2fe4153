#include "gui/qt/textbox.h"

namespace tvw::gui::component::qt {

TextBox::TextBox(const util::xml::Element& element) : QtComponent(element)
{
    setReadOnly(!fields_.editable);
    TextBox::setText(defaultText());
    QObject::connect(this, &QLineEdit::editingFinished, this,
                     [this] { notify(message::textEdited); });
}

void TextBox::setText(const std::string& text)
{
    QLineEdit::setText(QString::fromStdString(text));
}

} // namespace tvw::gui::component::qt

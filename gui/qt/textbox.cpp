#include "gui/qt/textbox.h"

namespace tvw::gui::component::qt {

TextBox::TextBox(const util::xml::Element& element) : QtComponent(element)
{
    // As the other fields: in a row with a caption each gets its half.
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
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

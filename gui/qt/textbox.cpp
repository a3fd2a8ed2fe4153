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

/// Qt wants room for 17 letters, more than the half of most rows.
QSize TextBox::sizeHint() const
{
    const QSize hint = QtComponent::sizeHint();
    constexpr int kWidth = 80; // [logical pixels]
    return {desiredSize().width > 0 ? hint.width() : kWidth, hint.height()};
}

} // namespace tvw::gui::component::qt

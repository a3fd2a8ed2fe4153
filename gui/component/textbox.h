#pragma once

#include "gui/componentinterface/textbox.h"
#include "gui/stdcomponent.h"

namespace tvw::gui::component {

struct TextBoxFields
{
    std::string defaultText;
    bool editable = true;
};

class TextBox : public FieldComponent<componentinterface::TextBox, TextBoxFields>
{
public:
    static constexpr KindInfo kKind{kTag, {16768, 16832}};

    explicit TextBox(const util::xml::Element& element);

    std::string text() const override { return text_; }
    void setText(const std::string& text) override { text_ = text; }
    void setDefaultText(const std::string& text) override { fields_.defaultText = text; }
    std::string defaultText() const override { return fields_.defaultText; }

private:
    std::string text_;
};

} // namespace tvw::gui::component

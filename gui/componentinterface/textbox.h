/// One line of text.
#pragma once

#include "gui/componentinterface/interface.h"

#include <string>

namespace tvw::gui {

namespace componentinterface {

class TextBox : public Interface
{
public:
    static constexpr const char* kTag = "textbox";

    [[nodiscard]] virtual std::string text() const = 0;
    virtual void setText(const std::string& text) = 0;
    virtual void setDefaultText(const std::string& text) = 0;
    [[nodiscard]] virtual std::string defaultText() const = 0;
};

} // namespace componentinterface

[[nodiscard]] inline componentinterface::TextBox* toTextBox(Component* component)
{
    return toKind<componentinterface::TextBox>(component);
}

} // namespace tvw::gui

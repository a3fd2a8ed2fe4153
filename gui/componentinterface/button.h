/// A push button with a text, images, or components of its own that each click cycles through.
#pragma once

#include "gui/componentinterface/interface.h"

#include <string>

namespace tvw::gui {

/// Places of a button's images. A fly-out button has those ahead of Disabled.
enum class ButtonImage {
    Default,
    Pressed,
    Hover,
    ToggleDefault,
    TogglePressed,
    ToggleHover,
    Disabled
};
inline constexpr int kButtonImages = 7;

namespace componentinterface {

class Button : public Interface
{
public:
    static constexpr const char* kTag = "button";

    virtual void setImage(int index, const std::string& path) = 0; ///< a ButtonImage
    virtual void clearImages() = 0;
    /// Whether the default and the pressed image, or the toggled two, could be loaded.
    [[nodiscard]] virtual bool hasImages() const = 0;
    virtual void setToggle(bool value) = 0;
    [[nodiscard]] virtual bool toggle() const = 0;
    virtual void setChecked(bool value) = 0;
    [[nodiscard]] virtual bool checked() const = 0;
    virtual void setFlat(bool value) = 0;
    [[nodiscard]] virtual bool flat() const = 0;
    virtual void setFlatColorDefault(Color color) = 0;
    virtual void setFlatColorPressed(Color color) = 0;
    virtual void setFlatColorHover(Color color) = 0;
    virtual void setDefault(bool value) = 0;
    [[nodiscard]] virtual bool isDefault() const = 0;
};

} // namespace componentinterface

[[nodiscard]] inline componentinterface::Button* toButton(Component* component)
{
    return toKind<componentinterface::Button>(component);
}

} // namespace tvw::gui

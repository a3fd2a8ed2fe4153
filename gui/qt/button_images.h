/// The images of a button, loaded, and which of them shows.
#pragma once

#include "gui/component.h"
#include "gui/componentinterface/button.h"

#include <QPixmap>

#include <array>
#include <span>

class QAbstractButton;
class QWidget;

namespace tvw::gui {

class ButtonImages
{
public:
    /// Loads what the paths, with the component's variables, name.
    void load(const Component& component, std::span<const std::string> paths,
              double devicePixelRatio);
    void clear() { images_ = {}; }
    /// Whether default and pressed, or their toggled twins, are there.
    [[nodiscard]] bool areThere() const;
    /// The image of the button's state; where it has none, the nearest state's.
    [[nodiscard]] const QPixmap& of(const QAbstractButton& button) const;
    /// Whether a disabled button must be told from an enabled one by other means.
    [[nodiscard]] bool lackDisabled() const;
    /// Logical pixels.
    [[nodiscard]] Size size() const;

private:
    [[nodiscard]] const QPixmap& at(ButtonImage image) const;

    std::array<QPixmap, kButtonImages> images_; ///< by ButtonImage
};

} // namespace tvw::gui

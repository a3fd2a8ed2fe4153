#include "gui/qt/button_images.h"

#include "gui/qt/pixmap.h"

#include <QAbstractButton>

namespace tvw::gui {

namespace {

bool isThere(const QPixmap& image)
{
    return image.width() > 0;
}

} // namespace

void ButtonImages::load(const Component& component, std::span<const std::string> paths,
                        double devicePixelRatio)
{
    clear();
    for (std::size_t i = 0; i < paths.size() && i < images_.size(); ++i)
        images_[i] = loadPixmap(component.expandVariables(paths[i]), devicePixelRatio);
}

const QPixmap& ButtonImages::at(ButtonImage image) const
{
    return images_[static_cast<std::size_t>(image)];
}

bool ButtonImages::areThere() const
{
    return (isThere(at(ButtonImage::Default)) && isThere(at(ButtonImage::Pressed))) ||
           (isThere(at(ButtonImage::ToggleDefault)) && isThere(at(ButtonImage::TogglePressed)));
}

const QPixmap& ButtonImages::of(const QAbstractButton& button) const
{
    if (!button.isEnabled() && isThere(at(ButtonImage::Disabled)))
        return at(ButtonImage::Disabled);
    const int state = button.isDown() ? 1 : button.underMouse() && button.isEnabled() ? 2 : 0;
    const auto toggled = static_cast<std::size_t>(ButtonImage::ToggleDefault);
    const std::size_t row = button.isChecked() && isThere(images_[toggled]) ? toggled : 0;
    const QPixmap& wanted = images_[row + static_cast<std::size_t>(state)];
    return isThere(wanted) ? wanted : images_[row];
}

bool ButtonImages::lackDisabled() const
{
    return !isThere(at(ButtonImage::Disabled));
}

Size ButtonImages::size() const
{
    const QPixmap& image = isThere(at(ButtonImage::Default)) ? at(ButtonImage::Default)
                                                             : at(ButtonImage::ToggleDefault);
    const QSize size = image.size() / image.devicePixelRatio();
    return {size.width(), size.height()};
}

} // namespace tvw::gui

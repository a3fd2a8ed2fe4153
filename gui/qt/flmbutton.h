#pragma once

#include "gui/component/flmbutton.h"
#include "gui/qt/button_images.h"
#include "gui/qt/qtcomponent.h"

#include <QToolButton>

namespace tvw::gui {
class FloatingMenu;
}

namespace tvw::gui::component::qt {

class FlmButton : public QtComponent<QToolButton, component::FlmButton>
{
public:
    explicit FlmButton(const util::xml::Element& element);

    void hideMenu() override;
    void setImage(int index, const std::string& path) override;
    void clearImages() override;
    bool hasImages() const override { return images_.areThere(); }
    void setFocusMarkerColor(Color color) override;
    void childWidgetAdded(Component* child) override;
    void childWidgetRemoved(Component* child) override;

protected:
    bool passesUndoKeysOn() const override { return true; }
    void paintContent(QPaintEvent* event) override;
    void build() override { loadImages(); }
    void unbuild() override;
    void applyLabel() override;

private:
    void loadImages();

    FloatingMenu* menu_;
    ButtonImages images_;
};

} // namespace tvw::gui::component::qt

#pragma once

#include "gui/component/button.h"
#include "gui/qt/button_images.h"
#include "gui/qt/qtcomponent.h"

#include <QPushButton>

namespace tvw::gui::component::qt {

class Button : public QtComponent<QPushButton, component::Button>
{
public:
    explicit Button(const util::xml::Element& element);

    void setImage(int index, const std::string& path) override;
    void clearImages() override;
    bool hasImages() const override { return images_.areThere(); }
    void setToggle(bool value) override;
    void setChecked(bool value) override;
    bool checked() const override { return QPushButton::isChecked(); }
    void setFlat(bool value) override;
    void setFlatColorDefault(Color color) override;
    void setFlatColorPressed(Color color) override;
    void setFlatColorHover(Color color) override;
    void setDefault(bool value) override;
    void childWidgetAdded(Component* child) override { box_.insert(*this, *child); }
    void childWidgetRemoved(Component* child) override { box_.remove(*child); }

protected:
    bool passesUndoKeysOn() const override { return true; }
    void paintContent(QPaintEvent* event) override;
    void build() override;
    void unbuild() override { box_.drop(); }
    void applyLabel() override;

private:
    void loadImages();
    void clickedNow(bool isChecked);
    void showNextChild();
    [[nodiscard]] Color flatColor() const;

    ButtonImages images_;
    BoxHolder box_;
};

} // namespace tvw::gui::component::qt

#pragma once

#include "gui/componentinterface/button.h"
#include "gui/stdcomponent.h"

#include <array>

namespace tvw::gui::component {

struct ButtonFields
{
    bool isDefault = false, flat = false, toggle = false;
    Color flatDefault{0, 0, 0, 0}, flatPressed{255, 255, 255, 40}, flatHover{255, 255, 255, 20};
    std::array<std::string, kButtonImages> images; ///< by ButtonImage; may hold variables
};

class Button : public FieldComponent<componentinterface::Button, ButtonFields>
{
public:
    static constexpr KindInfo kKind{kTag, {16704, 16768}};

    explicit Button(const util::xml::Element& element);

    void setImage(int index, const std::string& path) override;
    void clearImages() override { fields_.images = {}; }
    bool hasImages() const override { return false; }
    void setToggle(bool value) override { fields_.toggle = value; }
    bool toggle() const override { return fields_.toggle; }
    void setChecked(bool value) override { checked_ = value; }
    bool checked() const override { return checked_; }
    void setFlat(bool value) override { fields_.flat = value; }
    bool flat() const override { return fields_.flat; }
    void setFlatColorDefault(Color color) override { fields_.flatDefault = color; }
    void setFlatColorPressed(Color color) override { fields_.flatPressed = color; }
    void setFlatColorHover(Color color) override { fields_.flatHover = color; }
    void setDefault(bool value) override { fields_.isDefault = value; }
    bool isDefault() const override { return fields_.isDefault; }

protected:
    bool showsChild(std::size_t index) const override { return index == current_; }
    [[nodiscard]] std::size_t currentChild() const { return current_; }
    void nextChild() { current_ = childCount() == 0 ? 0 : (current_ + 1) % childCount(); }

private:
    bool checked_ = false;
    std::size_t current_ = 0;
};

} // namespace tvw::gui::component

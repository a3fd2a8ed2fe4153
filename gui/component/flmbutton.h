#pragma once

#include "gui/componentinterface/flmbutton.h"
#include "gui/stdcomponent.h"

#include <array>

namespace tvw::gui::component {

struct FlmButtonFields
{
    std::array<std::string, 6> images; ///< by ButtonImage; may hold variables
    Color focusMarker{255, 255, 255, 160};
    int delay = -1; ///< [ms] from the press to the fly-out; -1: the style's
};

class FlmButton : public FieldComponent<componentinterface::FlmButton, FlmButtonFields>
{
public:
    static constexpr KindInfo kKind{kTag, {16704, 16768}};

    explicit FlmButton(const util::xml::Element& element);

    void hideMenu() override {}
    void setImage(int index, const std::string& path) override;
    void clearImages() override { fields_.images = {}; }
    bool hasImages() const override { return false; }
    void setFocusMarkerColor(Color color) override { fields_.focusMarker = color; }

protected:
    bool showsChild(std::size_t index) const override { return index == 0; }
};

} // namespace tvw::gui::component

/// A button with a fly-out, which can be torn off into a window.
#pragma once

#include "gui/componentinterface/button.h"

namespace tvw::gui {

namespace componentinterface {

class FlmButton : public Interface
{
public:
    static constexpr const char* kTag = "flmbutton";

    virtual void hideMenu() = 0;
    virtual void setImage(int index, const std::string& path) = 0; ///< a ButtonImage
    virtual void clearImages() = 0;
    [[nodiscard]] virtual bool hasImages() const = 0;
    virtual void setFocusMarkerColor(Color color) = 0;
};

} // namespace componentinterface

[[nodiscard]] inline componentinterface::FlmButton* toFlmButton(Component* component)
{
    return toKind<componentinterface::FlmButton>(component);
}

} // namespace tvw::gui

/// A text, which may be rich text, or an image. Its text is the component's label().
#pragma once

#include "gui/componentinterface/interface.h"

#include <string>

namespace tvw::gui {

namespace componentinterface {

class Label : public Interface
{
public:
    static constexpr const char* kTag = "label";
    static constexpr int kSelectable = 1, kHyperlinks = 2; ///< flags

    [[nodiscard]] virtual FrameStyle style() const = 0;
    virtual void setStyle(FrameStyle style) = 0;
    [[nodiscard]] virtual HAlign halign() const = 0;
    [[nodiscard]] virtual VAlign valign() const = 0;
    virtual void setHalign(HAlign align) = 0;
    virtual void setValign(VAlign align) = 0;
    virtual void setWrap(bool value) = 0;
    [[nodiscard]] virtual bool wrap() const = 0;
    virtual void setFlags(int flags) = 0;
    [[nodiscard]] virtual int flags() const = 0;
    [[nodiscard]] virtual std::string imagePath() const = 0;
    virtual void setImagePath(const std::string& path) = 0; ///< may hold variables; "" is none
};

} // namespace componentinterface

[[nodiscard]] inline componentinterface::Label* toLabel(Component* component)
{
    return toKind<componentinterface::Label>(component);
}

} // namespace tvw::gui

/// What containers with a padding have in common.
#pragma once

#include "gui/componentinterface/interface.h"

namespace tvw::gui::componentinterface {

class Padded : public Interface
{
public:
    virtual void setPadding(Side side, int pixels) = 0;
    virtual void setPadding(int top, int right, int bottom, int left) = 0;
    [[nodiscard]] virtual int padding(Side side) const = 0;
};

/// A container whose content is aligned as a whole.
class Aligned : public Padded
{
public:
    [[nodiscard]] virtual HAlign halign() const = 0;
    [[nodiscard]] virtual VAlign valign() const = 0;
    virtual void setHalign(HAlign align) = 0;
    virtual void setValign(VAlign align) = 0;
};

/// An aligned container with a frame.
class Framed : public Aligned
{
public:
    [[nodiscard]] virtual FrameStyle style() const = 0;
    virtual void setStyle(FrameStyle style) = 0;
};

} // namespace tvw::gui::componentinterface

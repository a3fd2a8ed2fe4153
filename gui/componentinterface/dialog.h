/// A window. Its title is the label().
#pragma once

#include "gui/componentinterface/container.h"

namespace tvw::gui {

namespace componentinterface {

class Dialog : public Padded
{
public:
    static constexpr const char* kTag = "dialog";

    virtual void setTopmost(bool value) = 0;
    [[nodiscard]] virtual bool topmost() const = 0;
    [[nodiscard]] virtual bool modal() const = 0; ///< whether it is being shown as a modal window
    /// Shows it, and returns when it has been closed, with the code given to close, 0 by default.
    virtual int exec() = 0;
    virtual void close(int code) = 0;
    virtual void showModal() = 0; ///< the same without waiting; ends with endModal
    virtual void endModal() = 0;
    virtual void processEvents() = 0;
    [[nodiscard]] virtual bool hasMaximizeButton() const = 0;
    [[nodiscard]] virtual bool hasMinimizeButton() const = 0;
    [[nodiscard]] virtual bool hasCloseButton() const = 0;
    virtual void setMaximizeButton(bool value) = 0;
    virtual void setMinimizeButton(bool value) = 0;
    virtual void setCloseButton(bool value) = 0;
    [[nodiscard]] virtual bool isMaximized() const = 0;
    [[nodiscard]] virtual bool isMinimized() const = 0;
    virtual void activate() = 0;   ///< brings it to the front
    virtual void shownModally() {} ///< behind show() in exec and showModal
};

} // namespace componentinterface

[[nodiscard]] inline componentinterface::Dialog* toDialog(Component* component)
{
    return toKind<componentinterface::Dialog>(component);
}

} // namespace tvw::gui

#pragma once

#include "gui/component/container.h"
#include "gui/componentinterface/dialog.h"
#include "gui/stdcomponent.h"

namespace tvw::gui::component {

struct DialogFields
{
    std::string icon; ///< may hold variables
    bool topmost = false, modal = false, minimizeButton = false, maximizeButton = false;
    bool closeButton = true, titlebar = true;
};

class Dialog : public FieldComponent<componentinterface::Dialog, DialogFields>
{
public:
    static constexpr KindInfo kKind{kTag, {16640, 16704}};

    explicit Dialog(const util::xml::Element& element);

    void writeXml(util::xml::Element& element) const override;
    bool isWindow() const override { return true; }
    void setPadding(Side side, int pixels) override;
    void setPadding(int top, int right, int bottom, int left) override;
    int padding(Side side) const override
    {
        return layout_.padding[static_cast<std::size_t>(side)];
    }
    void setTopmost(bool value) override;
    bool topmost() const override { return fields_.topmost; }
    bool modal() const override { return modal_; }
    int exec() override { return 0; }
    void close(int) override { hide(); }
    void showModal() override;
    void endModal() override;
    void processEvents() override {}
    bool hasMaximizeButton() const override { return fields_.maximizeButton; }
    bool hasMinimizeButton() const override { return fields_.minimizeButton; }
    bool hasCloseButton() const override { return fields_.closeButton; }
    void setMaximizeButton(bool value) override;
    void setMinimizeButton(bool value) override;
    void setCloseButton(bool value) override;
    bool isMaximized() const override { return false; }
    bool isMinimized() const override { return false; }
    void activate() override {}

    [[nodiscard]] const ContainerFields& layoutFields() const { return layout_; }

protected:
    bool showsChild(std::size_t index) const override { return index == 0; }
    virtual void applyLayout() {}
    virtual void applyWindowFlags() {} ///< buttons, title bar or topmost have changed

    bool modal_ = false; ///< while exec or showModal show it

private:
    ContainerFields layout_;
};

} // namespace tvw::gui::component

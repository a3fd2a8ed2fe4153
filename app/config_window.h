/// The configuration of a tool: its items, its profiles, and a tree of all tools.
#pragma once

#include "app/window_base.h"

namespace tvw::rgs::core {
class Instance;
}

namespace tvw::rgs::app {

class ConfigWindow final : public WindowBase
{
public:
    ConfigWindow();
    ~ConfigWindow() override;

    void open(core::Instance* instance); ///< null: the tool that it showed last
    void refreshTree();                  ///< tools came, went, or have other names
    void closeOf(core::Instance& instance);

private:
    void handle(gui::Component& component, Message& message) override;
};

} // namespace tvw::rgs::app

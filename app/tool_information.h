/// What a type of tool is for.
#pragma once

#include "app/window_base.h"

namespace tvw::rgs::core {
class Tool;
}

namespace tvw::rgs::app {

class ToolInformation final : public WindowBase
{
public:
    ToolInformation();

    void open(const core::Tool& tool);

private:
    void handle(gui::Component& component, Message& message) override;

    std::string tool_; ///< its id
};

} // namespace tvw::rgs::app

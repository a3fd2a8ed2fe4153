#include "app/tool_information.h"

#include "core/core_implementation.h"
#include "core/tool.h"
#include "gui/message_ids.h"

namespace tvw::rgs::app {

namespace {

enum Id { kWindow = 100, kName = 101, kText = 103, kHelp = 104, kClose = 105 };

} // namespace

ToolInformation::ToolInformation() : WindowBase("ToolInformation") {}

void ToolInformation::open(const core::Tool& tool)
{
    hide();
    if (!build("rgs_info"))
        return;
    tool_ = tool.name();
    root()->setVariable("[images]", tool.getImagePath());
    root()->setLabel(tool.getDisplayName());
    setText(kName, "<h3>" + tool.getDisplayName() + "</h3>");
    setText(kText, tool.getDescription());
    listen({kWindow, kHelp, kClose});
    show();
}

void ToolInformation::handle(gui::Component& component, Message& message)
{
    if (component.id() == kWindow)
        handleWindowKeys(message);
    if (message.id != gui::message::buttonClicked)
        return;
    if (component.id() == kHelp)
        core::CoreImplementation::instance().windows().openHelp(tool_);
    else if (component.id() == kClose)
        hide();
}

} // namespace tvw::rgs::app

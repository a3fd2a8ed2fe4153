#include "app/tool_lists.h"

#include "app/window_base.h"
#include "core/library_manager.h"
#include "core/tool.h"
#include "gui/componentinterface/label.h"
#include "util/factory.h"
#include "util/xml/element.h"

#include <algorithm>

namespace tvw::rgs::app {

namespace {

constexpr std::size_t kEntriesInRow = 3;
constexpr int kEntryName = 1;
constexpr const char* kProductPicture = "/button_product_default.png";

} // namespace

Category categoryOf(const core::Tool& tool)
{
    if (tool.getKind() == core::ToolKind::Template)
        return Category::Template;
    Category found = Category::Accessory;
    for (const std::string& name : tool.getCategories()) {
        if (name == "Vehicle")
            found = Category::Vehicle;
        else if (name == "Camera")
            found = Category::Camera;
    }
    return found;
}

std::vector<core::Tool*> toolsOf(Category category)
{
    std::vector<core::Tool*> out = core::LibraryManager::instance().listTools(true);
    std::erase_if(out, [&](const core::Tool* tool) {
        return !tool->isListed() || categoryOf(*tool) != category;
    });
    return out;
}

gui::Component* makeToolEntry(const core::Tool& tool)
{
    gui::ComponentPtr entry(
        AbstractFactory<gui::Component>::instance().create(loadLayout("rgs_popout_product")));
    if (!entry)
        return nullptr;
    addImageTokens(*entry);
    entry->setVariable("[images]", tool.getImagePath());
    if (gui::Component* const name = entry->findById(kEntryName))
        name->setLabel(tool.getDisplayName());
    return entry.release();
}

void fillToolPage(gui::Component& page, Category category,
                  const std::function<void(gui::Component&, core::Tool&)>& added)
{
    while (page.childCount() > 0) {
        gui::Component* const last = page.childAt(page.childCount() - 1);
        if (last->isShown())
            last->hide();
        last->destroy();
    }
    gui::Component* row = nullptr;
    util::xml::Element rowLayout = util::xml::Tag("list");
    rowLayout.setAttribute("type", "horizontal");
    rowLayout.setAttribute("halign", "left");
    for (core::Tool* const tool : toolsOf(category)) {
        gui::Component* const entry = makeToolEntry(*tool);
        if (!entry)
            return;
        if (!row || row->childCount() == kEntriesInRow) {
            row = AbstractFactory<gui::Component>::instance().create(rowLayout);
            page.addChild(row);
        }
        row->addChild(entry);
        added(*entry, *tool);
    }
}

} // namespace tvw::rgs::app

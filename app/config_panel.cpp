#include "app/config_panel.h"

#include "app/config_views.h"
#include "gui/componentinterface/group.h"
#include "gui/componentinterface/label.h"
#include "gui/componentinterface/list.h"
#include "util/factory.h"
#include "util/xml/element.h"

#include <algorithm>
#include <string>

namespace tvw::rgs::app {

namespace ci = gui::componentinterface;
using util::xml::Element;
using util::xml::Tag;

namespace {

constexpr int kFieldWidth = 132; // [logical pixels], a number of ten digits with its arrows
constexpr int kRowGap = 2;       // [logical pixels]
constexpr int kGroupGap = 8;     // [logical pixels]
constexpr int kFirstOtherId = 2 * kFirstPanelId;
constexpr std::size_t kLineLength = 72; // of remarks [characters]

bool isField(const gui::Component& component)
{
    const std::string tag = gui::tagOf(&component);
    return tag == "spinner" || tag == "combobox" || tag == "textbox" || tag == "checkbox";
}

bool isOfItem(const gui::Component& component)
{
    return isField(component) || gui::tagOf(&component) == "button";
}

void fixWidth(gui::Component& field)
{
    field.setMinSize({kFieldWidth, field.minSize().height});
    field.setMaxSize({kFieldWidth, field.maxSize().height});
}

/// A row's field stands in the right column, its caption has the rest.
void dressRow(gui::Component& row, ci::List& list)
{
    gui::Component* const field = row.childAt(1);
    if (row.childCount() != 2 || !isField(*field))
        return;
    list.setPadding(kRowGap / 2, 0, kRowGap / 2, 0);
    fixWidth(*field);
}

/// The text with line ends in place of the blanks that stand too far right. Labels that break their
/// own lines make a layout guess its height, and stretch its rows.
std::string broken(std::string text)
{
    std::size_t begin = 0, blank = std::string::npos;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n') {
            begin = i + 1;
            blank = std::string::npos;
        } else if (text[i] == ' ') {
            blank = i;
        }
        if (i - begin >= kLineLength && blank != std::string::npos) {
            text[blank] = '\n';
            begin = blank + 1;
            blank = std::string::npos;
        }
    }
    return text;
}

/// One that is empty takes no room.
void dressRemark(gui::Component& remark)
{
    gui::toLabel(&remark)->setWrap(false);
    remark.setLabel(broken(remark.label()));
    if (remark.label().empty())
        remark.setVisible(false, false);
}

/// Groups within groups end at the same right edge, so that all fields stand in one column.
void dressGroup(gui::Component& group, bool isInner)
{
    gui::toGroup(&group)->setPadding(kGroupGap / 2, isInner ? 0 : kGroupGap, kGroupGap, kGroupGap);
}

void dress(gui::Component& component, bool isInGroup)
{
    const bool isGroup = gui::toGroup(&component) != nullptr;
    auto* const list = gui::toList(&component);
    const bool isRow = list && !list->direction();
    if (isGroup)
        dressGroup(component, isInGroup);
    else if (isRow)
        dressRow(component, *list);
    for (gui::Component* const child : component.children()) {
        if (!isRow && gui::toLabel(child))
            dressRemark(*child);
        dress(*child, isInGroup || isGroup);
    }
}

/// Ids of items, and apart from them those of what stands round them.
void shiftIds(gui::Component& component)
{
    if (component.id() >= 0)
        component.setId(component.id() + (isOfItem(component) ? kFirstPanelId : kFirstOtherId));
    if (component.tooltipId() >= 0)
        component.setTooltipId(component.tooltipId() + kFirstOtherId);
    for (gui::Component* const child : component.children())
        shiftIds(*child);
}

/// A template brings a layout of its own, which stays as its maker drew it.
bool isDrawn(const core::configadaptor::Node& items)
{
    return std::any_of(items.children().begin(), items.children().end(), [](const auto* item) {
        return item->kind() == core::configadaptor::NodeKind::Template;
    });
}

Element remarkPage(const char* text)
{
    Tag remark("label");
    remark.addChild(util::xml::Text(broken(text)));
    Tag page("list");
    page.setAttribute("valign", "top");
    page.setAttribute("padding", "8 8 8 8");
    page.addChild(remark);
    return page;
}

gui::ComponentPtr build(const Element& layout)
{
    return gui::ComponentPtr(AbstractFactory<gui::Component>::instance().create(layout));
}

} // namespace

gui::ComponentPtr buildConfigPanel(core::configadaptor::Node& items)
{
    const Element layout = items.buildLayout();
    // The window scrolls its panel already.
    const bool scrolls = layout.name() == "scroll" && layout.childCount() == 1;
    gui::ComponentPtr panel = build(scrolls ? layout.childAt(0) : layout);
    if (!panel)
        return panel;
    if (auto* const list = gui::toList(panel.get())) {
        list->setValign(gui::VAlign::Top);
        list->setPadding(kGroupGap, kGroupGap, kGroupGap, kGroupGap);
    }
    if (!isDrawn(items))
        dress(*panel, false);
    shiftIds(*panel);
    return panel;
}

gui::ComponentPtr buildPreferencesPanel(int buttonId)
{
    Tag button("button");
    button.setAttribute("id", std::to_string(buttonId));
    button.setAttribute("label", "Preferences...");
    button.setAttribute("fixed", "yes");
    button.setAttribute("width", "150");
    button.setAttribute("height", "28");
    button.addChild(util::xml::TagWithData("tooltip", "Opens the preferences."));
    Tag row("list");
    row.setAttribute("type", "horizontal");
    row.setAttribute("halign", "left");
    row.setAttribute("padding", "0 8 0 0");
    row.addChild(button);
    Element page = remarkPage("What holds for the whole program, whichever tools are in the scene, "
                              "stands in a window of its own.");
    page.addChild(row);
    return build(page);
}

gui::ComponentPtr buildEmptyPanel()
{
    return build(remarkPage("This tool has no settings."));
}

} // namespace tvw::rgs::app

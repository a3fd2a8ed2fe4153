#include "app/config_panel.h"

#include "app/config_views.h"
#include "gui/componentinterface/group.h"
#include "gui/componentinterface/label.h"
#include "gui/componentinterface/list.h"
#include "util/factory.h"
#include "util/xml/element.h"

#include <string_view>

namespace tvw::rgs::app {

namespace ci = gui::componentinterface;
using util::xml::Element;
using util::xml::Tag;

namespace {

constexpr int kFieldWidth = 132; // [logical pixels], a number of ten digits with its arrows
constexpr int kRowGap = 2;       // [logical pixels]
constexpr int kGroupGap = 8;     // [logical pixels]

bool isField(std::string_view tag)
{
    return tag == "spinner" || tag == "combobox" || tag == "textbox" || tag == "checkbox";
}

void fixWidth(gui::Component& field)
{
    field.setMinSize({kFieldWidth, field.minSize().height});
    field.setMaxSize({kFieldWidth, field.maxSize().height});
}

/// A row's field stands in the right column, its caption has the rest.
void dressRow(gui::Component& row)
{
    if (auto* const list = gui::toList(&row); list && !list->direction() && row.childCount() == 2) {
        list->setPadding(kRowGap / 2, 0, kRowGap / 2, 0);
        if (gui::Component* const field = row.childAt(1); isField(gui::tagOf(field)))
            fixWidth(*field);
    }
}

/// A group's remark stands below its title, in as many lines as it needs; one that is empty takes
/// no room.
void dressGroup(gui::Component& group)
{
    gui::toGroup(&group)->setPadding(kGroupGap / 2, kGroupGap, kGroupGap, kGroupGap);
    gui::Component* const content = group.childAt(0);
    gui::Component* const remark = content ? content->childAt(0) : nullptr;
    if (auto* const label = gui::toLabel(remark)) {
        label->setWrap(true);
        if (remark->label().empty())
            remark->setVisible(false, false);
    }
}

void dress(gui::Component& component)
{
    if (component.id() >= 0)
        component.setId(component.id() + kFirstPanelId);
    const std::string tag = gui::tagOf(&component);
    if (tag == ci::Group::kTag)
        dressGroup(component);
    else if (tag == ci::List::kTag)
        dressRow(component);
    for (gui::Component* const child : component.children())
        dress(*child);
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
        list->setPadding(0, kGroupGap, 0, 0);
    }
    dress(*panel);
    return panel;
}

gui::ComponentPtr buildPreferencesPanel(int buttonId)
{
    Tag remark("label");
    remark.setAttribute("wrap", "yes");
    remark.addChild(util::xml::Text("What holds for the whole program, whichever tools are in the "
                                    "scene, stands in a window of its own."));
    Tag button("button");
    button.setAttribute("id", std::to_string(buttonId));
    button.setAttribute("label", "Preferences...");
    button.setAttribute("fixed", "yes");
    button.setAttribute("width", "150");
    button.setAttribute("height", "28");
    button.addChild(util::xml::TagWithData("tooltip", "Opens the preferences."));
    Tag list("list");
    list.setAttribute("valign", "top");
    list.setAttribute("padding", "8 8 8 8");
    list.addChild(remark);
    list.addChild(button);
    return build(list);
}

} // namespace tvw::rgs::app

#include "gui/background/color.h"
#include "gui/background/gradient.h"
#include "gui/component/button.h"
#include "gui/component/checkbox.h"
#include "gui/component/combobox.h"
#include "gui/component/container.h"
#include "gui/component/dialog.h"
#include "gui/component/flmbutton.h"
#include "gui/component/graph.h"
#include "gui/component/label.h"
#include "gui/component/listbox.h"
#include "gui/component/menubar.h"
#include "gui/component/progressbar.h"
#include "gui/component/scroll.h"
#include "gui/component/spinner.h"
#include "gui/component/textbox.h"
#include "gui/component/tree.h"
#include "gui/component_factory.h"
#include "tests/gui/model/listener.h"

#include <gtest/gtest.h>

namespace tvw::gui {

using util::xml::Element;

namespace {

template <class... Kinds>
void registerKinds()
{
    (addFactoryOnce<Component>(new ComponentFactory<Kinds>), ...);
}

class Model : public testing::Test
{
protected:
    void SetUp() override
    {
        using namespace component;
        registerKinds<Dialog, Button, FlmButton, List, Border, Scroll, TextBox, ComboBox, Group,
                      Spinner, Label, CheckBox, Tree, Graph, Progressbar, ListBox, Menubar>();
        addFactoryOnce<Background>(new BackgroundFactory<background::ColorFill>);
        addFactoryOnce<Background>(new BackgroundFactory<background::LinearGradient>);
    }

    static ComponentPtr build(const std::string& xml)
    {
        Element element;
        EXPECT_EQ(element.parse(xml), util::xml::code::ok) << xml;
        return ComponentPtr(AbstractFactory<Component>::instance().create(element));
    }

    static Element written(const Component& component)
    {
        Element element;
        component.writeXml(element);
        return element;
    }
};

/// Whether all that the first element says stands in the second one as well.
testing::AssertionResult contains(const Element& whole, const Element& part)
{
    if (whole.name() != part.name() || whole.childCount() != part.childCount())
        return testing::AssertionFailure() << part.fragment() << "became\n" << whole.fragment();
    for (std::size_t i = 0; i < part.attributeCount(); ++i) {
        const util::xml::Attribute attribute = part.attributeAt(i);
        if (whole.attributeValue(std::string(attribute.key)) != attribute.value)
            return testing::AssertionFailure()
                   << attribute.key << " of " << part.fragment() << "became\n"
                   << whole.fragment();
    }
    for (std::size_t i = 0; i < part.childCount(); ++i) {
        if (const auto below = contains(whole.childAt(i), part.childAt(i)); !below)
            return below;
    }
    return testing::AssertionSuccess();
}

// Each with everything that its tag can say, none of it at its default.
constexpr const char* kComplete[] = {
    "<label id='3' left='1' top='2' width='30' height='40' desiredwidth='31' desiredheight='41' "
    "minwidth='5' minheight='6' maxwidth='70' maxheight='80' visible='no' enabled='no' tabstop='2' "
    "tooltipid='9' imagepath='[images]/a.png' style='sunken' halign='right' valign='bottom' "
    "wrap='yes' selectable='yes' hyperlinks='yes'>A &#60;b>text&#60;/b><tooltip>Tip</tooltip>"
    "<style>QLabel { color: red }</style></label>",
    "<dialog label='W' padding='1 2 3 4' icon='i.png' topmost='yes' modal='yes' minimizebtn='yes' "
    "maximizebtn='yes' closebtn='no' titlebar='no'><list/></dialog>",
    "<list type='horizontal' style='normal' halign='left' valign='top' padding='1 2 3 4' "
    "margin='5 6 7 8'><label/><button/></list>",
    "<border style='thin' halign='center' valign='center' padding='1 0 0 0'><label/></border>",
    "<border style='none'/>",
    "<group label='G' halign='right' padding='5 0 0 0' margin='0 0 0 1'><list/></group>",
    "<scroll><list/><list/></scroll>",
    "<button default='yes' flat='yes' toggle='yes' flatcolor_default='1 2 3 4' "
    "flatcolor_pressed='5 6 7 8' flatcolor_hover='9 10 11 12' img_default='a' img_pressed='b' "
    "img_hover='c' img_toggle_default='d' img_toggle_pressed='e' img_toggle_hover='f' "
    "img_disabled='g'/>",
    "<flmbutton img_default='a' img_pressed='b' img_hover='c' focusmarkercolor='1 2 3 4' "
    "delay='300'><list/></flmbutton>",
    "<checkbox defaultstate='undetermined' tristate='yes' paintgroup='2'/>",
    "<combobox editable='yes'><item>One</item><item>Two</item></combobox>",
    "<listbox editable='yes'><item>One</item></listbox>",
    "<spinner min='-2.5' max='1500000' step='0.3' decimals='7' defaultvalue='0.1' "
    "triggerlength='3'/>",
    "<textbox defaulttext='T' editable='no'/>",
    "<tree dragdrop='yes'><flag label='Record' falseicon='a' trueicon='b' undeterminedicon='c' "
    "defaultstate='true'/><flag label='Other'/></tree>",
    "<graph boundary_left='-2' boundary_right='2' boundary_top='3' boundary_bottom='-3'>"
    "<curve r='1' g='2' b='3' a='4'><point x='0.1' y='-0.2'/></curve></graph>",
    "<progressbar/>",
    "<menubar><menu label='Main' id='1'><item id='2' label='A' grayed='yes'/><separator/>"
    "<menu label='Sub'><item id='3' label='B'/></menu></menu></menubar>",
    "<list><background type='color' r='1' g='2' b='3' a='4'/><popup><item id='1' label='A'/>"
    "<separator/><popup label='More'><item id='2' label='B'/></popup></popup></list>",
    "<list><background type='gradient-linear' startx='0.1' starty='0.2' endx='0.3' endy='0.4' "
    "spread='mirror' coordinates='absolute'><color pos='0.5' r='1' g='2' b='3' a='4'/>"
    "</background></list>",
};

TEST_F(Model, whatAFileSaysIsWrittenBack)
{
    for (const char* const xml : kComplete) {
        Element read;
        ASSERT_EQ(read.parse(xml), 0) << xml;
        const ComponentPtr component = build(xml);
        ASSERT_TRUE(component) << xml;
        const Element once = written(*component);
        EXPECT_TRUE(contains(once, read));
        const ComponentPtr again = build(once.toString());
        EXPECT_EQ(written(*again).fragment(), once.fragment());
    }
}

TEST_F(Model, defaultsAndNonsenseWriteNothing)
{
    for (const char* const xml :
         {"<spinner/>", "<spinner min='x' decimals='' step='-'/>",
          "<button flatcolor_hover='1 2 3' halign='left'/>",
          "<list style='odd' padding='1 2' halign='none'/>",
          "<dialog closebtn='yes' titlebar='maybe'/>", "<list>text<unknown/><tooltip/></list>"}) {
        const ComponentPtr component = build(xml);
        const Element element = written(*component);
        EXPECT_EQ(element.attributeCount() + element.childCount(), 0u) << element.fragment();
    }
    EXPECT_FALSE(build("<unknown/>"));
}

struct FixedCase
{
    const char* attributes;
    Size minimum, maximum, size, desired;
};

TEST_F(Model, sizesAtConstruction)
{
    constexpr int kAny = kUnlimited.width;
    const FixedCase cases[] = {
        {"", {0, 0}, {kAny, kAny}, {0, 0}, {0, 0}},
        {"fixed='vertical' height='20'", {0, 20}, {kAny, 20}, {0, 20}, {0, 20}},
        {"fixed='horizontal' width='5' desiredwidth='9'", {9, 0}, {9, kAny}, {9, 0}, {9, 0}},
        {"fixed='yes' width='5' height='6' minheight='1'", {5, 6}, {5, 6}, {5, 6}, {5, 6}},
        {"width='5' minwidth='10'", {10, 0}, {kAny, kAny}, {10, 0}, {5, 0}},
        {"width='50' maxwidth='10'", {0, 0}, {10, kAny}, {10, 0}, {50, 0}},
        {"width='5' minwidth='20' maxwidth='10'", {20, 0}, {10, kAny}, {10, 0}, {5, 0}},
    };
    for (const FixedCase& c : cases) {
        const ComponentPtr list = build("<list " + std::string(c.attributes) + "/>");
        EXPECT_EQ(list->minSize(), c.minimum) << c.attributes;
        EXPECT_EQ(list->maxSize(), c.maximum) << c.attributes;
        EXPECT_EQ(list->size(), c.size) << c.attributes;
        EXPECT_EQ(list->desiredSize(), c.desired) << c.attributes;
    }
}

TEST_F(Model, findLooksAtTheChildrenBeforeTheirs)
{
    const ComponentPtr root =
        build("<list id='5'><list><label id='7'/><label/></list><button id='7'/></list>");
    EXPECT_EQ(root->findById(7), root->childAt(1));
    EXPECT_EQ(root->findById(-1), root->childAt(0));
    EXPECT_EQ(root->findById(5), nullptr) << "the component itself is not looked at";
    EXPECT_EQ(root->childAt(1)->findById(-1), nullptr);
    EXPECT_EQ(toSpinner(root->findById(7)), nullptr);
    EXPECT_NE(toButton(root->findById(7)), nullptr);
    EXPECT_EQ(toButton(root->findById(99)), nullptr);
}

TEST_F(Model, variablesExpandFromTheInside)
{
    const ComponentPtr root = build("<dialog><list><label/></list></dialog>");
    Component& label = *root->childAt(0)->childAt(0);
    root->setVariable("[images]", "/data/images");
    root->setVariable("[loop]", "[loop]x");
    label.setVariable("[own]", "[images]/own");
    const std::pair<const char*, const char*> cases[] = {
        {"[images]/a.png", "/data/images/a.png"},
        {"[own].png:[own]", "/data/images/own.png:/data/images/own"},
        {"[other]", "[other]"},
        {"[loop]", "[loop]x"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(label.expandVariables(text), expected);
    root->setVariable("[images]", "");
    EXPECT_EQ(label.expandVariables("[images]"), "[images]");
}

TEST_F(Model, showAndHideTellInOrder)
{
    using namespace message;
    const ComponentPtr root = build("<list id='1'><label id='2'/></list>");
    Listener heard;
    heard.listenTo(root.get());
    heard.listenTo(root->childAt(0));
    using List = std::vector<Listener::Heard>;
    const List shown{{showBegins, 1}, {showBegins, 2}, {showEnded, 2}, {showEnded, 1}};
    const List hidden{{hideBegins, 1}, {hideBegins, 2}, {hideEnded, 2}, {hideEnded, 1}};
    root->show();
    EXPECT_EQ(heard.heard, shown);
    heard.heard.clear();
    root->show();
    List both = hidden;
    both.insert(both.end(), shown.begin(), shown.end());
    EXPECT_EQ(heard.heard, both) << "a second show hides first";
    heard.heard.clear();
    root->childAt(0)->destroy();
    EXPECT_EQ(heard.heard, (List{{destroyed, 2}}));
    EXPECT_EQ(root->childCount(), 0u);
}

TEST_F(Model, flagsCountWithThoseOfTheAncestors)
{
    const ComponentPtr root = build(
        "<list visible='no' enabled='false'><list enabled='no'><label id='1'/></list></list>");
    Component& label = *root->findById(1);
    EXPECT_FALSE(label.isVisible());
    root->setVisible(true, false);
    EXPECT_TRUE(label.isVisible());
    label.setEnabled(true, false);
    EXPECT_FALSE(label.isEnabled()) << "its ancestors are not";
    label.setEnabled(true, true);
    EXPECT_TRUE(label.isEnabled());
    root->setEnabled(false, true);
    root->setEnabled(true, false);
    EXPECT_FALSE(label.isEnabled()) << "disabling went down, enabling did not";
}

TEST_F(Model, sidesHaveTwoOrders)
{
    const ComponentPtr component = build("<border padding='1 2 3 4' padding-left='9'/>");
    auto* const border = toBorder(component.get());
    ASSERT_NE(border, nullptr);
    const std::pair<Side, int> read[] = {
        {Side::Left, 9}, {Side::Top, 2}, {Side::Right, 3}, {Side::Bottom, 4}};
    for (const auto& [side, pixels] : read)
        EXPECT_EQ(border->padding(side), pixels);
    border->setPadding(10, 20, 30, 40); // top, right, bottom, left
    EXPECT_EQ(written(*component).attributeValue("padding"), "40 10 20 30");
}

TEST_F(Model, aSpinnersWholeNumber)
{
    const ComponentPtr component = build("<spinner min='-10' max='10' triggerlength='0'/>");
    auto* const spinner = toSpinner(component.get());
    EXPECT_EQ(spinner->triggerLength(), 1) << "0 would divide by it";
    const std::pair<double, int> cases[] = {{2.4, 2},   {2.5, 2},   {2.6, 3},   {0.0, 0},
                                            {-1.0, -1}, {-1.4, -1}, {-1.6, -2}, {99.0, 10}};
    for (const auto& [value, whole] : cases) {
        spinner->setValue(value);
        EXPECT_EQ(spinner->valueInt(), whole) << value;
    }
}

TEST_F(Model, theCurrentItemStaysTheCurrentOne)
{
    const ComponentPtr component = build("<combobox><item>A</item><item>B</item></combobox>");
    auto* const combo = toComboBox(component.get());
    combo->selectText("B");
    combo->insertItem("First", 0);
    EXPECT_EQ(combo->currentText(), "B");
    combo->insertItem("Last", 99);
    EXPECT_EQ(combo->indexOf("Last"), 3);
    combo->removeItem(0);
    EXPECT_EQ(combo->currentText(), "B");
    combo->removeItem(-1);
    combo->removeItem(7);
    EXPECT_EQ(combo->count(), 3);
    combo->selectIndex(7);
    EXPECT_EQ(combo->currentIndex(), -1);
    EXPECT_EQ(combo->itemAt(-1), "");
}

TEST_F(Model, aGraphsPixelsAndCopy)
{
    const ComponentPtr component = build(
        "<graph width='101' height='51' boundary_left='-1' boundary_right='1' boundary_top='5'"
        " boundary_bottom='-5'><curve r='1'><point x='2'/></curve></graph>");
    auto* const graph = toGraph(component.get());
    EXPECT_EQ(graph->pointAt({0, 0}), (graph::GraphPoint{-1.0, 5.0}));
    EXPECT_EQ(graph->pointAt({75, 50}), (graph::GraphPoint{0.5, -5.0}));
    const ComponentPtr copy(graph->clone());
    graph->clear();
    ASSERT_NE(toGraph(copy.get())->curveAt(0), nullptr);
    EXPECT_EQ(toGraph(copy.get())->curveAt(0)->points,
              (std::vector<graph::GraphPoint>{{2.0, 0.0}}));
}

} // namespace

} // namespace tvw::gui

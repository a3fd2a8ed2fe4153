#include "core/configadaptor/elements.h"
#include "core/configadaptor/profile_conversion.h"
#include "core/configadaptor/template_config.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace tvw::rgs::core::configadaptor {

namespace {

using util::xml::Element;

Element parsed(const std::string& text)
{
    Element element;
    EXPECT_EQ(element.parse(text), util::xml::code::ok) << text;
    return element;
}

std::vector<std::string> events;

struct Tool final : CInterfaceCallback
{
    void itemChanged(const std::string& label) override { events.push_back("changed " + label); }
};

/// A tool's declaration: numbers 0 to 5, the button takes 4.
class Items : public ::testing::Test
{
protected:
    Items()
    {
        events.clear();
        auto* const group = new element::Group("Values", "What it does");
        auto* const inner = new element::Group("Inner", "");
        root.addChild(group);
        group->addChild(new element::Spinner(0, "Speed", "", &speed, {0.0, 100.0, 0.1, 2}, &tool));
        group->addChild(new element::Spinner_Int(1, "Gears", "", &gears, {1, 8, 1, 5}, &tool));
        group->addChild(inner);
        inner->addChild(new element::CheckBox(2, "Hide Helpers", "", &hide, &tool));
        inner->addChild(new element::TextBox(3, "Note", "", &note, nullptr));
        inner->addChild(new element::Button(4, "Reset", "", &tool));
        inner->addChild(units);
        inner->addChild(new element::Label(kNoId, "a remark", 0));
    }

    std::string profile()
    {
        Element out;
        root.writeProfile(out);
        return out.fragment();
    }
    void read(const std::string& text) { root.readProfile(parsed(text)); }

    /// One group with one item in it.
    void readItem(const std::string& item)
    {
        read(R"(<configprofile version="2.0"><group id="-1">)" + item + "</group></configprofile>");
    }

    Tool tool;
    double speed = 1.0;
    std::int32_t gears = 5;
    bool hide = false;
    std::string note = "old";
    std::int32_t unit = 1;
    element::ComboBox* const units =
        new element::ComboBox(5, "Units", "", {"km/h", "m/s", "mph"}, &unit, &tool);
    element::Root root;
};

TEST_F(Items, AProfileHoldsEachKindInItsForm)
{
    const std::string expected =
        parsed(R"(<configprofile version="2.0"><group id="-1" label="Values">
        <item id="0" type="blob" label="Speed">AAAAAAAA8D8=</item><item id="1" label="Gears">5</item>
        <group id="-1" label="Inner"><item id="2" label="Hide Helpers">0</item>
        <item id="3" type="text" label="Note">old</item><item id="5" type="text" label="Units">m/s</item>
        </group></group></configprofile>)")
            .fragment();
    EXPECT_EQ(profile(), expected);
    speed = 50.0;
    gears = 2;
    hide = true;
    note.clear();
    unit = 0;
    read(expected);
    EXPECT_EQ(profile(), expected);
    EXPECT_EQ(unit, 1);
    note.clear();
    read(profile());
    EXPECT_EQ(note, "") << "an empty text is a value";
}

TEST_F(Items, ADoubleComesBackBitForBit)
{
    for (const double value : {1.0 / 3.0, 5e-324, std::nextafter(100.0, 0.0), 0.1 + 0.2}) {
        speed = value;
        const std::string saved = profile();
        speed = 7.0;
        read(saved);
        EXPECT_EQ(speed, value);
    }
    readItem(R"(<item id="0" type="blob" label="Speed">AAAAAAAA4D8=</item>)");
    EXPECT_EQ(speed, 0.5);
}

TEST_F(Items, AnItemIsKnownByItsNumberAndItsLabel)
{
    struct Case
    {
        const char *name, *group;
        double expected; ///< 1 is what stands before
    };
    constexpr Case kCases[] = {
        {"both", R"(<group id="-1"><item id="0" label="Speed">2</item></group>)", 2},
        {"no label", R"(<group id="-1"><item id="0">2</item></group>)", 2},
        {"another label", R"(<group id="-1"><item id="0" label="speed">2</item></group>)", 1},
        {"another number", R"(<group id="-1"><item id="7" label="Speed">2</item></group>)", 1},
        {"no number", R"(<group id="-1"><item label="Speed">2</item></group>)", 1},
        {"the first that fits", R"(<group><item id="0" label="X">4</item>
            <item id="0" label="Speed">2</item><item id="0">3</item></group>)",
         2},
        {"a group without a number", R"(<group><item id="0">2</item></group>)", 2},
        {"a group of another label", R"(<group id="-1" label="Old"><item id="0">2</item></group>)",
         2},
        {"a group of another number", R"(<group id="3"><item id="0">2</item></group>)", 1},
        {"outside of its group", R"(<item id="0">2</item>)", 1},
        {"the last of two groups", R"(<group><item id="0">2</item></group>
            <group><item id="0">3</item></group>)",
         3},
        {"generic", R"(<group><item id="0" type="generic">2.5</item></group>)", 2.5},
        {"no number in it", R"(<group><item id="0">fast</item></group>)", 1},
        {"nothing in it", R"(<group><item id="0" label="Speed"/></group>)", 1},
        {"a type that is no number", R"(<group><item id="0" type="text">2</item></group>)", 1},
        {"a broken blob", R"(<group><item id="0" type="blob">AAAA</item></group>)", 1},
        {"not a number", R"(<group><item id="0" type="blob">AAAAAAAA+H8=</item></group>)", 1},
        {"beyond its bounds", R"(<group><item id="0">1000</item></group>)", 100},
    };
    for (const Case& c : kCases) {
        speed = 1.0;
        read(R"(<configprofile version="2.0">)" + std::string(c.group) + "</configprofile>");
        EXPECT_EQ(speed, c.expected) << c.name;
    }
}

TEST_F(Items, ATextThatIsNoEntryChoosesNothing)
{
    const auto readUnit = [&](const std::string& text) {
        read(
            R"(<configprofile version="2.0"><group><group><item id="5" label="Units" type="text">)" +
            text + "</item></group></group></configprofile>");
    };
    readUnit("mph");
    EXPECT_EQ(unit, 2);
    readUnit("knots");
    EXPECT_EQ(unit, 2);
    units->update({"m/s"});
    EXPECT_EQ(units->text(), "") << "the tool's index is beyond the new entries";
    EXPECT_EQ(units->choices().size(), 1u);
}

TEST_F(Items, AChangeIsBoundedWrittenAndToldInItsUndo)
{
    static constexpr UndoBracket kBracket{
        [](const std::string& name) { events.push_back("begin " + name); },
        [] { events.push_back("end"); }};
    setUndoBracket(&kBracket);
    struct Listener final : MessageNode
    {
        Listener() : MessageNode("listener") {}
        void receive(Message& message, bool) override
        {
            if (message.id == message::profileChanged)
                events.push_back("profile");
            if (message.id == message::itemChanged)
                events.push_back("item " + std::to_string(message.param));
        }
    } listener;
    Node* const gearItem = root.findNode(1);
    listener.listenTo(gearItem);
    gearItem->change(99.0);
    EXPECT_EQ(gears, 8);
    EXPECT_EQ(events, (std::vector<std::string>{"begin Gears", "changed Gears", "end", "profile",
                                                "item 1"}));

    events.clear();
    root.findNode(3)->changeText("new");
    EXPECT_EQ(note, "new");
    EXPECT_TRUE(events.empty()) << "without a callback there is nothing to undo";

    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    for (const std::uint32_t id : {0u, 1u, 2u, 5u})
        root.findNode(id)->change(kNan);
    units->changeText("knots");
    units->change(3.0);
    units->change(-1.0);
    EXPECT_TRUE(events.empty());
    EXPECT_EQ(speed, 1.0);
    EXPECT_EQ(unit, 1);

    root.findNode(4)->press();
    units->changeText("km/h");
    EXPECT_EQ(unit, 0);
    EXPECT_EQ(events, (std::vector<std::string>{"begin Reset", "changed Reset", "end",
                                                "begin Units", "changed Units", "end"}));
    setUndoBracket(nullptr);
}

TEST_F(Items, ValuesAreReachedByNumber)
{
    root.setValueOf(1, 3.9);
    EXPECT_EQ(gears, 3);
    root.setValueOf(1, -1e300);
    EXPECT_EQ(gears, 1);
    root.setValueOf(2, 1.0);
    EXPECT_EQ(root.valueOf(2), 1.0);
    root.setValueOf(5, 2.0);
    root.setValueOf(5, 3.0);
    EXPECT_EQ(root.valueOf(5), 2.0);
    EXPECT_EQ(root.valueOf(99), 0.0);
    EXPECT_EQ(root.findNode(kNoId), nullptr) << "groups have no number";

    const Element config =
        parsed(R"(<config><list><spinner id="40" defaultvalue="2"/></list></config>)");
    root.addChild(makeTemplateConfig(config, ""));
    EXPECT_EQ(root.valueOf(40), 2.0);
    root.setValueOf(40, 3.0);
    EXPECT_EQ(root.valueOf(40), 3.0);
}

TEST_F(Items, AnOlderProfileIsConvertedAndRead)
{
    read(R"(<configprofile version="1.0" name="x"><profile><group name="Values">
        <spinner name="Speed">3.5</spinner><spinner name="Gears">2</spinner>
        <group name="Inner"><check name="Hide Helpers">true</check><text name="Note" value="n"/>
        <button/><combo name="Units" value="mph"/></group></group></profile></configprofile>)");
    EXPECT_EQ(speed, 3.5);
    EXPECT_EQ(gears, 2);
    EXPECT_TRUE(hide);
    EXPECT_EQ(note, "n");
    EXPECT_EQ(unit, 2);
}

TEST(ProfileConversion, TurnsEachOlderElement)
{
    constexpr std::pair<const char*, const char*> kCases[] = {
        {R"(<spinner name="A">1.25</spinner>)",
         R"(<item id="0" label="A" type="generic">1.25</item>)"},
        {R"(<spinner id="9" name="A">1</spinner><spinner name="B">2</spinner>)",
         R"(<item id="9" label="A" type="generic">1</item><item id="0" label="B" type="generic">2</item>)"},
        {R"(<check name="A">true</check>)", R"(<item id="0" label="A" type="generic">1</item>)"},
        {R"(<check name="A">TRUE</check>)", R"(<item id="0" label="A" type="generic">0</item>)"},
        {R"(<combo name="A" value="m/s"/>)", R"(<item id="0" label="A" type="string">m/s</item>)"},
        {R"(<text name="A" value=""/>)", R"(<item id="0" label="A" type="string"/>)"},
        {R"(<button name="A"/><check name="B">no</check>)",
         R"(<item id="1" label="B" type="generic">0</item>)"},
        {R"(<group name="G"><check name="A">true</check></group><check name="B">true</check>)",
         R"(<group id="-1" label="G"><item id="0" label="A" type="generic">1</item></group>
            <item id="1" label="B" type="generic">1</item>)"},
        {R"(<group id="4" name="G"/><graph name="A"/>)", R"(<group id="4" label="G"/>)"},
    };
    for (const auto& [older, wanted] : kCases) {
        const Element old = parsed(R"(<profile name="P">)" + std::string(older) + "</profile>");
        const Element expected =
            parsed(R"(<configprofile version="2.0" name="P" converted="yes">)" +
                   std::string(wanted) + "</configprofile>");
        EXPECT_EQ(convertProfile(old).fragment(), expected.fragment()) << older;
    }
    const Element present =
        parsed(R"(<configprofile version="2.0" name="P"><item id="1"/></configprofile>)");
    EXPECT_EQ(convertProfile(present).fragment(), present.fragment());
    EXPECT_EQ(convertProfile(Element()).childCount(), 0u);
}

} // namespace

} // namespace tvw::rgs::core::configadaptor

// Tools without program code: what their records say is run.
#include "core/tool.h"
#include "core/tool_record.h"
#include "tests/support/session_test.h"
#include "unidevice/scripted_device.h"

namespace tvw::rgs::core {

namespace {

using testing::ElementsAre;
using tests::drive;

const std::string kConfig =
    R"(<config><list><spinner id="1" label="One" defaultvalue="2" min="0" max="100"/>
<list><spinner id="2" label="Two" min="-50" max="50"/><checkbox id="3" label="Flag" defaultstate="true"/></list>
</list></config>)";

/// Twice the one source.
std::string doubled(const std::string& target, const std::string& source)
{
    return "<target " + target + "><parameters><source " + source + "/></parameters><script><mul>" +
           "<parameter>0</parameter><constant>2</constant></mul></script></target>";
}

std::string rig(const std::string& name, const std::string& inside, const std::string& more = {})
{
    return "<RGT_Plugin><type>template</type><name>" + name + "</name><customdata>" + kConfig +
           inside + "</customdata>" + more + "</RGT_Plugin>";
}

class Templates : public tests::SessionTest
{
protected:
    configadaptor::Node& items(const char* name)
    {
        return *session->tool(name)->instance().configuration();
    }
    double value(const char* name, std::uint32_t id) { return items(name).valueOf(id); }
    unidevice::Property& input(const char* name, int index)
    {
        return *session->tool(name)->instance().properties().propertyAt(index);
    }
};

} // namespace

TEST_F(Templates, HaveTheItemsAndInputsOfTheirRecord)
{
    ASSERT_NE(read(rig("Rig", R"(<input><property name="Gas"><finite/><binary>1</binary></property>
                                 <property><name>Brake</name><infinite/></property></input>)")),
              nullptr);
    EXPECT_EQ(value("Rig", 1), 2.0);
    EXPECT_EQ(value("Rig", 2), 0.0);
    EXPECT_EQ(value("Rig", 3), 1.0);
    EXPECT_EQ(value("Rig", 9), 0.0);
    items("Rig").setValueOf(1, 1e9);
    items("Rig").setValueOf(3, -4.0);
    items("Rig").setValueOf(9, 4.0);
    EXPECT_EQ(value("Rig", 1), 100.0) << "held to its bounds";
    EXPECT_EQ(value("Rig", 3), 1.0) << "a flag is 0 or 1";
    EXPECT_EQ(input("Rig", 0).name(), "Gas");
    EXPECT_EQ(input("Rig", 0).kindMask(), 5U);
    EXPECT_EQ(input("Rig", 1).name(), "Brake");
    EXPECT_EQ(input("Rig", 1).kindMask(), 8U);

    util::xml::Element record;
    writeRecord(*session->tool("Rig"), recordflag::plain, record);
    session->clear();
    ASSERT_NE(read(record.fragment()), nullptr);
    EXPECT_EQ(value("Rig", 1), 100.0);
    EXPECT_EQ(value("Rig", 3), 1.0);
    EXPECT_EQ(input("Rig", 1).name(), "Brake");
}

TEST_F(Templates, GiveOutputsFromItemsAndInputs)
{
    ASSERT_NE(read(rig("Rig", R"(<input><property name="Gas"><finite/></property></input>
        <virtualdevice><control name="Sum" index="4"><finite/><spinner id="1"/><property>Gas</property>
        <script><add><parameter>0</parameter><parameter>1</parameter></add></script></control>
        <control name="Mute" index="5"><binary/></control></virtualdevice>)")),
              nullptr);
    Instance& tool = session->tool("Rig")->instance();
    auto& pad = session->addDevice("Pad", {.axes = 1});
    input("Rig", 0).deadzone = 0.0;
    input("Rig", 0).bind(pad.controlAt(0));
    pad.set("Axis", 0, 0.5);
    pad.update(nullptr);
    ASSERT_EQ(tool.controlCount(), 2);
    EXPECT_EQ(tool.controlAt(0)->index, 4);
    EXPECT_EQ(tool.controlAt(0)->kindMask, 4U);
    tool.update(nullptr);
    EXPECT_EQ(tool.controlAt(0)->current, 2.5);
    EXPECT_EQ(tool.controlAt(1)->current, 0.0);
    items("Rig").setValueOf(1, 7.0);
    tool.update(nullptr);
    EXPECT_EQ(tool.controlAt(0)->current, 7.5);
    EXPECT_EQ(tool.controlAt(0)->previous, 2.5);
    input("Rig", 0).bind(nullptr);
    session->removeDevice(pad);
}

TEST_F(Templates, FireOnInputsInARun)
{
    ASSERT_NE(read(rig("Rig", R"(<input><property name="Gas"><finite/></property></input>
        <logic><trigger type="property" id="0">)" +
                                  doubled("id=\"2\"", "type=\"property\" id=\"0\"") +
                                  "</trigger></logic>")),
              nullptr);
    auto& pad = session->addDevice("Pad", {.axes = 1});
    input("Rig", 0).deadzone = 0.0;
    input("Rig", 0).bind(pad.controlAt(0));
    pad.set("Axis", 0, 0.25);
    drive(*session, 0.2);
    EXPECT_EQ(value("Rig", 2), 0.5);
    input("Rig", 0).bind(nullptr);
    session->removeDevice(pad);
}

TEST_F(Templates, ThatFireEachOtherComeToRest)
{
    ASSERT_NE(read(rig("Rig", "<logic><trigger type=\"item\" id=\"1\">" +
                                  doubled("id=\"2\"", "id=\"1\"") +
                                  "</trigger><trigger type=\"item\" id=\"2\">" +
                                  doubled("id=\"1\"", "id=\"2\"") + "</trigger></logic>")),
              nullptr);
    items("Rig").setValueOf(1, 10.0);
    EXPECT_EQ(value("Rig", 2), 20.0);
    EXPECT_EQ(value("Rig", 1), 40.0);
    items("Rig").setValueOf(3, 0.0);
    EXPECT_EQ(value("Rig", 2), 20.0) << "only a trigger's own item fires";
}

TEST_F(Templates, ReachIntoOtherToolsOfTheTree)
{
    const std::string logic =
        "<logic><trigger type=\"item\" id=\"1\" external=\"Other\">" +
        doubled("id=\"2\" external=\"Other\"", "id=\"1\" external=\"Other\"") +
        "</trigger></logic>";
    const std::string file = "<RGT>" + rig("Rig", logic) + rig("Other", "") + "</RGT>";
    ASSERT_NE(read(file), nullptr);
    ASSERT_NE(read(file), nullptr);
    items("Other").setValueOf(1, 4.0);
    items("Other_01").setValueOf(1, 5.0);
    EXPECT_EQ(value("Other", 2), 0.0) << "another tool's item fires in a run";
    drive(*session, 0.1);
    EXPECT_EQ(value("Other", 2), 8.0);
    EXPECT_EQ(value("Other_01", 2), 10.0) << "each file's own";
    remove(*session->tool("Other"));
    drive(*session, 0.1);
    session->root().childReferences().front()->instance().startRun(
        0.0); // its target stands in limbo
}

TEST_F(Templates, KeepTheNodesOfTheirRecord)
{
    const std::string record =
        rig("Rig", "", R"(<nodeinfo><node name="Frame"/><node name="Lens" type="camera">
        <parent>Frame</parent><visible>false</visible></node><select>Frame</select></nodeinfo>)");
    ASSERT_NE(read(record), nullptr);
    EXPECT_THAT(sceneNames(), ElementsAre("Rig_Frame", "Rig_Lens"));
    EXPECT_TRUE(scene().find("Rig_Lens")->hasLens());
    EXPECT_FALSE(scene().find("Rig_Lens")->state().visible);
    EXPECT_TRUE(scene().find("Rig_Frame")->state().selected);

    util::xml::Element state;
    writeRecord(*session->tool("Rig"), recordflag::state, state);
    scene().saveNodeTags(&session->tool("Rig")->instance());
    InstanceManager::deleteReference(session->tool("Rig"), false);
    ASSERT_NE(read(state.fragment()), nullptr);
    EXPECT_THAT(sceneNames(), ElementsAre("Rig_Frame", "Rig_Lens")) << "they stand already";
}

TEST_F(Templates, OfTheLibraryAreMadeByTheirName)
{
    user.write("prm/car.prm", rig("My Car", "<category>Vehicle</category>",
                                  R"(<nodeinfo><node name="Frame"/></nodeinfo>)"));
    open();
    make("First", nullptr, "My Car");
    make("", nullptr, "My Car");
    make("", nullptr, "My Car");
    EXPECT_THAT(tree(), ElementsAre("First", "My Car", "My Car_01"));
    EXPECT_THAT(sceneNames(), ElementsAre("First_Frame", "My Car_Frame", "My Car_01_Frame"));
    EXPECT_EQ(value("First", 1), 2.0);
}

} // namespace tvw::rgs::core

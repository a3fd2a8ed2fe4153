// The record of a tool: what is written, what comes back, and what is refused.
#include "core/tool_record.h"
#include "tests/support/session_test.h"
#include "util/base64.h"

#include <cstring>

namespace tvw::rgs::core {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::drive;
using util::xml::Element;

class ToolRecord : public tests::SessionTest
{
protected:
    Element recordOf(InstanceReference& entry, std::uint32_t flags)
    {
        Element record;
        writeRecord(entry, flags, record);
        return record;
    }

    Instance& instance(const char* name) { return session->tool(name)->instance(); }
    double speed(const char* name) { return instance(name).configuration()->valueOf(0); }
    stage::StageNode& node(const char* name) { return *scene().find(name); }

    /// As a scene file holds the tool: tags on its nodes, no tool.
    void leaveNodesAlone(const char* name)
    {
        scene().saveNodeTags(&instance(name));
        InstanceManager::deleteReference(session->tool(name), false);
    }

    void place(const char* name, double x)
    {
        Matrix4 pose;
        setTranslation(pose, {x, 0, 0});
        node(name).setWorld(pose, scene().getTime(), false);
    }
};

std::string tiny(const std::string& name, const std::string& inside = {})
{
    return "<RGT_Plugin version=\"2.5\"><type>Tiny</type><name>" + name + "</name>" + inside +
           "</RGT_Plugin>";
}

} // namespace

TEST_F(ToolRecord, AcceptsEachRootAndSkipsUnknownTypes)
{
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {tiny("A"), {"A"}},
        {"<RGT>" + tiny("A") + tiny("B") + "</RGT>", {"A", "B"}},
        {"<rgs>" + tiny("A", tiny("B")) + "</rgs>", {"A", "A/B"}},
        {"<RGT></RGT>", {}},
        {"<pear><type>Tiny</type></pear>", {}},
        {"<RGT><pear/>" + tiny("A") + "</RGT>", {"A"}},
        {"<RGT><RGT_Plugin><type>Pear</type></RGT_Plugin>" + tiny("A") + "</RGT>", {"A"}},
        {tiny("A", "<RGT_Plugin><type>Pear</type>" + tiny("B") + "</RGT_Plugin>" + tiny("C")),
         {"A", "A/C"}},
        {"<RGT_Plugin/>", {}},
        {"<RGT_Plugin><type>TinyOld</type></RGT_Plugin>", {"Tiny_01"}},
        {"<RGT_Plugin compressed=\"1\">no base64</RGT_Plugin>", {}},
        {"<RGT_Plugin compressed=\"1\"></RGT_Plugin>", {}},
        {"<RGT_Plugin compressed=\"yes\"><type>Tiny</type><name>A</name></RGT_Plugin>", {"A"}},
    };
    for (const auto& [xml, made] : cases) {
        InstanceReference* const first = read(xml);
        EXPECT_EQ(tree(), made) << xml;
        EXPECT_EQ(first ? first->getText() : "", made.empty() ? "" : made.front()) << xml;
        session->clear();
    }
    EXPECT_FALSE(session->createFromXml("<RGT>" + tiny("A"))) << "breaks off";
    EXPECT_THAT(tree(), IsEmpty());
}

TEST_F(ToolRecord, WithoutStateMakesTheToolAnewAsItStood)
{
    InstanceReference& car = make("Car");
    make("Wheel", &car);
    instance("Car").configuration()->setValueOf(0, 42.0);
    place("Car_Base", 5.0);
    place("Car_Arm", 8.0);
    node("Car_Arm").setVisible(false);
    node("Car_Eye").setFov(30.0, 0.0, false);
    node("Wheel_Base").setParent(&node("Car_Arm"));
    session->tool("Wheel")->setState(Column::Run, ColumnState::Off, false);
    const Element record = recordOf(car, recordflag::plain);
    EXPECT_TRUE(record.child("savedata").isEmpty());
    EXPECT_TRUE(record.child("checked").isEmpty()) << "on is not written";
    EXPECT_EQ(record.child("RGT_Plugin").child("checked").text(), "false");
    EXPECT_EQ(record.attributeValue("version"), "2.5");

    session->clear();
    ASSERT_NE(read(record.fragment()), nullptr);
    EXPECT_THAT(tree(), ElementsAre("Car", "Car/Wheel"));
    EXPECT_EQ(speed("Car"), 42.0);
    EXPECT_EQ(node("Car_Base").world(0.0).m[12], 5.0);
    EXPECT_EQ(node("Car_Arm").world(0.0).m[12], 8.0);
    EXPECT_FALSE(node("Car_Arm").state().visible);
    EXPECT_DOUBLE_EQ(node("Car_Eye").fov(0.0), 30.0);
    EXPECT_EQ(node("Car_Arm").parent(), &node("Car_Base"));
    EXPECT_EQ(node("Wheel_Base").parent(), &node("Car_Arm"));
    EXPECT_EQ(session->tool("Wheel")->getState(Column::Run), ColumnState::Off);
    EXPECT_EQ(session->tool("Car")->getState(Column::Run), ColumnState::On);

    // Again beside the first: its parts belong together, not to those of the same names.
    ASSERT_NE(read(record.fragment()), nullptr);
    EXPECT_EQ(node("Wheel_01_Base").parent(), &node("Car_01_Arm"));
}

TEST_F(ToolRecord, ReferencesOfAFileMayPointForward)
{
    const std::string link =
        "<nodeinfo><node name=\"Base\"><parent external=\"B\">Arm</parent></node></nodeinfo>";
    ASSERT_NE(read("<RGT>" + tiny("A", link) + tiny("B") + "</RGT>"), nullptr);
    EXPECT_EQ(node("A_Base").parent(), &node("B_Arm"));
    const std::string lost =
        "<nodeinfo><node name=\"Base\"><parent external=\"Pear\">Arm</parent></node></nodeinfo>";
    ASSERT_NE(read(tiny("C", lost)), nullptr);
    EXPECT_EQ(node("C_Base").parent(), nullptr);
}

TEST_F(ToolRecord, WithStateTakesOverTheNodesThatStand)
{
    make("Car");
    instance("Car").configuration()->setValueOf(0, 3.0);
    drive(*session, 0.4);
    const std::vector<double> keys = node("Car_Base").poseKeyTimes();
    const Element record = recordOf(*session->tool("Car"), recordflag::state | recordflag::packed);
    EXPECT_EQ(record.attributeValue("compressed"), "1");
    EXPECT_EQ(record.childCount("type"), 0U);
    leaveNodesAlone("Car");
    ASSERT_EQ(sceneNames().size(), 3U);

    ASSERT_NE(read(record.fragment()), nullptr);
    EXPECT_EQ(sceneNames().size(), 3U) << "no new nodes";
    EXPECT_EQ(scene().ownerOf(node("Car_Base")), &instance("Car"));
    EXPECT_EQ(node("Car_Base").poseKeyTimes(), keys);
    EXPECT_EQ(speed("Car"), 3.0);
    EXPECT_EQ(instance("Car").recordedInputs().lines().size(), 1U);
    EXPECT_FALSE(instance("Car").recordedInputs().lines()[0].empty());
}

TEST_F(ToolRecord, WithStateButWithoutItsNodesSaysWhichAndMakesNothing)
{
    make("Car");
    const Element record = recordOf(*session->tool("Car"), recordflag::state);
    leaveNodesAlone("Car");
    scene().remove(node("Car_Eye"));
    EXPECT_EQ(read(record.fragment()), nullptr);
    EXPECT_THAT(tree(), IsEmpty());
    EXPECT_EQ(sceneNames().size(), 2U) << "what stands stays";
    ASSERT_EQ(session->messages().size(), 1U);
    EXPECT_EQ(session->messages()[0].title, "Error loading plugin");
    EXPECT_EQ(
        session->messages()[0].text,
        "Some nodes required for this plugin was not found in the scene. Please make sure all "
        "required nodes are present.\nThe following nodes were not found:\n\nCar_Eye\n");
}

TEST_F(ToolRecord, SurvivesDamage)
{
    const char* const cases[] = {
        "<savedata>!!!</savedata>",
        "<savedata>AAAA</savedata>",
        "<recordedinputvalues><input>AAAA</input><input/><input>x</input></recordedinputvalues>",
        "<nodeinfo><node/><node name=\"Base\"><transform "
        "reference=\"global\">AAAA</transform></node></nodeinfo>",
        "<nodeinfo><node name=\"Base\"><CMesh><vertex>AAAA</vertex></CMesh></node></nodeinfo>",
        "<nodeinfo><node "
        "name=\"Base\"><parent>Base</parent></node><select>Pear</select></nodeinfo>",
        "<nodeinfo><node name=\"Base\"><parent>Arm</parent></node></nodeinfo>",
        "<configprofile/><inputprofile><property/></inputprofile><customdata/>",
        "<configprofile version=\"2.0\"><group><item id=\"0\">nan</item></group></configprofile>",
    };
    for (const char* const inside : cases) {
        read(tiny("Car", inside));
        if (session->tool("Car")) {
            drive(*session, 0.1);
            EXPECT_TRUE(std::isfinite(speed("Car"))) << inside;
            EXPECT_TRUE(std::isfinite(node("Car_Base").world(0.0).m[12])) << inside;
        }
        session->clear();
    }
}

TEST_F(ToolRecord, OfTheWholeTreeGoesThroughAFile)
{
    InstanceReference& set = make("Set", nullptr, "Group");
    make("Car", &set);
    make("Bus");
    const std::string path = user.path() + "/all.prm";
    ASSERT_TRUE(session->savePrm(path));
    session->clear();
    ASSERT_TRUE(session->loadPrm(path));
    EXPECT_THAT(tree(), ElementsAre("Set", "Set/Car", "Bus"));
    ASSERT_TRUE(session->loadPrm(path, session->tool("Set")));
    EXPECT_THAT(tree(), ElementsAre("Set", "Set/Car", "Set/Set_01", "Set/Set_01/Car_01",
                                    "Set/Bus_01", "Bus"));

    Element unbound = util::xml::Tag("scene");
    session->core().saveUnboundTools(unbound);
    ASSERT_EQ(unbound.child("RGT").childCount("RGT_Plugin"), 1U) << "only the tools without nodes";
    EXPECT_EQ(unbound.child("RGT").child("RGT_Plugin").child("name").text(), "Set");
    const Element& kept = unbound.child("RGT").child("RGT_Plugin");
    ASSERT_EQ(kept.childCount("RGT_Plugin"), 1U) << "and those below them";
    EXPECT_EQ(kept.child("RGT_Plugin").child("name").text(), "Set_01");
    EXPECT_EQ(kept.child("RGT_Plugin").childCount("RGT_Plugin"), 0U);
}

} // namespace tvw::rgs::core

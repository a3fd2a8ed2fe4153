#include "adaptor/stage/stage_tags.h"
#include "tests/adaptor/stage/fake_tool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tvw::rgs::stage {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
namespace xml = util::xml;

xml::Element master(const std::string& parent, int index, const std::string& record)
{
    xml::Element out = xml::Tag("masternode");
    if (!parent.empty())
        out.addChild(xml::TagWithData("parent", parent));
    out.addChild(xml::TagWithData("childindex", index));
    out.addChild(xml::TagWithData("RGT_Plugin", record));
    return out;
}

/// Tools whose nodes are saved with their tags, and a gathering that makes them anew.
class StageTags : public testing::Test, protected ToolStage
{
protected:
    StageTags()
    {
        stage.hooks.createTool = [this](const xml::Element& record, const std::string& parent,
                                        int index) {
            created.push_back(std::string(record.text()) + " below '" + parent + "' at " +
                              std::to_string(index));
            if (onCreate)
                onCreate(record);
        };
    }

    void answer(FakeTool& tool, const std::string& parent, int index)
    {
        tool.record = [=, name = tool.name](XmlSink& sink) {
            sink.take(master(parent, index, "record of " + name));
        };
    }

    /// The stage as it stands after its file was opened again: nodes and tags, no tools.
    void reopen(std::initializer_list<FakeTool*> tools)
    {
        for (FakeTool* tool : tools)
            stage.saveNodeTags(tool);
        for (core::CoreNode* node : all())
            node->markDeleted();
    }

    std::vector<core::CoreNode*> bind(const std::string& tool,
                                      std::initializer_list<const char*> names)
    {
        xml::Element info = xml::Tag("nodeinfo");
        for (const char* name : names) {
            xml::Element node = xml::Tag("node");
            node.setAttribute("name", name);
            info.addChild(node);
        }
        std::vector<core::CoreNode*> nodes;
        ReturnValue<std::vector<core::CoreNode*>> out(nodes);
        stage.bindNodes(tool, info, out);
        return nodes;
    }

    FakeTool car{"Car"};
    FakeTool trailer{"Trailer"};
    FakeTool camera{"Cam <1> & \"2\""};
    std::vector<std::string> created;
    std::function<void(const xml::Element&)> onCreate;
};

TEST_F(StageTags, ParentsComeFirstAndChildrenInTheirPlaces)
{
    answer(trailer, "Car", 1);
    answer(camera, "Car", 0);
    answer(car, "", 3);
    helper(trailer, "Body");
    helper(camera, "Lens");
    helper(camera, "Target");
    helper(car, "Body");
    reopen({&trailer, &camera, &car});
    stage.gatherTools();
    EXPECT_THAT(created, ElementsAre("record of Car below '' at 3",
                                     "record of Cam <1> & \"2\" below 'Car' at 0",
                                     "record of Trailer below 'Car' at 1"));
}

TEST_F(StageTags, AParentWithNoNodesComesWithItsChildren)
{
    const auto withGroup = [](XmlSink& sink, const std::string& name, int index) {
        sink.take(master("Group", index, "record of " + name));
        sink.take(master("", 0, "record of Group"));
    };
    car.record = [&](XmlSink& sink) { withGroup(sink, "Car", 1); };
    trailer.record = [&](XmlSink& sink) { withGroup(sink, "Trailer", 0); };
    helper(car, "Body");
    helper(trailer, "Body");
    reopen({&car, &trailer});
    stage.gatherTools();
    EXPECT_THAT(created,
                ElementsAre("record of Group below '' at 0", "record of Trailer below 'Group' at 0",
                            "record of Car below 'Group' at 1"));
}

TEST_F(StageTags, NodesAreBoundByToolAndNameInsideIt)
{
    answer(car, "", 0);
    answer(trailer, "", 1);
    NodeHandle& body = helper(car, "Body");
    NodeHandle& frame = helper(car, "Frame");
    NodeHandle& theirs = helper(trailer, "Body");
    frame.call(code::disown, nullptr);
    body.node().rename("something else");
    reopen({&car, &trailer});
    const std::vector<core::CoreNode*> found = bind("Car", {"Frame", "missing", "Body"});
    ASSERT_EQ(found.size(), 3U);
    EXPECT_TRUE(frame.isSameNode(found[0]));
    EXPECT_EQ(found[1], nullptr);
    EXPECT_TRUE(body.isSameNode(found[2]));
    EXPECT_FALSE(theirs.isSameNode(found[2]));
    FakeTool again("Car");
    EXPECT_FALSE(found[0]->clone(&again, "Frame")->isOwned()) << "runs go on leaving it alone";
    EXPECT_TRUE(found[2]->clone(&again, "Body")->isOwned());
    for (core::CoreNode* node : found) {
        if (node)
            node->destroy();
    }
    EXPECT_EQ(stage.ownerOf(body.node()), &again);
}

TEST_F(StageTags, WhatNobodyClaimsIsNamedOnce)
{
    answer(car, "", 0);
    helper(car, "Body");
    helper(trailer, "Body"); // gives no record
    helper(trailer, "Hook");
    reopen({&car, &trailer});
    onCreate = [this](const xml::Element&) {
        for (core::CoreNode* node : bind("Car", {"Body"})) {
            node->clone(&car, "Body");
            node->destroy();
        }
    };
    stage.gatherTools();
    ASSERT_EQ(stage.messages().size(), 1U);
    EXPECT_EQ(stage.messages()[0].title, "Gather error");
    EXPECT_EQ(stage.messages()[0].text,
              "Some nodes were found belonging to Rigstage, but they were never claimed. \n"
              " The following nodes were left out:\n\nTrailer_Body, Trailer_Hook");
    created.clear();
    stage.clearMessages();
    stage.tellAfterSave();
    stage.gatherTools();
    EXPECT_THAT(created, IsEmpty()) << "tags stand in saved files only";
    EXPECT_THAT(stage.messages(), IsEmpty());
}

TEST_F(StageTags, OneNodeOfTwoToolsAndRepeatedSaves)
{
    answer(car, "", 0);
    answer(trailer, "", 1);
    NodeHandle& shared = helper(car, "Hook");
    shared.clone(&trailer, "Towbar");
    for (int i = 0; i < 3; ++i) {
        stage.saveNodeTags(&car);
        stage.saveNodeTags(&trailer);
    }
    const TagIndex tags(stage);
    EXPECT_EQ(tags.find("Car", "Hook").node, &shared.node());
    EXPECT_EQ(tags.find("Trailer", "Towbar").node, &shared.node());
    EXPECT_EQ(tags.find("Trailer", "Hook").node, nullptr);
    EXPECT_EQ(tags.toolsInOrder().size(), 2U);
    xml::Element tag;
    ASSERT_EQ(tag.parse(shared.node().property(kTagProperty)), xml::code::ok);
    EXPECT_EQ(tag.childCount(kTagProperty), 1U) << "each save puts its tag in the old one's place";
}

TEST_F(StageTags, TextsThatAreNoTagsArePassedOver)
{
    for (const char* text : {"<RGT_tag", "just words", "<other/>", "<RGT_tag><name>x</RGT_tag>"})
        stage.addEmpty("node").setProperty(kTagProperty, text);
    StageNode& ring = stage.addEmpty("ring");
    xml::Element tag = xml::Tag(kTagProperty);
    tag.addChild(xml::TagWithData("name", "A"));
    xml::Element list = xml::Tag("masternodes");
    list.addChild(master("B", 0, "a"));
    list.addChild(master("A", 0, "b"));
    tag.addChild(list);
    ring.setProperty(kTagProperty, tag.fragment());
    stage.gatherTools();
    EXPECT_EQ(created.size(), 2U) << "parents in a ring are each made once";
    ASSERT_EQ(stage.messages().size(), 1U);
    EXPECT_THAT(stage.messages()[0].text, testing::EndsWith("\n\nring"));
}

} // namespace
} // namespace tvw::rgs::stage

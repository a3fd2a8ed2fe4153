// Tool files, saved tools and the order in which types are found.
#include "core/library.h"
#include "core/tool.h"
#include "tests/support/session_test.h"
#include "util/huffman.h"

namespace tvw::rgs::core {

namespace {

using testing::ElementsAre;

constexpr const char* kModel = "<RGT_Plugin><type>Group</type><name>Rig</name>"
                               "<customdata><category>Vehicle</category></customdata></RGT_Plugin>";

class ToolLibrary : public tests::SessionTest
{
protected:
    LibraryManager& libraries() { return LibraryManager::instance(); }
    static std::string toolFile(const char* name)
    {
        return std::string(RIGSTAGE_TOOL_FILES) + name + ".so";
    }
};

} // namespace

TEST_F(ToolLibrary, AnswersWhyAFileBroughtNothing)
{
    const std::pair<std::string, int> cases[] = {
        {"/nowhere/pear.so", 30},
        {user.write("text.so", "no module"), 30},
        {toolFile("noversion"), 31},
        {toolFile("otherversion"), 32},
        {toolFile("noplugins"), 33},
        {toolFile("same"), 34},
        {toolFile("good"), 0},
        {toolFile("good"), 35},
        {user.write("rgt.prm", std::string("<RGT>") + kModel + "</RGT>"), 0},
        {user.path() + "/rgt.prm", 35},
        {user.write("rgs.prm", std::string("<rgs>") + kModel + "</rgs>"), 0},
        {user.write("bare.prm", kModel), 0},
        {user.write("packed.prm", compress(kModel)), 0},
        {user.write("empty.prm", ""), 30},
        {user.write("broken.prm", "<RGT><RGT_Plugin>"), 30},
        {user.write("root.prm", "<pear/>"), 30},
        {user.write("none.prm", "<RGT></RGT>"), 34},
        {user.write("type.prm", "<RGT_Plugin><type>Pear</type></RGT_Plugin>"), 34},
    };
    for (const auto& [path, status] : cases) {
        const std::size_t before = libraries().libraries().size();
        EXPECT_EQ(static_cast<int>(libraries().load(path)), status) << path;
        EXPECT_EQ(libraries().libraries().size(), before + (status == 0)) << path;
    }
    EXPECT_EQ(libraries().findTool("Sinusoid")->library()->name(), "Core")
        << "the built-in one stays";
}

TEST_F(ToolLibrary, AToolOfAFileLivesAsAnyOther)
{
    ASSERT_EQ(libraries().load(toolFile("good")), LoadStatus::Loaded);
    EXPECT_EQ(libraries().libraries().back()->name(), "good");
    InstanceReference& entry = make("", nullptr, "Foreign");
    EXPECT_THAT(sceneNames(), ElementsAre("Foreign_01_Mark"));
    EXPECT_EQ(entry.instance().configuration()->valueOf(0), 7.0);
    EXPECT_EQ(entry.instance().iconPath(), "/core/images/treeicons/tarvo_vehicle_tools.png");
    remove(entry);
    open(); // its code is unloaded with a tool still in the undo list
}

TEST_F(ToolLibrary, ScansTheUsersFolderInItsOrder)
{
    user.write("prm/b.prm", kModel);
    user.write("prm/sub/a.prm", compress(kModel));
    user.write("prm/broken.prm", "<RGT>");
    user.write("prm/other.txt", kModel);
    open();
    std::vector<std::string> names;
    for (const Library* const library : libraries().libraries())
        names.push_back(library->name());
    EXPECT_THAT(names, ElementsAre("Core", "b", "a"));
    EXPECT_EQ(libraries().findTool("Rig")->library()->name(), "b") << "the first of an id";
    EXPECT_EQ(libraries().findTool("Rig")->getKind(), ToolKind::Template);
    EXPECT_THAT(libraries().findTool("Rig")->getCategories(), ElementsAre("Vehicle"));
}

TEST_F(ToolLibrary, FindsTypesByTheirOlderIds)
{
    Tool* const tiny = libraries().findTool("Tiny");
    ASSERT_NE(tiny, nullptr);
    EXPECT_EQ(libraries().findTool("TinyOld"), tiny);
    EXPECT_EQ(libraries().findTool("tiny"), nullptr);
    EXPECT_EQ(libraries().findTool("Empty plugin"), libraries().findTool("Group"));
    EXPECT_THAT(tiny->getCategories(), ElementsAre("Utility", "Camera"));
    EXPECT_EQ(tiny->getHelpPath().substr(tiny->getHelpPath().rfind('/')), "/tests_tiny.html");
    ASSERT_EQ(libraries().toolCount(), static_cast<int>(libraries().listTools(false).size()));
    EXPECT_EQ(libraries().toolAt(-1), nullptr);
    EXPECT_EQ(libraries().toolAt(libraries().toolCount()), nullptr);
    const std::vector<Tool*> sorted = libraries().listTools(true);
    EXPECT_TRUE(std::is_sorted(sorted.begin(), sorted.end(),
                               [](Tool* a, Tool* b) { return a->name() < b->name(); }));
}

} // namespace tvw::rgs::core

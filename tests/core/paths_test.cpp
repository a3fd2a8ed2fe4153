#include "core/paths.h"
#include "tests/support/session_test.h"

#include <gtest/gtest.h>

namespace tvw::rgs::core {

namespace {

/// An environment variable for the length of a block.
class Variable
{
public:
    Variable(const char* name, const char* value) : name_(name)
    {
        if (const char* present = std::getenv(name))
            before_ = present;
        value ? setenv(name, value, 1) : unsetenv(name);
    }
    ~Variable() { before_.empty() ? unsetenv(name_) : setenv(name_, before_.c_str(), 1); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* name_;
    std::string before_;
};

} // namespace

TEST(Paths, OfEachKind)
{
    const Variable root("RIGSTAGE_ROOT", "/opt/tarvo");
    constexpr std::pair<const char*, const char*> kCases[] = {
        {"data", ":/rigstage/data"},
        {"plugin", "/opt/tarvo/rigstage/plugins/linux/x64"},
        {"doc", "/opt/tarvo/rigstage/doc"},
        {"prm", "/opt/tarvo/rigstage/prm"},
        {"settings", "/opt/tarvo/rigstage"},
        {"rgs", "/opt/tarvo/rigstage"},
        {"", "/opt/tarvo/rigstage"},
        {"pear", "/opt/tarvo"},
        {"DATA", "/opt/tarvo"},
    };
    for (const auto& [kind, path] : kCases)
        EXPECT_EQ(getPath(kind), path) << kind;
}

TEST(Paths, OfTheUserFollowTheChoice)
{
    const Variable root("RIGSTAGE_ROOT", "/opt/tarvo");
    const Variable folder("RIGSTAGE_USER", "/home/ann/tarvo");
    struct Case
    {
        const char *chosen, *user, *settings;
    };
    constexpr Case kCases[] = {
        {"", "/home/ann/tarvo", "/opt/tarvo/rigstage/settings.json"},
        {"/tmp/here", "/tmp/here", "/tmp/here/settings.json"},
        {kNoUserPath, "", ""},
    };
    for (const Case& row : kCases) {
        setUserPath(row.chosen);
        EXPECT_EQ(getUserPath(), row.user) << row.chosen;
        EXPECT_EQ(getSettingsFile(), row.settings) << row.chosen;
    }
    setUserPath({});
    const Variable noRoot("RIGSTAGE_ROOT", nullptr);
    EXPECT_EQ(getSettingsFile(), "/home/ann/tarvo/settings.json");
}

TEST(Paths, OfTheUserFallBackToTheDesktopsFolders)
{
    const Variable none("RIGSTAGE_USER", nullptr);
    const Variable home("HOME", "/home/ann");
    {
        const Variable data("XDG_DATA_HOME", "/data/ann");
        EXPECT_EQ(getUserPath(), "/data/ann/rigstage");
    }
    const Variable data("XDG_DATA_HOME", nullptr);
    EXPECT_EQ(getUserPath(), "/home/ann/.local/share/rigstage");
}

TEST(Paths, AreJoinedAndCutAsText)
{
    EXPECT_EQ(joinPath("a", "b"), "ab");
    EXPECT_EQ(joinPath("", "/b"), "/b");
    constexpr std::pair<const char*, const char*> kCases[] = {
        {"a/b.prm", "b.prm"}, {"a\\b.prm", "b.prm"},
        {"a\\b/c", "c"},      {"b.prm", "b.prm"},
        {"a/", ""},           {"", ""}};
    for (const auto& [path, name] : kCases)
        EXPECT_EQ(fileName(path), name) << path;
}

TEST(Paths, ListsFilesOfAPattern)
{
    const tests::TemporaryFolder folder;
    folder.write("b.prm", "");
    folder.write("a.prm", "");
    folder.write("a.prm.bak", "");
    folder.write("sub/c.prm", "");
    std::filesystem::create_directories(folder.path() + "/d.prm");
    const std::string& in = folder.path();
    using Names = std::vector<std::string>;
    EXPECT_EQ(listFiles(in, "*.prm", false), (Names{in + "/a.prm", in + "/b.prm"}));
    EXPECT_EQ(listFiles(in, "*.prm", true),
              (Names{in + "/a.prm", in + "/b.prm", in + "/sub/c.prm"}));
    EXPECT_EQ(listFiles(in, "?.prm", false), (Names{in + "/a.prm", in + "/b.prm"}));
    EXPECT_EQ(listFiles(in + "/none", "*", true), Names());
    EXPECT_EQ(listFiles("", "*", true), Names());
}

TEST(Paths, MakesFoldersAndLeavesThoseThatAre)
{
    const tests::TemporaryFolder folder;
    const std::string deep = folder.path() + "/a/b/c";
    EXPECT_TRUE(makeDirectories(deep));
    EXPECT_TRUE(makeDirectories(deep));
    EXPECT_TRUE(std::filesystem::is_directory(deep));
    const std::string file = folder.write("file", "");
    EXPECT_FALSE(makeDirectories(file));
    EXPECT_FALSE(makeDirectories(file + "/below"));
}

} // namespace tvw::rgs::core

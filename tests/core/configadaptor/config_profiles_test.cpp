#include "core/configadaptor/config_profile_manager.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tvw::rgs::core {

namespace {

namespace fs = std::filesystem;
using unidevice::XMLFileManager;
using util::xml::Element;
using Names = std::vector<std::string>;

class ConfigProfiles : public ::testing::Test
{
protected:
    ConfigProfiles()
    {
        profiles.setSaveFolder(user);
        profiles.addSource(shipped + "/configprofile.xml");
        profiles.addSource(shipped + "/configprofiles");
        profiles.addSource(user);
    }

    std::string item(const std::string& name)
    {
        return std::string(profiles.profile(name).child("item").text());
    }

    const tests::TemporaryFolder folder;
    const std::string shipped = folder.path() + "/shipped";
    const std::string user = folder.path() + "/user";
    ConfigProfileManager profiles;
};

/// Two profiles, A and B, whose item holds this text.
std::string two(const std::string& value)
{
    const std::string items = R"(<item id="0">)" + value + "</item></configprofile>";
    return R"(<configprofiles version="2.0"><configprofile version="2.0" name="A">)" + items +
           R"(<configprofile version="2.0" name="B">)" + items + "</configprofiles>";
}

TEST_F(ConfigProfiles, TheUsersProfileWinsOverAShippedOne)
{
    folder.write(shipped + "/configprofile.xml", two("1"));
    folder.write(shipped + "/configprofiles/more.tvc",
                 R"(<configprofile version="2.0" name="B"><item id="0">2</item></configprofile>)");
    profiles.rescan();
    EXPECT_EQ(item("A"), "1");
    EXPECT_EQ(item("B"), "2");

    Element mine = profiles.profile("A");
    mine.findChild("item")->setAttribute("label", "mine");
    EXPECT_EQ(profiles.store(mine, true, false), XMLFileManager::done);
    profiles.rescan();
    EXPECT_EQ(profiles.profile("A").child("item").attributeValue("label"), "mine");
    EXPECT_EQ(profiles.fileOf("A"), user + "/A.tvc");
    Element file;
    ASSERT_EQ(file.loadFile(user + "/A.tvc"), util::xml::code::ok);
    EXPECT_EQ(file.name(), "configprofiles");
    EXPECT_EQ(file.attributeValue("version"), "2.0");
    EXPECT_EQ(file.childCount("configprofile"), 1u);
}

TEST_F(ConfigProfiles, FilesOfOlderVersionsAreConverted)
{
    for (const char* tag : {"ConfigProfile", "rgs_config", "CameraConfig"}) {
        const std::string name(tag);
        folder.write(user + "/old.tvc",
                     "<" + name +
                         R"(><profile name="A"><check name="On">true</check></profile>
            <profile name="B"><spinner name="S">2.5</spinner></profile></)" +
                         name + ">");
        profiles.rescan();
        ASSERT_EQ(profiles.names(), (Names{"A", "B"})) << tag;
        for (const char* profile : {"A", "B"})
            EXPECT_TRUE(profiles.profile(profile).hasAttribute("converted")) << tag << profile;
        EXPECT_EQ(item("A"), "1") << tag;
        EXPECT_EQ(item("B"), "2.5") << tag;
    }
    EXPECT_EQ(profiles.remove("A"), XMLFileManager::done);
    profiles.rescan();
    EXPECT_EQ(profiles.names(), Names{"B"});
    EXPECT_EQ(item("B"), "2.5");
}

TEST_F(ConfigProfiles, OtherFilesHoldNone)
{
    folder.write(user + "/a.tvc", R"(<unidevice><profile name="x"/></unidevice>)");
    folder.write(user + "/b.tvc",
                 R"(<configprofiles version="3.0"><configprofile name="x"/></configprofiles>)");
    folder.write(user + "/c.tvc", R"(<configprofile name="x"/>)");
    folder.write(user + "/d.tvc", "");
    profiles.rescan();
    EXPECT_TRUE(profiles.names().empty());
}

} // namespace

} // namespace tvw::rgs::core

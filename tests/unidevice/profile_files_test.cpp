#include "tests/support/temporary_folder.h"
#include "unidevice/input_profile_manager.h"
#include "util/file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tvw::unidevice {

namespace {

namespace fs = std::filesystem;
using util::xml::Element;
using Names = std::vector<std::string>;

/// A profile whose one input has this multiplier, so that one can tell whose it is.
Element makeProfile(const char* name, int multiplier)
{
    util::xml::Tag property("property");
    property.setAttribute("name", "Gas");
    property.addChild(util::xml::TagWithData("multiplier", multiplier));
    util::xml::Tag profile("profile");
    profile.setAttribute("name", name);
    profile.addChild(property);
    return profile;
}

class ProfileFiles : public ::testing::Test
{
protected:
    ProfileFiles()
    {
        profiles.setSaveFolder(user);
        profiles.addSource(user);
        profiles.addReadOnly("Factory Settings");
    }
    ~ProfileFiles() override
    {
        setResourceLister({});
        util::xml::setResourceLoader({});
    }

    std::string multiplier(const std::string& name)
    {
        return std::string(profiles.profile(name).child("property").child("multiplier").text());
    }

    const rgs::tests::TemporaryFolder folder;
    const std::string root = folder.path();
    const std::string user = root + "/user/inputprofiles";
    InputProfileManager profiles;
};

constexpr const char* kTwo = R"(<unidevice>
    <profile name="A"><property name="Gas"><multiplier>1</multiplier></property></profile>
    <profile name="B"><property name="Gas"><multiplier>2</multiplier></property></profile>
    </unidevice>)";

TEST_F(ProfileFiles, OfTwoProfilesInAFileOnlyTheNamedOneGoes)
{
    const std::string both = user + "/both.tvi";
    folder.write(both, kTwo);
    profiles.rescan();
    EXPECT_EQ(profiles.names(), (Names{"A", "B"}));
    EXPECT_EQ(profiles.remove("A"), XMLFileManager::done);
    EXPECT_TRUE(profiles.profile("A").isEmpty());
    profiles.rescan();
    EXPECT_EQ(profiles.names(), Names{"B"});
    EXPECT_EQ(multiplier("B"), "2");
    EXPECT_EQ(profiles.remove("B"), XMLFileManager::done);
    EXPECT_FALSE(fs::exists(both));
    EXPECT_EQ(profiles.remove("B"), XMLFileManager::refused);
}

TEST_F(ProfileFiles, SavingOverOneOfTwoLeavesTheOtherAndNoOldValues)
{
    folder.write(user + "/both.tvi", kTwo);
    profiles.rescan();
    EXPECT_EQ(profiles.store(makeProfile("A", 7), true, false), XMLFileManager::done);
    EXPECT_EQ(profiles.store(makeProfile("both", 8), true, false), XMLFileManager::done);
    Element file;
    ASSERT_EQ(file.loadFile(user + "/A.tvi"), util::xml::code::ok);
    EXPECT_EQ(file.name(), "unidevice");
    profiles.rescan();
    EXPECT_EQ(multiplier("A"), "7");
    EXPECT_EQ(multiplier("B"), "2");
    EXPECT_EQ(multiplier("both"), "8");
}

TEST_F(ProfileFiles, ReadOnlyNamesAreRefusedInAnyCase)
{
    EXPECT_EQ(profiles.store(makeProfile("Factory Settings", 1), false, true),
              XMLFileManager::done);
    for (const char* name : {"Factory Settings", "FACTORY SETTINGS", "factory settings"}) {
        EXPECT_EQ(profiles.store(makeProfile(name, 2), true, false), XMLFileManager::refused)
            << name;
        EXPECT_EQ(profiles.remove(name), XMLFileManager::refused) << name;
    }
    folder.write(user + "/sly.tvi", R"(<profile name="Factory settings"/>)");
    profiles.rescan();
    EXPECT_EQ(profiles.names(), Names{"Factory Settings"});
    EXPECT_EQ(multiplier("Factory Settings"), "1");
}

TEST_F(ProfileFiles, ANameThatIsNoFilesIsNeverOne)
{
    for (const char* name : {"", "a/b", "../up", "a\\b", "C:", "a*", "a?", "a\"b", "a<b", "a>b",
                             "a|b", "a.b", "a,b", "[a", "a]", "a;b", "a=b", "a\nb"}) {
        EXPECT_FALSE(XMLFileManager::isValidName(name)) << name;
        EXPECT_EQ(profiles.store(makeProfile(name, 1), true, false), XMLFileManager::failed)
            << name;
    }
    EXPECT_TRUE(profiles.names().empty());
    EXPECT_FALSE(fs::exists(root + "/user"));
    EXPECT_TRUE(XMLFileManager::isValidName("Läufer (2) & Co"));
}

TEST_F(ProfileFiles, AFailedWriteChangesNothing)
{
    folder.write(root + "/user", "a file where the folder should be");
    EXPECT_EQ(profiles.store(makeProfile("Mine", 1), true, false), XMLFileManager::failed);
    EXPECT_TRUE(profiles.profile("Mine").isEmpty());
    EXPECT_EQ(profiles.fileOf("Mine"), "");
}

TEST_F(ProfileFiles, WithoutAFolderProfilesLiveInMemory)
{
    profiles.setSaveFolder("");
    EXPECT_EQ(profiles.store(makeProfile("Mine", 5), true, false), XMLFileManager::done);
    EXPECT_EQ(profiles.fileOf("Mine"), "");
    profiles.rescan();
    EXPECT_EQ(multiplier("Mine"), "5");
}

TEST_F(ProfileFiles, FilesThatAreNoProfilesHaveNone)
{
    folder.write(user + "/a.tvi", "no xml");
    folder.write(user + "/b.tvi", R"(<configprofile name="x" version="2.0"/>)");
    folder.write(user + "/c.tvi", R"(<unidevice><profile name="cut")");
    folder.write(user + "/d.txt", R"(<profile name="other ending"/>)");
    folder.write(user + "/e.TVI", R"(<profile name="good"/>)");
    fs::create_directories(user + "/folder.tvi");
    profiles.rescan();
    EXPECT_EQ(profiles.names(), Names{"good"});
}

TEST_F(ProfileFiles, ShippedProfilesComeBehindTheUsersAndCannotBeRemoved)
{
    util::xml::setResourceLoader([](const std::string& path, std::string& out) {
        if (path == ":/tool/inputprofile.xml")
            out = R"(<unidevice><profile name="A"><property name="Gas"><multiplier>10</multiplier>
                </property></profile></unidevice>)";
        else if (path == ":/tool/inputprofiles/example.tvi")
            out = R"(<profile name="Example: pad"/>)";
        else
            return false;
        return true;
    });
    setResourceLister([](const std::string& from, std::string_view pattern) {
        EXPECT_EQ(from, ":/tool/inputprofiles");
        EXPECT_EQ(pattern, "*.tvi");
        return Names{from + "/example.tvi"};
    });
    folder.write(user + "/both.tvi", kTwo);
    profiles.addSource(":/tool/inputprofile.xml");
    profiles.addSource(":/tool/inputprofiles");
    profiles.rescan();
    EXPECT_EQ(profiles.names(), (Names{"A", "B", "Example: pad"}));
    EXPECT_EQ(multiplier("A"), "10");
    EXPECT_EQ(profiles.remove("Example: pad"), XMLFileManager::refused);
    EXPECT_EQ(profiles.names().size(), 3u);
}

} // namespace

} // namespace tvw::unidevice

#include "core/configadaptor/profile_conversion.h"
#include "core/tool.h"
#include "tests/app/config/config_fixture.h"

#include <QDoubleSpinBox>
#include <QLabel>

#include <filesystem>

namespace tvw::rgs::app {

namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

enum Button {
    kSave = 103,
    kNew = 104,
    kImport = 105,
    kExport = 106,
    kDelete = 107,
    kRename = 110,
    kSaveAs = 111,
    kStartup = 113
};

const char* const kReadOnly =
    "Rigstage: The specified profile is considered read-only and cannot be overwritten.";

class Profiles : public tests::ConfigWindowTest
{
protected:
    void SetUp() override
    {
        ConfigWindowTest::SetUp();
        tool = &open("4WheelerExt");
        scale = &item(*tool, "Front Stiffness");
    }
    /// A value that no text of few digits holds.
    void setScale(double value)
    {
        scale->setValue(value);
        tool->updateConfiguration();
    }
    core::ConfigProfileManager& store() { return tool->type()->configProfiles(); }
    std::string fileOf(const std::string& name)
    {
        return tool->type()->getUserFolder() + "/configprofiles/" + name + ".tvc";
    }
    void saveAs(const std::string& name, double value)
    {
        setScale(value);
        names = {name};
        press(kSaveAs);
    }

    core::Instance* tool = nullptr;
    core::configadaptor::Node* scale = nullptr;
};

TEST_F(Profiles, comeBackBitForBitAndAskAboutChanges)
{
    const double exact = 1.0 / 3.0, start = scale->value();
    EXPECT_EQ(shownProfile(), "Start Profile");
    saveAs("Mine", exact);
    EXPECT_EQ(shownProfile(), "Mine");
    EXPECT_TRUE(fs::exists(fileOf("Mine")));
    EXPECT_FALSE(offersToSave());

    choose("Start Profile");
    EXPECT_THAT(windows.said, IsEmpty());
    EXPECT_EQ(scale->value(), start);
    choose("Mine");
    EXPECT_EQ(scale->value(), exact);
    EXPECT_NEAR(itemWidget<QDoubleSpinBox>(*scale).value(), exact, 0.5e-4);

    for (const bool saves : {false, true}) {
        setScale(0.7);
        windows.says = saves;
        choose("Start Profile");
        EXPECT_THAT(windows.said, ElementsAre("Save?: Do you wish to save your changes to Mine?"));
        EXPECT_EQ(scale->value(), start);
        choose("Mine");
        EXPECT_EQ(scale->value(), saves ? 0.7 : exact);
    }

    // The factory settings can't take the changes: the user keeps them in the tool.
    choose("Factory Settings");
    setScale(0.9);
    choose("Mine");
    EXPECT_EQ(windows.said.back(), kReadOnly);
    EXPECT_EQ(scale->value(), 0.9);
    EXPECT_EQ(shownProfile(), "Factory Settings");
}

TEST_F(Profiles, areMadeSavedRenamedAndDeleted)
{
    const double factory = scale->value();
    saveAs("Mine", 0.25);
    itemWidget<QDoubleSpinBox>(*scale).stepUp();
    EXPECT_TRUE(offersToSave());
    press(kSave);
    EXPECT_FALSE(offersToSave());
    EXPECT_THAT(windows.said, IsEmpty());

    names = {"Fresh"};
    press(kNew);
    EXPECT_EQ(shownProfile(), "Fresh");
    EXPECT_EQ(scale->value(), factory);
    EXPECT_TRUE(fs::exists(fileOf("Fresh")));

    choose("Mine");
    EXPECT_EQ(scale->value(), 0.25 + scale->step());
    names = {"Ours"};
    press(kRename);
    EXPECT_EQ(shownProfile(), "Ours");
    EXPECT_FALSE(fs::exists(fileOf("Mine")));
    EXPECT_TRUE(fs::exists(fileOf("Ours")));
    EXPECT_TRUE(store().profile("Mine").isEmpty());

    windows.says = false;
    press(kDelete);
    EXPECT_THAT(windows.said,
                ElementsAre("Delete profile: Do you really want to delete the profile: Ours?"));
    EXPECT_TRUE(fs::exists(fileOf("Ours")));
    windows.says = true;
    press(kDelete);
    EXPECT_FALSE(fs::exists(fileOf("Ours")));
    EXPECT_EQ(shownProfile(), tool->configProfileName());
    EXPECT_THAT(store().names(), Not(Contains("Ours")));
    EXPECT_THAT(store().names(), Contains(shownProfile()));

    setScale(0.5);
    press(kStartup);
    EXPECT_EQ(widget<QLabel>(108).text(), "Start Profile saved");
    EXPECT_EQ(item(open("4WheelerExt"), "Front Stiffness").value(), 0.5);
}

/// Each is told in the words given, and nothing is changed by it.
TEST_F(Profiles, refuseWhatCannotBe)
{
    saveAs("Mine", 0.25);
    const std::string shipped = [&] {
        for (const std::string& name : store().names()) {
            if (store().fileOf(name).starts_with(":"))
                return name;
        }
        return std::string();
    }();
    ASSERT_FALSE(shipped.empty());
    util::xml::Element loose;
    tool->writeConfigProfile(loose, "Loose");
    store().store(loose, false, false);
    window->open(nullptr);
    names = {"Other"};
    press(kSaveAs);
    const std::string app = "Rigstage: ";
    struct Case
    {
        const char* what;
        int button;
        std::string profile;
        const char* typed; ///< null: nothing is asked for
        std::string expected;
    };
    const Case cases[] = {
        {"forbidden letters", kSaveAs, "Mine", "a|b",
         "Save profile as...: a|b - name contains forbidden characters. \n The following "
         "characters are not allowed: \\ / : * ? \" < > | . , [ ] ; ="},
        {"a name that is taken", kNew, "Mine", "Start Profile",
         "New profile...: Start Profile - name already exists."},
        {"the factory's name", kSaveAs, "Mine", "factory settings", kReadOnly},
        {"saving the factory's", kSave, "Factory Settings", nullptr, kReadOnly},
        {"renaming the factory's", kRename, "Factory Settings", nullptr,
         app + "Cannot rename this profile."},
        {"renaming an example", kRename, shipped, nullptr, app + "Cannot rename example profiles."},
        {"renaming one that has no file", kRename, "Loose", "Tight",
         app + "The specified profile could not be renamed, please try with another name."},
        {"deleting a shipped one", kDelete, shipped, nullptr,
         app + "The profile " + shipped + " belongs to the program and cannot be deleted."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        choose(c.profile);
        const auto before = store().names();
        const double value = scale->value();
        names = c.typed ? std::deque<std::string>{c.typed} : std::deque<std::string>();
        windows.says = c.button != kNew; // it may not overwrite
        press(c.button);
        EXPECT_THAT(windows.said, Contains(c.expected));
        EXPECT_TRUE(names.empty());
        EXPECT_EQ(store().names(), before);
        EXPECT_EQ(scale->value(), value);
        EXPECT_EQ(shownProfile(), c.profile);
    }
}

TEST_F(Profiles, travelInFiles)
{
    saveAs("Mine", 0.25);
    setScale(2.0 / 3.0);
    path = user.path() + "/Travel";
    press(kExport);
    EXPECT_THAT(windows.said, IsEmpty());
    windows.file = path + ".tvc";
    ASSERT_TRUE(fs::exists(windows.file));
    EXPECT_EQ(shownProfile(), "Mine");

    press(kImport);
    EXPECT_THAT(windows.said, IsEmpty());
    choose("Travel");
    EXPECT_EQ(scale->value(), 2.0 / 3.0);

    windows.says = false;
    names = {"Second"};
    press(kImport);
    EXPECT_THAT(windows.said,
                ElementsAre("Overwrite?: A profile with the name Travel already exists. This will "
                            "overwrite that profile, do you wish to continue?"));
    EXPECT_TRUE(fs::exists(fileOf("Second")));

    const std::string failed = "The profile could not be imported. ";
    const std::pair<std::string, std::string> refused[] = {
        {"<scene/>", failed},
        {"<configprofiles version=\"2.0\"><configprofile version=\"2.0\" n", failed},
        {"<configprofile version=\"2.0\" name=\"Factory Settings\"><group/></configprofile>",
         "The profile already exists and cannot be overwritten."},
    };
    for (const auto& [text, reason] : refused) {
        const auto before = store().names();
        windows.file = user.write("import.tvc", text);
        press(kImport);
        EXPECT_THAT(windows.said, ElementsAre("Rigstage: " + reason)) << text;
        EXPECT_EQ(store().names(), before) << text;
    }
}

/// An old file's name that can't be a file's, and a tool that goes while the question waits.
TEST_F(Profiles, askForANameThatAFileCanHave)
{
    windows.file = user.write("old.tvc", "<?xml version=\"1.0\"?><configprofile version=\"2.0\" "
                                         "name=\"[current]\"><group id=\"-1\"/></configprofile>");
    const auto before = store().names();
    press(kImport);
    EXPECT_EQ(store().names(), before) << "given up";
    names = {"Old"};
    press(kImport);
    EXPECT_TRUE(fs::exists(fileOf("Old")));

    core::ConfigProfileManager& profiles = store();
    QTimer::singleShot(0, [&] { session->clear(); });
    press(kNew);
    QApplication::processEvents();
    EXPECT_EQ(top()->windowTitle().toStdString(), "Configuration for Rigstage");
    EXPECT_THAT(profiles.names(), Contains("Old"));
}

TEST_F(Profiles, sayWhenNothingCanBeWritten)
{
    saveAs("Mine", 0.25);
    const std::string folder = tool->type()->getUserFolder() + "/configprofiles";
    fs::remove_all(folder);
    ASSERT_TRUE(writeFileAtomically(folder, "in the way"));
    setScale(0.75);
    press(kSave);
    EXPECT_THAT(windows.said, ElementsAre("Rigstage - Error: The profile could not be saved"));
    EXPECT_EQ(scale->value(), 0.75);
    names = {"New"};
    press(kNew);
    EXPECT_EQ(scale->value(), 0.75) << "the values stay when the new profile can't be kept";
    path = user.path() + "/nowhere/Travel";
    press(kExport);
    EXPECT_THAT(windows.said, Contains("Rigstage - Error: The profile could not be saved"));
}

} // namespace

} // namespace tvw::rgs::app

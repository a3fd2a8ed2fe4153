#include "tests/app/inputs/fixture.h"

#include <filesystem>

namespace tvw::rgs::app {

namespace {

using testing::Contains;
using testing::Not;

class InputProfiles : public tests::InputWindowTest
{
protected:
    InputProfiles()
    {
        push->bind(pad->controlAt(1));
        push->multiplier = 2.0;
        open();
    }

    std::vector<std::string> names() { return tool->type()->inputProfiles().names(); }
    QListWidget& list() { return *window()->findChild<QListWidget*>(); }
    void select(const char* name)
    {
        const auto found = list().findItems(name, Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << name;
        list().setCurrentItem(found.front());
    }
    void change()
    {
        push->bind(nullptr);
        push->multiplier = 7.0;
    }
    void expectFirst()
    {
        EXPECT_EQ(push->control(), pad->controlAt(1));
        EXPECT_EQ(push->multiplier, 2.0);
    }
    std::string said() { return boxes.texts.empty() ? std::string() : boxes.texts.back(); }
};

TEST_F(InputProfiles, comeBackAsTheyWereSaved)
{
    type({"Mine"});
    press(*window(), "Save Profile As...");
    EXPECT_EQ(tool->inputProfileName(), "Mine");
    EXPECT_EQ(list().currentItem()->text(), "Mine");
    change();
    press(*window(), "Load Profile");
    expectFirst();
    EXPECT_EQ(box("Push", 1).currentText(), "Axis 2");
    change();
    select("Start Profile"); // to select is not to load
    EXPECT_EQ(push->multiplier, 7.0);
    press(*window(), "Save as startup profile");
    EXPECT_TRUE(says(*window(), "Start Profile saved"));
    const core::Instance& another = (*session->create("Tiny", "Other"))->instance();
    EXPECT_EQ(const_cast<core::Instance&>(another).findProperty("Push")->multiplier, 7.0);
    emit list().itemDoubleClicked(list().findItems("Mine", Qt::MatchExactly).front());
    select("Mine");
    press(*window(), "Save Profile");
    press(*window(), "Clear all");
    EXPECT_EQ(push->control(), nullptr);
}

TEST_F(InputProfiles, aLoadedProfileTellsWhatIsMissing)
{
    type({"Mine"});
    press(*window(), "Save Profile As...");
    session->removeDevice(*pad);
    press(*window(), "Load Profile");
    EXPECT_TRUE(says(*window(), "1 control is not connected; its binding waits for it."));
    EXPECT_EQ(box("Push", 0).currentText(), "Pad (unplugged)");
}

TEST_F(InputProfiles, areRenamedAndDeleted)
{
    type({"Mine"});
    press(*window(), "Save Profile As...");
    type({"Yours"});
    press(*window(), "Rename Profile");
    EXPECT_EQ(tool->inputProfileName(), "Yours");
    boxes.answers = {false, true};
    press(*window(), "Delete Profile");
    EXPECT_EQ(said(), "Do you really want to delete the profile: Yours?");
    EXPECT_THAT(names(), Contains("Yours"));
    press(*window(), "Delete Profile");
    EXPECT_THAT(names(), Not(Contains("Yours")));
    EXPECT_EQ(tool->inputProfileName(), "");
    expectFirst();
}

TEST_F(InputProfiles, refuseWhatCantBe)
{
    open();
    const auto before = names();
    for (const char* const button : {"Load Profile", "Save Profile", "Delete Profile"}) {
        list().setCurrentRow(-1);
        press(*window(), button);
        EXPECT_EQ(said(), "Please select or specify a profile") << button;
    }
    select("Factory Settings");
    press(*window(), "Delete Profile");
    EXPECT_EQ(said(), "The profile Factory Settings belongs to the program and cannot be deleted.");
    EXPECT_EQ(names(), before);
}

TEST_F(InputProfiles, areImported)
{
    const char* const property =
        "<property name=\"Push\"><multiplier>3</multiplier></property></profile>";
    const std::string two = std::string("<unidevice><profile name=\"One\">") + property +
                            "<profile name=\"Start Profile\">" + property + "</unidevice>";
    boxes.file = user.write("two.tvi", two);
    boxes.answers = {false};
    type({"Second"});
    press(*window(), "Import Profile...");
    EXPECT_EQ(said(), "A profile with the name Start Profile already exists. This will overwrite "
                      "that profile, do you wish to continue?");
    EXPECT_THAT(names(), testing::IsSupersetOf({"One", "Second"}));
    select("Second");
    press(*window(), "Load Profile");
    EXPECT_EQ(push->multiplier, 3.0);

    const auto before = names();
    const std::pair<const char*, const char*> refused[] = {
        {"<unidevice></unidevice>", "The profile could not be imported."},
        {"<profile name=\"Factory Settings\"/>",
         "The specified profile already exists and cannot be overwritten."},
    };
    for (const auto& [text, reason] : refused) {
        boxes.file = user.write("bad.tvi", text);
        press(*window(), "Import Profile...");
        EXPECT_EQ(said(), reason) << text;
        EXPECT_EQ(names(), before) << text;
    }
}

TEST_F(InputProfiles, areExported)
{
    const std::string path = user.path() + "/out.tvi";
    QTimer::singleShot(0, [&] {
        auto* const asked = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(asked, nullptr);
        asked->selectFile(QString::fromStdString(path));
        QMetaObject::invokeMethod(asked, "accept");
    });
    press(*window(), "Export Profile...");
    ASSERT_TRUE(std::filesystem::exists(path));
    boxes.file = path;
    change();
    press(*window(), "Import Profile...");
    select("out");
    press(*window(), "Load Profile");
    expectFirst();
}

/// The prompt is on the stack: what belongs to the window must stand until it returns.
TEST_F(InputProfiles, theToolMayGoWhileANameIsAskedFor)
{
    core::Tool& type = *tool->type();
    QTimer::singleShot(0, [&] {
        session->clear();
        pass();
        auto* const prompt = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
        prompt->setTextValue("Late");
        prompt->accept();
    });
    press(*window(), "Save Profile As...");
    pass();
    EXPECT_EQ(window(), nullptr);
    EXPECT_THAT(type.inputProfiles().names(), Not(Contains("Late")));
}

} // namespace

} // namespace tvw::rgs::app

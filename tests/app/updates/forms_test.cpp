#include "app/about.h"
#include "app/linked_libraries.h"
#include "app/preferences.h"
#include "core/paths.h"
#include "gui/qt/boxes.h"
#include "tests/app/updates/fixture.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>

namespace tvw::rgs::app {

namespace {

class Forms : public tests::WindowTest
{
protected:
    ~Forms() override { gui::setSilentMode(false); }

    QWidget& preferences()
    {
        window.open();
        QWidget* const form = tests::shownWindow("RGSPreferences");
        EXPECT_NE(form, nullptr);
        return *form;
    }
    static QCheckBox& box(QWidget& form, const char* name)
    {
        return *form.findChild<QCheckBox*>(name);
    }
    static void press(QWidget& form, QDialogButtonBox::StandardButton which)
    {
        QTest::mouseClick(form.findChild<QDialogButtonBox*>("okCancel")->button(which),
                          Qt::LeftButton);
    }
    core::Settings settings() { return session->core().getSettings(); }

    PreferencesWindow window;
};

TEST_F(Forms, preferencesShowAndKeepEachSetting)
{
    struct Case
    {
        const char* name;
        bool core::Settings::*setting;
    };
    const Case cases[] = {{"silentMode", &core::Settings::silentMode},
                          {"alwaysOnTop", &core::Settings::alwaysOnTop},
                          {"checkUpdate", &core::Settings::checkForUpdates},
                          {"dynamicMesh", &core::Settings::dynamicMeshes},
                          {"optimizedController", &core::Settings::optimizedTransform}};
    for (const Case& c : cases) {
        core::Settings expected = settings();
        QWidget& form = preferences();
        EXPECT_EQ(box(form, c.name).isChecked(), expected.*c.setting) << c.name;
        box(form, c.name).click();
        expected.*c.setting = !(expected.*c.setting);
        press(form, QDialogButtonBox::Ok);
        EXPECT_EQ(settings(), expected) << c.name;
    }
    EXPECT_TRUE(gui::isSilentMode());
    core::SettingsStore file(core::getSettingsFile());
    EXPECT_EQ(file.get(), settings());
}

TEST_F(Forms, cancelLeavesTheSettings)
{
    const core::Settings before = settings();
    for (const bool byKey : {false, true}) {
        QWidget& form = preferences();
        auto& countdown = *form.findChild<QSpinBox*>("countdownTime");
        EXPECT_EQ(countdown.value(), 2);
        countdown.setValue(12);
        EXPECT_EQ(countdown.value(), 9);
        box(form, "silentMode").setChecked(true);
        if (byKey)
            QTest::keyClick(&form, Qt::Key_Escape);
        else
            press(form, QDialogButtonBox::Cancel);
        EXPECT_FALSE(form.isVisible());
        EXPECT_EQ(settings(), before);
        EXPECT_FALSE(gui::isSilentMode());
    }
    EXPECT_FALSE(box(preferences(), "silentMode").isChecked());
}

TEST_F(Forms, aSettingsFileThatCantBeWrittenIsTold)
{
    std::filesystem::create_directories(core::getSettingsFile() + "/in the way");
    QWidget& form = preferences();
    form.findChild<QSpinBox*>("countdownTime")->setValue(5);
    press(form, QDialogButtonBox::Ok);
    EXPECT_EQ(settings().startCountdown, 5);
    ASSERT_EQ(session->messages().size(), 1u);
    EXPECT_NE(session->messages()[0].text.find("could not be saved"), std::string::npos);
}

TEST_F(Forms, aboutTellsTheLibrariesAndTheirLicences)
{
    AboutRGS about;
    about.open();
    QWidget* const form = tests::shownWindow("AboutRGS");
    ASSERT_NE(form, nullptr);
    EXPECT_TRUE(form->findChild<QLabel*>("summary")->text().contains("Rigstage 0.1.0"));
    EXPECT_FALSE(form->findChild<QLabel*>("logo")->pixmap(Qt::ReturnByValue).isNull());
    EXPECT_FALSE(form->findChild<QLabel*>("copyRight")->text().isEmpty());
    for (const char* const key : {"bullet", "qt", "sdl", "httplib", "assimp", "json", "epoxy"}) {
        const QString title = form->findChild<QLabel*>(QString(key) + "_text")->text();
        EXPECT_TRUE(title.contains(QRegExp("[1-9]\\d*\\.\\d+|0\\.\\d+"))) << title.toStdString();
        form->findChild<QPushButton*>(QString(key) + "_button")->click();
        QWidget* const licence = form->findChild<QDialog*>(QString(key) + "_licence");
        ASSERT_NE(licence, nullptr) << key;
        EXPECT_EQ(licence->windowTitle(), title);
        EXPECT_GT(licence->findChild<QPlainTextEdit*>()->toPlainText().size(), 40) << key;
        licence->close();
    }
    EXPECT_EQ(form->findChild<QLabel*>("qt_text")->text(), QString("Qt ") + qVersion());
}

TEST_F(Forms, aLicenceThatIsNowhereIsNamed)
{
    EXPECT_EQ(licenceText({"x", "X 1", "no such text", "no such package", "X comes freely."}),
              "X comes freely.");
}

} // namespace

} // namespace tvw::rgs::app

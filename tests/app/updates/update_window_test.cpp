#include "app/updates.h"
#include "gui/componentinterface/label.h"
#include "tests/app/updates/fixture.h"

#include <QDesktopServices>
#include <QLabel>
#include <QTextBrowser>
#include <QUrl>

namespace tvw::rgs::app {

namespace {

using tests::VersionServer;

/// The window that the check shows, by its title.
QWidget* updateWindow()
{
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget->windowTitle() == "Current version: 0.1.0")
            return widget;
    }
    return nullptr;
}

QString textsOf(const QWidget& window)
{
    QString all;
    for (const QLabel* const label : window.findChildren<QLabel*>())
        all += label->text() + "\n";
    return all;
}

class UpdateWindows : public tests::WindowTest
{
protected:
    ~UpdateWindows() override { unsetenv("RIGSTAGE_REPURL"); }

    /// Opens the window on a server and waits until it says this.
    void expectTexts(const std::string& server, const std::vector<const char*>& expected)
    {
        setenv("RIGSTAGE_REPURL", server.c_str(), 1);
        UpdateWindow window;
        window.open();
        ASSERT_NE(updateWindow(), nullptr);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return textsOf(*updateWindow()).contains(expected.front()); }, 5000))
            << expected.front();
        for (const char* const text : expected)
            EXPECT_TRUE(textsOf(*updateWindow()).contains(text)) << text;
    }
};

TEST_F(UpdateWindows, sayWhatCameOfTheCheck)
{
    expectTexts("http://127.0.0.1:1",
                {"Unable to connect to version server. Are you behind a firewall? Click here to "
                 "check for updates manually"});
    const VersionServer newer(tests::kNewerReply), current("<v/>"), broken("error");
    expectTexts(newer.address() + "/",
                {"Click here to update to the latest version of Rigstage.",
                 "<b>999.1 (1 May 2031)</b><br/>Faster &lt;b&gt;cars&lt;/b&gt;<br/>Two mends",
                 "Affects: cameras", "<b>0.0.1</b>",
                 "Click here to go to the download page for this version."});
    expectTexts(current.address(), {"You are up to date"});
    expectTexts(broken.address(), {"Unable to connect to version server. Click here to check for "
                                   "updates manually"});
    expectTexts("", {"Unable to connect to version server."});
}

/// Holds the page that the desktop was asked to open.
class Desktop : public QTextBrowser
{
public:
    Desktop() { QDesktopServices::setUrlHandler("https", this, "setSource"); }
    ~Desktop() override { QDesktopServices::unsetUrlHandler("https"); }

protected:
    QVariant loadResource(int, const QUrl&) override { return "a page"; }
};

TEST_F(UpdateWindows, aClickOnAVersionOpensItsPage)
{
    const Desktop desktop;
    const VersionServer server(tests::kNewerReply);
    setenv("RIGSTAGE_REPURL", server.address().c_str(), 1);
    UpdateWindow window;
    window.open();
    const auto version = [] {
        for (QLabel* const label : updateWindow()->findChildren<QLabel*>()) {
            if (label->text().contains("999.1"))
                return label;
        }
        return static_cast<QLabel*>(nullptr);
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return version() != nullptr; }, 5000));
    QTest::mouseClick(version(), Qt::LeftButton);
    EXPECT_EQ(desktop.source(), QUrl("https://example.org/999"));
}

TEST_F(UpdateWindows, aQuietCheckSpeaksOfNewerVersionsOnly)
{
    for (const auto& [reply, expected] :
         {std::pair(tests::kNewerReply, 1), {"<v/>", 0}, {"error", 0}}) {
        const VersionServer server(reply);
        setenv("RIGSTAGE_REPURL", server.address().c_str(), 1);
        UpdateWindow window;
        int bars = 0;
        window.setBarReceiver([&](gui::Component* bar) {
            const gui::ComponentPtr owned(bar);
            gui::Component* const button = owned->findById(201);
            ASSERT_NE(button, nullptr);
            EXPECT_EQ(button->label(),
                      "A new version is available! Click here for more information.");
            ++bars;
        });
        window.checkQuietly();
        EXPECT_EQ(QTest::qWaitFor([&] { return bars > 0; }, expected > 0 ? 5000 : 300),
                  expected > 0);
        EXPECT_EQ(bars, expected) << reply;
        EXPECT_EQ(server.requests, 1);
        EXPECT_EQ(updateWindow(), nullptr) << reply;
    }
}

} // namespace

} // namespace tvw::rgs::app

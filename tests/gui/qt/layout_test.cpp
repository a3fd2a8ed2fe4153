#include "gui/componentinterface/button.h"
#include "gui/componentinterface/list.h"
#include "gui/componentinterface/menubar.h"
#include "gui/qt/boxlayout.h"
#include "gui/qt/layout_viewer.h"
#include "gui/qt/pixmap.h"
#include "tests/gui/qt/gui_fixture.h"

#include <QDir>
#include <QFrame>
#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTemporaryDir>

#include <fstream>

namespace tvw::gui {

namespace {

using Layout = GuiTest;

TEST_F(Layout, childrenEnterAtTheirPlace)
{
    open("<list id='1'><label id='2' minheight='20'/><label id='4' minheight='20'/></list>");
    auto* const added = build("<label id='3' minheight='20'>new</label>").release();
    at(1).insertChild(added, 1);
    EXPECT_FALSE(added->widget()->isVisible()) << "until its show()";
    added->show();
    QApplication::processEvents();
    EXPECT_TRUE(added->widget()->isVisible());
    EXPECT_LT(widget(2)->y(), widget(3)->y());
    EXPECT_LT(widget(3)->y(), widget(4)->y());
    QWidget* const left = added->widget();
    added->detach();
    const ComponentPtr owned(added);
    EXPECT_EQ(left->parentWidget(), nullptr);
    EXPECT_FALSE(left->isVisible());
}

TEST_F(Layout, sizesAndPlaces)
{
    open("<list id='1' type='horizontal' padding='5 6 7 8' halign='left'>"
         "<label id='2' fixed='yes' width='40' height='20'/>"
         "<label id='3' visible='no' minwidth='50'/>"
         "<border id='4' style='none' fixed='horizontal' width='30'><label id='5'/></border>"
         "</list>");
    EXPECT_EQ(at(2).size(), (Size{40, 20}));
    EXPECT_EQ(at(2).position().x, 5);
    EXPECT_EQ(at(4).position().x, 45) << "what is hidden takes no room";
    EXPECT_EQ(at(4).size().height, 200 - 6 - 8);
    EXPECT_EQ(at(5).absolutePosition(), (Point{45, 6}));
    at(3).setVisible(true, false);
    QApplication::processEvents();
    EXPECT_EQ(at(4).position().x, 95);
    toList(&at(1))->setDirection(true);
    toList(&at(1))->setPadding(0, 0, 0, 0);
    QApplication::processEvents();
    EXPECT_EQ(at(2).position().x, 0);
    EXPECT_GT(at(4).position().y, at(2).position().y);
}

TEST_F(Layout, aResizeIsToldOnce)
{
    open("<label id='1'/>");
    const Listener heard(*window);
    window->setSize({350, 250});
    QApplication::processEvents();
    EXPECT_EQ(heard.count(message::resized), 1u);
    EXPECT_EQ(window->widget()->size(), QSize(350, 250));
    EXPECT_EQ(at(1).size(), (Size{350, 250}));
}

TEST_F(Layout, backgroundAndHighlightArePainted)
{
    open("<label id='1'><background type='color' r='200' g='0' b='0'/></label>");
    const auto pixel = [&] { return QColor(widget(1)->grab().toImage().pixel(5, 5)); };
    EXPECT_EQ(pixel(), QColor(200, 0, 0));
    at(1).setHighlight(true); // 0.7 x 200 + 0.3 x 100, 0.3 x 100, 0.3 x 255
    const QColor lit = pixel();
    EXPECT_NEAR(lit.red(), 170, 2);
    EXPECT_NEAR(lit.green(), 30, 2);
    EXPECT_NEAR(lit.blue(), 77, 2);
}

TEST_F(Layout, imagesComeAtTheScreensDensity)
{
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString();
    QImage(10, 8, QImage::Format_ARGB32).save(folder.filePath("a.png"));
    QImage(20, 16, QImage::Format_ARGB32).save(folder.filePath("a@2x.png"));
    QImage(10, 8, QImage::Format_ARGB32).save(folder.filePath("b.png"));
    std::ofstream(path + "/c.svg")
        << "<svg xmlns='http://www.w3.org/2000/svg' width='12' height='6'/>";
    struct Case
    {
        const char* file;
        double ratio;
        QSize pixels;
        double density;
    };
    const Case cases[] = {{"a.png", 1.0, {10, 8}, 1.0}, {"a.png", 1.5, {20, 16}, 2.0},
                          {"b.png", 2.0, {10, 8}, 1.0}, {"c.png", 1.0, {12, 6}, 1.0},
                          {"c.svg", 1.5, {18, 9}, 1.5}, {"none.png", 1.0, {0, 0}, 1.0},
                          {"", 1.0, {0, 0}, 1.0}};
    for (const Case& c : cases) {
        const QPixmap image = loadPixmap(path + "/" + c.file, c.ratio);
        EXPECT_EQ(image.size(), c.pixels) << c.file;
        EXPECT_EQ(image.devicePixelRatio(), c.density) << c.file;
    }
    // A label takes its image's size, and the variables that were set after it had been built.
    window = build("<dialog><label id='1' imagepath='[images]/a.png'/></dialog>");
    window->setVariable("[images]", path);
    window->show();
    EXPECT_EQ(at(1).size(), (Size{10, 8}));
}

TEST_F(Layout, aButtonsImagesFollowItsState)
{
    const QTemporaryDir folder;
    const auto make = [&](const char* name, const QColor& color) {
        QImage image(24, 16, QImage::Format_ARGB32);
        image.fill(color);
        image.save(folder.filePath(name));
    };
    make("default.png", Qt::red);
    make("pressed.png", Qt::green);
    make("toggled.png", Qt::blue);
    make("disabled.png", Qt::black);
    window = build(
        "<dialog><list><button id='1' toggle='yes' img_default='[images]/default.png' "
        "img_pressed='[images]/pressed.png' img_toggle_default='[images]/toggled.png' "
        "img_disabled='[images]/disabled.png'/><button id='2' img_default='[images]/default.png' "
        "img_pressed='[images]/missing.png'/></list></dialog>");
    window->setVariable("[images]", folder.path().toStdString());
    window->show();
    QApplication::processEvents();
    EXPECT_TRUE(toButton(&at(1))->hasImages());
    EXPECT_FALSE(toButton(&at(2))->hasImages()) << "one of the pair is missing";
    EXPECT_EQ(at(1).size(), (Size{24, 16}));
    EXPECT_EQ(at(1).maxSize(), (Size{24, 16}));
    auto& button = widgetAs<QPushButton>(1);
    const auto color = [&] { return QColor(button.grab().toImage().pixel(12, 8)); };
    EXPECT_EQ(color(), QColor(Qt::red));
    button.setDown(true);
    EXPECT_EQ(color(), QColor(Qt::green));
    button.setDown(false);
    toButton(&at(1))->setChecked(true);
    EXPECT_EQ(color(), QColor(Qt::blue));
    button.setDown(true);
    EXPECT_EQ(color(), QColor(Qt::blue)) << "the toggled row has no pressed image of its own";
    at(1).setEnabled(false, false);
    EXPECT_EQ(color(), QColor(Qt::black));
}

TEST_F(Layout, menusTellTheirIds)
{
    open("<list><menubar id='9'><menu label='M' id='1'><item id='2' label='A' grayed='yes'/>"
         "<menu label='Sub' id='5'><item id='3' label='B'/></menu></menu></menubar></list>");
    const Listener heard(at(9));
    auto& bar = widgetAs<QMenuBar>(9);
    QMenu* const menu = bar.actions().at(0)->menu();
    emit menu->aboutToShow();
    EXPECT_FALSE(menu->actions().at(0)->isEnabled());
    toMenubar(&at(9))->setItemGrayed(2, false);
    menu->actions().at(0)->trigger();
    menu->actions().at(1)->menu()->actions().at(0)->trigger();
    EXPECT_EQ(heard.params(message::menuAboutToShow), (std::vector<int>{1}));
    EXPECT_EQ(heard.params(message::menuChosen), (std::vector<int>{2, 3}));
    util::xml::Element other;
    ASSERT_EQ(other.parse("<menubar><menu label='N'><item id='7'/></menu></menubar>"), 0);
    toMenubar(&at(9))->rebuild(other);
    ASSERT_EQ(bar.actions().size(), 1);
    bar.actions().at(0)->menu()->actions().at(0)->trigger();
    EXPECT_EQ(heard.params(message::menuChosen).back(), 7);
}

TEST_F(Layout, everyComponentTogether)
{
    Result<ComponentPtr> loaded = loadLayout(RIGSTAGE_GUI_DATA "all_components.xml");
    ASSERT_TRUE(loaded) << loaded.reason();
    window = std::move(*loaded);
    window->setVariable("[images]", RIGSTAGE_GUI_DATA);
    window->show();
    QApplication::processEvents();
    // As the file has it, one below the other, and what scrolls as wide as its area.
    EXPECT_EQ(at(121).size().width, at(124).size().width);
    EXPECT_LT(at(121).absolutePosition().y, at(124).absolutePosition().y);
    EXPECT_EQ(at(120).size().width, at(200).size().width);
    EXPECT_EQ(at(127).size().height, 110);
    EXPECT_EQ(at(105).size(), (Size{20, 20})) << "the image's, which is an .svg";
    EXPECT_FALSE(at(107).isEnabled());
    window->show();
    window->hide();
    EXPECT_FALSE(window->widget()->isVisible());
}

TEST_F(Layout, aBrokenFileIsNamedWithTheReason)
{
    const QTemporaryDir folder;
    const std::pair<const char*, const char*> cases[] = {
        {"<dialog><list></dialog>", "closing tag"},   {"<dialog><list>", "not closed"},
        {"<window/>", "no component \"window\""},     {"text", "does not begin with a tag"},
        {"<dialog id=3/>", "attribute is malformed"},
    };
    for (const auto& [text, reason] : cases) {
        const std::string path = folder.filePath("broken.xml").toStdString();
        std::ofstream(path) << text;
        const Result<ComponentPtr> loaded = loadLayout(path);
        ASSERT_FALSE(loaded) << text;
        EXPECT_NE(loaded.reason().find(path), std::string::npos) << loaded.reason();
        EXPECT_NE(loaded.reason().find(reason), std::string::npos) << loaded.reason();
    }
    EXPECT_FALSE(loadLayout(folder.filePath("missing.xml").toStdString()));
    std::ofstream(folder.filePath("part.xml").toStdString()) << "<group width='80' height='70'/>";
    Result<ComponentPtr> part = loadLayout(folder.filePath("part.xml").toStdString());
    ASSERT_TRUE(part) << "a root that is no dialog stands in one";
    EXPECT_EQ((*part)->size(), (Size{80, 70}));
}

} // namespace

} // namespace tvw::gui

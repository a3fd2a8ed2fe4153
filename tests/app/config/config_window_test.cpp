#include "app/main_dialog.h"
#include "core/configadaptor/elements.h"
#include "core/library_manager.h"
#include "core/tool.h"
#include "tests/app/config/config_fixture.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTreeView>
#include <QWheelEvent>

#include <cmath>
#include <functional>
#include <set>

namespace tvw::rgs::app {

namespace {

using core::configadaptor::Node;
using core::configadaptor::NodeKind;

class Config : public tests::ConfigWindowTest
{
protected:
    void forEachItem(Node& node, const std::function<void(Node&)>& look)
    {
        if (node.id() != core::configadaptor::kNoId)
            look(node);
        for (Node* const child : node.children())
            forEachItem(*child, look);
    }
    QWidget& field(const Node& node) { return itemWidget<QWidget>(node); }

    /// What the component shows, as a number.
    static double shownBy(QWidget& widget)
    {
        if (auto* const spinner = qobject_cast<QDoubleSpinBox*>(&widget))
            return spinner->value();
        if (auto* const check = qobject_cast<QCheckBox*>(&widget))
            return check->isChecked();
        if (auto* const combo = qobject_cast<QComboBox*>(&widget))
            return combo->currentIndex();
        return 0.0;
    }
    void expectUnclipped()
    {
        for (const QLabel* const label : at(200)->widget()->findChildren<QLabel*>()) {
            if (label->isVisible()) {
                EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
            }
        }
    }
};

/// Over all tools: each item has its component with its value, of each kind one is changed as the
/// user does, and the change reaches the tool, the window's mark and nothing else.
TEST_F(Config, showsAndChangesTheItemsOfEveryTool)
{
    std::set<NodeKind> changed;
    for (core::Tool* const type : core::LibraryManager::instance().listTools(true)) {
        if (!type->isListed())
            continue;
        SCOPED_TRACE(type->name());
        core::Instance& tool = open(type->name());
        EXPECT_EQ(top()->windowTitle().toStdString(),
                  "Configuration for " + tool.name() + " for Rigstage");
        expectUnclipped();
        int items = 0;
        std::set<NodeKind> done;
        forEachItem(*tool.configuration(), [&](Node& node) {
            SCOPED_TRACE(node.label());
            ++items;
            ASSERT_NE(at(kFirstPanelId + static_cast<int>(node.id())), nullptr);
            QWidget& widget = field(node);
            EXPECT_NEAR(shownBy(widget), node.value(), 0.5e-4);
            const bool isSpinner =
                node.kind() == NodeKind::Spinner || node.kind() == NodeKind::IntSpinner;
            if (!done.insert(node.kind()).second || (isSpinner && node.callback()))
                return;
            const double before = node.value();
            double expected = before;
            std::string text = node.text();
            if (isSpinner) {
                expected = std::min(shownBy(widget) + node.step(), node.maximum());
                QTest::keyClick(&widget, Qt::Key_Up);
            } else if (node.kind() == NodeKind::CheckBox) {
                expected = 1.0 - expected;
                QTest::mouseClick(&widget, Qt::LeftButton, {}, {8, widget.height() / 2});
            } else if (node.kind() == NodeKind::ComboBox) {
                expected = static_cast<double>(node.choices().size()) - 1.0;
                QWheelEvent wheel({5, 5}, {5, 5}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
                QApplication::sendEvent(&widget, &wheel);
                EXPECT_EQ(node.value(), before) << "scrolling over it changed it";
                QTest::keyClick(&widget, Qt::Key_End);
                text = node.choices().back();
            } else if (node.kind() == NodeKind::TextBox) {
                text = "typed";
                QTest::keyClicks(&widget, "\b");
                dynamic_cast<QLineEdit&>(widget).clear();
                QTest::keyClicks(&widget, "typed");
                QTest::keyClick(&widget, Qt::Key_Return);
            } else {
                return;
            }
            changed.insert(node.kind());
            EXPECT_NEAR(node.value(), expected, 1e-9);
            EXPECT_EQ(node.text(), text);
            EXPECT_NEAR(shownBy(widget), expected, 0.5e-4);
            EXPECT_TRUE(offersToSave() || std::abs(expected - before) < 1e-4)
                << "nothing was changed";
        });
        if (type->name() == "4WheelerExt") {
            EXPECT_GT(items, 80);
        }
    }
    EXPECT_TRUE(changed.contains(NodeKind::Spinner));
    EXPECT_TRUE(changed.contains(NodeKind::CheckBox));
    EXPECT_TRUE(changed.contains(NodeKind::ComboBox));
}

/// More digits than are shown: they go only when the user sets another number.
TEST_F(Config, keepsDigitsThatItDoesNotShow)
{
    core::Instance& tool = open("4WheelerExt");
    Node& front = item(tool, "Front Stiffness");
    const double exact = 1234.56789012345;
    front.setValue(exact);
    front.refresh();
    auto& spinner = itemWidget<QDoubleSpinBox>(front);
    EXPECT_EQ(spinner.text().toStdString(), "1234.5679");
    QTest::keyClick(&spinner, Qt::Key_Return);
    EXPECT_EQ(front.value(), exact);
    tool.updateConfiguration();
    EXPECT_EQ(front.value(), exact);
    QTest::keyClick(&spinner, Qt::Key_Down);
    EXPECT_NEAR(front.value(), 1233.5679, 1e-9);
    front.setValue(5.0);
    tool.updateConfiguration();
    EXPECT_EQ(spinner.value(), 5.0) << "what the tool changes is seen";
    spinner.setFocus();
    spinner.selectAll();
    QTest::keyClicks(&spinner, "77");
    tool.updateConfiguration();
    EXPECT_EQ(spinner.text().toStdString(), "77") << "a number that is being typed stays";
    QTest::keyClick(&spinner, Qt::Key_Return);
    EXPECT_EQ(front.value(), 77.0);
}

/// A take with the window open: gauges move in it, and the tool comes out of it as without.
TEST_F(Config, aRunIsSeenAndNotDisturbed)
{
    const auto take = [&](bool isShown, std::vector<double>& values, int& moved) {
        session->clear();
        core::Instance& tool = (*session->create("4WheelerExt"))->instance();
        item(tool, "Initital Velocity (% of max)").setValue(33.333333333);
        Node& gauge = item(tool, "Current Velocity");
        if (isShown)
            window->open(&tool);
        const auto look = [&](double) {
            if (isShown && gauge.value() != 0.0) {
                ++moved;
                EXPECT_NEAR(itemWidget<QDoubleSpinBox>(gauge).value(), gauge.value(), 0.5e-4);
            }
        };
        ASSERT_TRUE(session->record({.seconds = 1.0, .beforeFrame = look}));
        forEachItem(*tool.configuration(), [&](Node& node) { values.push_back(node.value()); });
    };
    std::vector<double> without, with;
    int moved = 0;
    take(false, without, moved);
    take(true, with, moved);
    EXPECT_EQ(with, without);
    EXPECT_GT(moved, 5);
}

TEST_F(Config, undoKeysTakeBackWhatAToolRecords)
{
    core::Instance& tool = open("4WheelerExt");
    Node& hide = item(tool, "Hide Helpers");
    auto& box = itemWidget<QCheckBox>(hide);
    box.click();
    EXPECT_EQ(hide.value(), 1.0);
    EXPECT_EQ(session->stage().undoStack().undoNames().back(), "Hide Helpers");
    for (const auto& [key, expected] : {std::pair(Qt::Key_Z, 0.0), {Qt::Key_Y, 1.0}}) {
        QTest::keyClick(top(), key, Qt::ControlModifier);
        EXPECT_EQ(hide.value(), expected);
        EXPECT_EQ(box.isChecked(), expected != 0.0);
    }
}

TEST_F(Config, theTreeLeadsFromToolToTool)
{
    core::Instance& car = open("4WheelerExt");
    core::Instance& camera = open("ObserverCam");
    auto& tree = widget<QTreeView>(100);
    const QModelIndex root = tree.model()->index(0, 0);
    EXPECT_EQ(root.data().toString(), "Main Preferences");
    EXPECT_EQ(tree.currentIndex().data().toString().toStdString(), camera.name());
    tree.setCurrentIndex(tree.model()->index(0, 0, root));
    EXPECT_EQ(top()->windowTitle().toStdString(),
              "Configuration for " + car.name() + " for Rigstage");
    EXPECT_EQ(itemWidget<QDoubleSpinBox>(item(car, "Front Stiffness")).value(),
              item(car, "Front Stiffness").value());

    int opened = 0;
    window->setPreferencesDoor([&] { ++opened; });
    tree.setCurrentIndex(root);
    EXPECT_FALSE(at(103)->isEnabled());
    press(114);
    EXPECT_EQ(opened, 1);
    window->open(&car);
    EXPECT_TRUE(at(103)->isEnabled());
    car.reference()->rename("Racer");
    window->refreshTree();
    EXPECT_EQ(top()->windowTitle().toStdString(), "Configuration for Racer for Rigstage");
}

TEST_F(Config, theMainWindowOpensItForTheSelectedTool)
{
    int preferences = 0;
    MainDlg main({.openConfiguration = [&](core::Instance* tool) { window->open(tool); },
                  .refreshConfiguration = [&] { window->refreshTree(); },
                  .openInputs = {},
                  .openPreferences = [&] { ++preferences; },
                  .openAbout = {},
                  .openUpdates = {}});
    main.init();
    main.open();
    core::InstanceReference& car = **session->create("4WheelerExt");
    main.refreshTree();
    const auto configure = [&] { QTest::mouseClick(main.find(106)->widget(), Qt::LeftButton); };
    main.select(session->root());
    configure();
    EXPECT_EQ(preferences, 1);
    EXPECT_FALSE(window->isShown());
    main.select(car);
    configure();
    ASSERT_TRUE(window->isShown());
    EXPECT_EQ(widget<QTreeView>(100).currentIndex().data().toString().toStdString(), car.getText());
}

TEST_F(Config, aDropOfACopyIsOneStepAndShownOnce)
{
    MainDlg main({});
    main.init();
    main.open();
    windows.main = &main;
    core::InstanceReference& car = **session->create("Sinusoid", "Car");
    core::InstanceReference& set = **session->create("Group", "Set");
    main.select(car);
    auto& view = *dynamic_cast<QTreeView*>(main.find(119)->widget());
    QAbstractItemModel& model = *view.model();
    const QModelIndex root = model.index(0, 0);
    const std::unique_ptr<QMimeData> data(model.mimeData({model.index(0, 0, root)}));
    const std::size_t before = session->stage().undoStack().undoNames().size();
    ASSERT_TRUE(model.dropMimeData(data.get(), Qt::CopyAction, -1, 0, model.index(1, 0, root)));
    QApplication::processEvents();
    EXPECT_EQ(session->stage().undoStack().undoNames().size(), before + 1);
    EXPECT_EQ(set.childItems().size(), 1U);
    EXPECT_EQ(model.rowCount(model.index(0, 0)), 2);
    EXPECT_EQ(model.rowCount(model.index(1, 0, model.index(0, 0))), 1);
    session->stage().hostUndo();
    EXPECT_EQ(session->core().instances().collect(false).size(), 2U);
    windows.main = nullptr;
}

TEST_F(Config, openingAnEntryShowsNothingThatIsHidden)
{
    core::InstanceReference& tool = **session->create("Sinusoid");
    session->stage().nodes().front()->setVisible(false);
    ToolTreeNode(*tool.parentReference()).nodeOf(tool)->restoreState(1);
    EXPECT_FALSE(session->stage().nodes().front()->state().visible);
}

/// The lists of tools can be torn off, and are lit in a run too.
TEST_F(Config, aRunTakesInNoNewTool)
{
    MainDlg main({});
    main.init();
    main.open();
    gui::Component* const page = main.find(103)->findById(510);
    page->show();
    auto& choice = dynamic_cast<QAbstractButton&>(*page->findById(0)->widget());
    const Status done =
        session->record({.seconds = 0.2, .beforeFrame = [&](double) { choice.click(); }});
    ASSERT_TRUE(done) << done.reason();
    EXPECT_TRUE(session->core().instances().collect(false).empty());
    choice.click();
    EXPECT_EQ(session->core().instances().collect(false).size(), 1U);
}

/// In the very event of its own button, by the host, with the whole scene, and back by undo.
TEST_F(Config, aToolCanEndWhileItIsShown)
{
    struct Deleter final : MessageNode
    {
        Deleter() : MessageNode("deleter") {}
        void receive(Message& message, bool) override
        {
            if (message.id == core::configadaptor::message::profileChanged)
                core::InstanceManager::deleteReference(tool, true);
        }
        core::InstanceReference* tool = nullptr;
    } deleter;
    core::Instance& car = open("4WheelerExt");
    Node& button = item(car, "Re-Initialize Car Attributes");
    deleter.tool = car.reference();
    deleter.listenTo(&button);
    itemWidget<QPushButton>(button).click();
    EXPECT_FALSE(window->isShown());
    QApplication::processEvents();
    deleter.stopListeningTo(&button);
    ASSERT_TRUE(session->stage().undoStack().undo());
    window->open(&car);
    QApplication::processEvents();
    itemWidget<QCheckBox>(item(car, "Hide Helpers")).click();
    EXPECT_EQ(item(car, "Hide Helpers").value(), 1.0);

    session->clear();
    QApplication::processEvents();
    window->open(nullptr);
    QApplication::processEvents();
    EXPECT_EQ(top()->windowTitle().toStdString(), "Configuration for Rigstage");

    for (const bool withQuestion : {false, true}) {
        open("Sinusoid");
        if (withQuestion) {
            QTimer::singleShot(0, [&] { session->clear(); });
            names = {"Late"};
            press(111);
            EXPECT_TRUE(windows.said.empty()) << windows.said.front();
        } else {
            session->core().deleteAllInstances();
        }
        EXPECT_FALSE(window->isShown());
        QApplication::processEvents();
    }
}

/// A tool that declares its items anew gets a new panel; the old one's components are dead until
/// then.
TEST_F(Config, followsAToolThatChangesItsItems)
{
    namespace element = core::configadaptor::element;
    core::Instance& camera = open("ObserverCam");
    QCheckBox& old = itemWidget<QCheckBox>(item(camera, "Hide Helpers"));
    double value = 2.0;
    auto* const items = new element::Root;
    auto* const length = new element::Spinner(7, "Length", {}, &value, {0.0, 9.0, 0.5, 1}, nullptr);
    items->addChild(length);
    camera.adoptConfiguration(std::unique_ptr<Node, Destroyer>(items));
    old.click();
    QApplication::processEvents();
    itemWidget<QDoubleSpinBox>(*length).stepUp();
    EXPECT_EQ(value, 2.5);
    camera.adoptConfiguration(nullptr); // the value is this test's
    QApplication::processEvents();
    EXPECT_TRUE(window->isShown());
}

/// The numbers of a template's items are its maker's: also those of the window's own buttons.
TEST_F(Config, aTemplatesLayoutIsLinkedByItsNumbers)
{
    core::InstanceReference* const made = *session->createFromXml(
        "<RGT_Plugin><type>template</type><name>Rig</name><customdata><config><list>"
        "<spinner id='109' defaultvalue='2' min='0' max='100' step='1'/>"
        "<checkbox id='103' defaultstate='true'/></list></config></customdata></RGT_Plugin>");
    ASSERT_NE(made, nullptr);
    core::Instance& tool = made->instance();
    window->open(&tool);
    QApplication::processEvents();
    ASSERT_NE(at(kFirstPanelId + 109), nullptr);
    QTest::keyClick(at(kFirstPanelId + 109)->widget(), Qt::Key_Up);
    EXPECT_EQ(tool.configuration()->valueOf(109), 3.0);
    widget<QCheckBox>(kFirstPanelId + 103).click();
    EXPECT_EQ(tool.configuration()->valueOf(103), 0.0);
    tool.configuration()->setValueOf(109, 50.0);
    EXPECT_EQ(widget<QDoubleSpinBox>(kFirstPanelId + 109).value(), 50.0);
    EXPECT_TRUE(window->isShown());
}

} // namespace

} // namespace tvw::rgs::app

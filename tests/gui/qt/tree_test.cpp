#include "gui/componentinterface/tree.h"
#include "gui/qt/flag_delegate.h"
#include "gui/qt/node_model.h"
#include "tests/gui/qt/gui_fixture.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QTimer>
#include <QTreeView>

#include <array>
#include <memory>

namespace tvw::gui {

namespace {

/// A node that writes down what it is told.
class TestNode : public componentinterface::Tree::Node
{
public:
    using Log = std::vector<std::string>;

    TestNode(std::string name, std::shared_ptr<Log> log)
        : name_(std::move(name)), log_(std::move(log))
    {
    }

    std::string getText() const override { return name_; }
    std::string getToolTip() const override { return name_ == "car" ? "Four wheels" : ""; }
    bool canRename() const override { return name_ != "root"; }
    void childTaken(Node* child) override { tell("lost " + child->getText()); }
    void childGiven(Node* child, std::size_t index) override
    {
        tell("got " + child->getText() + " at " + std::to_string(index));
    }
    void rename(const std::string& text) override { name_ = text; }
    void setState(int column, int state, bool recursive) override
    {
        states_.at(static_cast<std::size_t>(column)) = state;
        tell("state " + std::to_string(column) + " " + std::to_string(state) +
             (recursive ? " recursive" : ""));
    }
    int getState(int column) const override { return states_.at(static_cast<std::size_t>(column)); }
    void restoreState(int column) override { tell("restore " + std::to_string(column)); }
    void showMixed(int column) override { tell("mixed " + std::to_string(column)); }
    std::uint32_t flags() const override { return name_ == "trailer" ? 1 : 3; }
    Node* clone() const override { return new TestNode(name_ + "'", log_); }
    util::xml::Element buildMenu() const override
    {
        util::xml::Element menu;
        EXPECT_EQ(menu.parse("<popup><item id='7' label='Do it'/></popup>"), 0);
        return menu;
    }
    void onMenuCommand(int id) override { tell("command " + std::to_string(id)); }
    void selected() override { tell("selected"); }
    void deselected() override { tell("deselected"); }

    std::string below() const
    {
        std::string names;
        for (const Node* const child : children())
            names += (names.empty() ? "" : " ") + child->getText();
        return names;
    }

private:
    void tell(const std::string& what) { log_->push_back(name_ + ": " + what); }

    std::string name_;
    std::shared_ptr<Log> log_;
    std::array<int, 2> states_{0, 0};
};

class TreeTest : public GuiTest
{
protected:
    void SetUp() override
    {
        open("<tree id='1' dragdrop='yes'><flag label='Run'/><flag label='Poly' "
             "defaultstate='true'/></tree>");
        root = std::make_unique<TestNode>("root", log);
        for (TestNode** const node : {&car, &boat, &trailer}) {
            *node = new TestNode(node == &car ? "car" : node == &boat ? "boat" : "trailer", log);
            root->addChild(*node);
        }
        wheel = new TestNode("wheel", log);
        car->addChild(wheel);
        tree = toTree(&at(1));
        tree->setRoot(root.get(), true);
        log->clear();
    }
    void TearDown() override { window.reset(); }

    QTreeView& view() { return widgetAs<QTreeView>(1); }
    NodeModel& model() { return *dynamic_cast<NodeModel*>(view().model()); }
    QPoint centre(const TestNode* node, int column)
    {
        return view().visualRect(model().indexOf(node, column)).center();
    }
    void move(const TestNode* node, int column)
    {
        QMouseEvent event(QEvent::MouseMove, centre(node, column), Qt::NoButton, Qt::LeftButton,
                          {});
        QApplication::sendEvent(view().viewport(), &event);
    }
    /// Drops nodes at a row of a target.
    bool drop(const std::vector<TestNode*>& nodes, const TestNode* target, int row,
              Qt::DropAction action = Qt::MoveAction)
    {
        QModelIndexList indexes;
        for (const TestNode* const node : nodes)
            indexes.append(model().indexOf(node));
        const std::unique_ptr<QMimeData> data(model().mimeData(indexes));
        return model().dropMimeData(data.get(), action, row, 0, model().indexOf(target));
    }

    std::shared_ptr<TestNode::Log> log = std::make_shared<TestNode::Log>();
    std::unique_ptr<TestNode> root;
    TestNode *car = nullptr, *boat = nullptr, *trailer = nullptr, *wheel = nullptr;
    componentinterface::Tree* tree = nullptr;
};

using Log = TestNode::Log;

TEST_F(TreeTest, flagsStandToTheLeftOfTheNames)
{
    const QHeaderView& header = *view().header();
    EXPECT_EQ(header.visualIndex(1), 0);
    EXPECT_EQ(header.visualIndex(2), 1);
    EXPECT_EQ(header.visualIndex(0), 2);
    EXPECT_EQ(header.sectionSize(1), 20);
    tree->setFlagCount(1);
    EXPECT_EQ(header.visualIndex(0), 1);
    EXPECT_EQ(model().columnCount(), 2);
    EXPECT_TRUE(view().isExpanded(model().indexOf(root.get())));
}

TEST_F(TreeTest, whatTheNodesShow)
{
    const QModelIndex index = model().indexOf(car);
    EXPECT_EQ(index.data().toString(), "car - Four wheels");
    EXPECT_EQ(index.data(Qt::EditRole).toString(), "car");
    EXPECT_EQ(model().indexOf(boat).data().toString(), "boat");
    EXPECT_TRUE(model().setData(index, "taxi", Qt::EditRole));
    EXPECT_EQ(car->getText(), "taxi");
    EXPECT_FALSE(model().setData(model().indexOf(root.get()), "x", Qt::EditRole));
    EXPECT_EQ(model().parent(model().indexOf(wheel)), index);
    tree->setRoot(root.get(), false);
    EXPECT_EQ(model().rowCount(), 3);
    EXPECT_FALSE(model().parent(model().indexOf(boat)).isValid());
    EXPECT_EQ(model().nodeAt(model().indexOf(wheel)), wheel);
    tree->setRoot(nullptr, true);
    EXPECT_EQ(model().rowCount(), 0);
}

TEST_F(TreeTest, aFlagIsClickedAndPaintedOverRows)
{
    const Listener heard(at(1));
    QTest::mousePress(view().viewport(), Qt::LeftButton, {}, centre(car, 1));
    move(boat, 1);
    move(trailer, 1);
    QTest::mouseRelease(view().viewport(), Qt::LeftButton, {}, centre(trailer, 1));
    EXPECT_EQ(*log, (Log{"car: state 0 1 recursive", "boat: state 0 1 recursive",
                         "trailer: state 0 1 recursive"}));
    EXPECT_EQ(heard.count(message::treeFlagClicked), 3u);
    EXPECT_EQ(heard.count(message::treeSelectionChanged), 0u) << "a flag selects nothing";
    log->clear();
    view().expand(model().indexOf(car));
    log->clear();
    QTest::mousePress(view().viewport(), Qt::LeftButton, {}, centre(trailer, 1));
    move(car, 2); // another column
    move(car, 1); // its children are in sight
    QTest::mouseRelease(view().viewport(), Qt::LeftButton, {}, centre(car, 1));
    EXPECT_EQ(*log, (Log{"trailer: state 0 0 recursive", "car: state 0 0"}));
    log->clear();
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, centre(trailer, 2));
    EXPECT_EQ(*log, Log{"trailer: selected"}) << "it has no second flag: the click is the row's";
}

TEST_F(TreeTest, theHeaderFlipsItsFlag)
{
    const Listener heard(at(1));
    EXPECT_EQ(tree->headerState(0), 0);
    EXPECT_EQ(tree->headerState(1), 1) << "the file's default";
    for (const int x : {10, 30, 30, 150})
        QTest::mouseClick(view().header()->viewport(), Qt::LeftButton, {}, QPoint(x, 8));
    EXPECT_EQ(tree->headerState(0), 1);
    EXPECT_EQ(tree->headerState(1), 1);
    EXPECT_EQ(heard.params(message::treeHeaderClicked), (std::vector<int>{0, 1, 1}));
}

TEST_F(TreeTest, selectionIsTold)
{
    const Listener heard(at(1));
    tree->select(car);
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, centre(boat, 0));
    EXPECT_EQ(tree->selected(), boat);
    EXPECT_EQ(*log, (Log{"car: selected", "car: deselected", "boat: selected"}));
    tree->select(nullptr);
    EXPECT_EQ(tree->selected(), nullptr);
    EXPECT_EQ(heard.count(message::treeSelectionChanged), 3u);
    QTest::mouseDClick(view().viewport(), Qt::LeftButton, {}, centre(boat, 0));
    EXPECT_EQ(heard.count(message::treeDoubleClicked), 1u);
}

TEST_F(TreeTest, opensAndClosesWithItsFlags)
{
    view().expand(model().indexOf(car));
    view().collapse(model().indexOf(car));
    EXPECT_EQ(*log, (Log{"car: restore 0", "car: restore 1", "car: mixed 0", "car: mixed 1"}));
}

TEST_F(TreeTest, aResetKeepsWhatIsOpenAndCurrent)
{
    view().expand(model().indexOf(car));
    tree->select(wheel);
    log->clear();
    boat->destroy();
    root->insertChild(new TestNode("plane", log), 0);
    const Listener heard(at(1));
    tree->reset();
    EXPECT_TRUE(log->empty()) << log->front();
    EXPECT_TRUE(view().isExpanded(model().indexOf(car)));
    EXPECT_EQ(tree->selected(), wheel);
    EXPECT_EQ(heard.count(message::treeSelectionChanged), 0u);
    wheel->destroy();
    tree->reset();
    EXPECT_EQ(tree->selected(), nullptr);
    EXPECT_EQ(heard.count(message::treeSelectionChanged), 1u);
}

TEST_F(TreeTest, aDragCarriesNoNodeTwice)
{
    const auto count = [&](const QModelIndexList& indexes) {
        const std::unique_ptr<QMimeData> data(model().mimeData(indexes));
        return data->data(NodeModel::kMimeType).size() / 8;
    };
    EXPECT_EQ(count({model().indexOf(car), model().indexOf(wheel)}), 1);
    EXPECT_EQ(count({model().indexOf(wheel), model().indexOf(wheel, 1), model().indexOf(boat)}), 2);
}

struct DropCase
{
    const char* name;
    std::vector<int> nodes; ///< places below the root
    int row;
    const char* result;
};

TEST_F(TreeTest, aDropEndsInTheRowMeant)
{
    const DropCase cases[] = {
        {"down, over one", {0}, 2, "boat car trailer"},
        {"to the end", {0}, 3, "boat trailer car"},
        {"behind the last by a negative row", {0}, -1, "boat trailer car"},
        {"up", {2}, 0, "trailer car boat"},
        {"onto its own place", {1}, 1, "car boat trailer"},
        {"two down", {0, 1}, 3, "trailer car boat"},
        {"from both sides of the row", {0, 2}, 1, "car trailer boat"},
        {"in the order of the selection", {2, 0}, 1, "trailer car boat"},
    };
    for (const DropCase& c : cases) {
        std::vector<TestNode*> nodes;
        for (const int place : c.nodes)
            nodes.push_back(std::array<TestNode*, 3>{car, boat, trailer}[place]);
        EXPECT_TRUE(drop(nodes, root.get(), c.row)) << c.name;
        EXPECT_EQ(root->below(), c.result) << c.name;
        for (TestNode* const node : {car, boat, trailer})
            root->addChild(node); // back in order
        tree->reset();
    }
}

TEST_F(TreeTest, dropsIntoOtherNodes)
{
    EXPECT_TRUE(drop({wheel}, boat, -1));
    EXPECT_EQ(*log,
              (Log{"car: lost wheel", "boat: got wheel at 0", "boat: mixed 0", "boat: mixed 1"}))
        << "the closed target shows what it holds";
    EXPECT_TRUE(drop({wheel}, root.get(), 1, Qt::CopyAction));
    EXPECT_EQ(root->below(), "car wheel' boat trailer");
    EXPECT_EQ(boat->below(), "wheel");
    EXPECT_FALSE(drop({boat}, wheel, 0)) << "into what lies below it";
    EXPECT_FALSE(drop({root.get()}, car, 0));
    QMimeData foreign;
    foreign.setData(NodeModel::kMimeType, QByteArray(17, '\x41'));
    EXPECT_FALSE(model().dropMimeData(&foreign, Qt::MoveAction, 0, 0, model().indexOf(car)));
    EXPECT_EQ(root->below(), "car wheel' boat trailer");
}

TEST_F(TreeTest, theMenuIsTheNodesOrTheRoots)
{
    const auto choose = [] {
        QTimer::singleShot(50, [] {
            auto* const menu = dynamic_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            menu->setActiveAction(menu->actions().at(0));
            QTest::keyClick(menu, Qt::Key_Return);
        });
    };
    choose();
    QTest::mouseClick(view().viewport(), Qt::RightButton, {}, centre(boat, 0));
    choose();
    QTest::mouseClick(view().viewport(), Qt::RightButton, {},
                      QPoint(100, view().viewport()->height() - 3));
    ASSERT_FALSE(log->empty());
    EXPECT_EQ(log->back(), "root: command 7");
    EXPECT_EQ(std::count(log->begin(), log->end(), "boat: command 7"), 1);
}

TEST_F(TreeTest, renamesInPlace)
{
    tree->beginRename(boat);
    auto* const editor = view().findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), "boat");
    editor->setText("ship");
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(boat->getText(), "ship");
}

} // namespace

} // namespace tvw::gui

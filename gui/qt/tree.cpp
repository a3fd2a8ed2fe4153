#include "gui/qt/tree.h"

#include "gui/qt/flag_delegate.h"
#include "gui/qt/pixmap.h"
#include "gui/qt/popup_menu.h"
#include "gui/qt/tree_header.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QMouseEvent>

#include <algorithm>

namespace tvw::gui::component::qt {

Tree::Tree(const util::xml::Element& element) : QtScrollComponent(element)
{
    makeModel();
    makeHeader();
    makeDelegate();
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::SelectedClicked);
    setUniformRowHeights(true);
    setTreePosition(0); // wherever the name column stands
    if (dragDrop()) {
        setDragDropMode(QAbstractItemView::DragDrop);
        setDefaultDropAction(Qt::MoveAction);
    }
    QObject::connect(this, &QTreeView::expanded, this,
                     [this](const QModelIndex& index) { toldOfExpansion(index, true); });
    QObject::connect(this, &QTreeView::collapsed, this,
                     [this](const QModelIndex& index) { toldOfExpansion(index, false); });
    Tree::setFlagCount(flagCount());
    quiet_ = false;
}

Tree::~Tree()
{
    quiet_ = true;
    setModel(nullptr); // the nodes may be gone
}

void Tree::makeModel()
{
    NodeModel::View view;
    view.icon = [this](const Node& node) { return iconOf(node); };
    view.isExpanded = [this](const QModelIndex& index) { return QTreeView::isExpanded(index); };
    view.flagLabel = [this](int flag) {
        const TreeFlag* const found = flagAt(flag);
        return found ? QString::fromStdString(found->label) : QString();
    };
    nodes_ = new NodeModel(std::move(view), dragDrop(), this);
    setModel(nodes_);
}

void Tree::makeHeader()
{
    Header::View view;
    view.state = [this](int flag) { return headerState(flag); };
    view.icon = [this](int flag, int state) { return iconOfFlag(flag, state); };
    view.clicked = [this](int flag) { flipHeader(flag); };
    setHeader(new Header(std::move(view), this));
}

void Tree::makeDelegate()
{
    FlagDelegate::View view;
    view.hasIcons = [this](int flag) { return hasFlagIcons(flag); };
    view.icon = [this](int flag, int state) { return iconOfFlag(flag, state); };
    view.isExpanded = [this](const QModelIndex& index) { return QTreeView::isExpanded(index); };
    view.changed = [this] { refresh(); };
    delegate_ = new FlagDelegate(std::move(view), this);
}

void Tree::build()
{
    QtScrollComponent::build();
    for (LoadedIcon& loaded : icons_) { // variables may have come since
        if (loaded.icon.isNull())
            loaded.icon = loadIcon(expandVariables(loaded.path));
    }
    layOutColumns();
}

// Columns.

void Tree::setFlagCount(int count)
{
    component::Tree::setFlagCount(count);
    changeModel([&] {
        nodes_->setFlagCount(flagCount());
        expandAgain();
    });
    layOutColumns();
}

void Tree::layOutColumns()
{
    QHeaderView& sections = *header();
    for (int logical = 0; logical < sections.count(); ++logical)
        sections.moveSection(sections.visualIndex(logical), logical);
    sections.moveSection(sections.visualIndex(0), flagCount());
    sections.setMinimumSectionSize(FlagDelegate::kWidth);
    sections.setStretchLastSection(true);
    sections.setSectionResizeMode(QHeaderView::Fixed);
    sections.setVisible(flagCount() > 0);
    for (int column = 1; column <= flagCount(); ++column) {
        sections.resizeSection(column, FlagDelegate::kWidth);
        setItemDelegateForColumn(column, delegate_);
    }
}

void Tree::setHeaderState(int flag, int state)
{
    component::Tree::setHeaderState(flag, state);
    header()->viewport()->update();
}

void Tree::flipHeader(int flag)
{
    if (flagAt(flag) == nullptr)
        return;
    setHeaderState(flag, headerState(flag) == 1 ? 0 : 1);
    notify(message::treeHeaderClicked, static_cast<std::uint32_t>(flag));
    header()->viewport()->update();
}

void Tree::setFlagIcons(int flag, const std::string& falseIcon, const std::string& trueIcon,
                        const std::string& undeterminedIcon)
{
    component::Tree::setFlagIcons(flag, falseIcon, trueIcon, undeterminedIcon);
    repaint();
    header()->viewport()->update();
}

// Icons.

int Tree::iconIndex(const std::string& path)
{
    if (path.empty())
        return -1;
    const auto found = std::find_if(icons_.begin(), icons_.end(),
                                    [&](const LoadedIcon& icon) { return icon.path == path; });
    if (found != icons_.end())
        return static_cast<int>(found - icons_.begin());
    icons_.push_back({path, loadIcon(expandVariables(path))});
    return static_cast<int>(icons_.size()) - 1;
}

QIcon Tree::iconOf(const Node& node)
{
    const int index = node.iconIndex(*this);
    return index >= 0 && static_cast<std::size_t>(index) < icons_.size()
               ? icons_[static_cast<std::size_t>(index)].icon
               : QIcon();
}

QIcon Tree::iconOfFlag(int flag, int state)
{
    // A flag without an icon for the undetermined state shows that of the true one.
    const std::string own = flagIcon(flag, state);
    const int index = iconIndex(own.empty() && state == 2 ? flagIcon(flag, 1) : own);
    return index < 0 ? QIcon() : icons_[static_cast<std::size_t>(index)].icon;
}

// Nodes.

void Tree::refresh()
{
    component::Tree::refresh();
}

template <class Change>
void Tree::changeModel(Change change)
{
    const bool before = quiet_;
    quiet_ = true;
    change();
    quiet_ = before;
}

void Tree::setRoot(Node* node, bool showRoot)
{
    changeModel([&] {
        component::Tree::setRoot(node, showRoot);
        expanded_.clear();
        nodes_->setRoot(node, showRoot);
        if (showRoot && node != nullptr) {
            expanded_.insert(node);
            expandAgain();
        }
    });
    layOutColumns();
}

void Tree::select(Node* node)
{
    const QModelIndex index = nodes_->indexOf(node);
    if (index.isValid())
        setCurrentIndex(index);
    else
        selectionModel()->clear();
}

Tree::Node* Tree::selected() const
{
    return nodes_->nodeAt(currentIndex());
}

void Tree::reset()
{
    if (quiet_) {
        QTreeView::reset(); // the view itself asks, within a change of the model
        return;
    }
    const Node* const current = component::Tree::selected();
    changeModel([&] {
        nodes_->reload();
        expandAgain();
        Node* const found = nodes_->find(current);
        component::Tree::select(found);
        if (found != nullptr)
            select(found);
    });
    layOutColumns();
    if (component::Tree::selected() != current)
        notify(message::treeSelectionChanged);
}

/// Expands what was expanded; forgets what has gone.
void Tree::expandAgain()
{
    std::set<const Node*> found;
    nodes_->forEach([&](Node& node) {
        if (expanded_.count(&node) == 0)
            return;
        found.insert(&node);
        QTreeView::expand(nodes_->indexOf(&node));
    });
    expanded_ = std::move(found);
}

void Tree::toldOfExpansion(const QModelIndex& index, bool isExpanded)
{
    Node* const node = nodes_->nodeAt(index);
    if (node == nullptr || quiet_)
        return;
    if (isExpanded)
        expanded_.insert(node);
    else
        expanded_.erase(node);
    for (int flag = 0; flag < flagCount(); ++flag)
        isExpanded ? node->restoreState(flag) : node->showMixed(flag);
    repaint();
}

void Tree::beginRename(Node* node)
{
    const QModelIndex index = nodes_->indexOf(node);
    if (!index.isValid() || !node->canRename())
        return;
    setCurrentIndex(index);
    edit(index);
}

// What the user does.

/// What was dragged stays selected, and is seen where it went.
void Tree::dropEvent(QDropEvent* event)
{
    Node* const dragged = event->source() == this ? selected() : nullptr;
    QTreeView::dropEvent(event);
    const QModelIndex place =
        dragged && nodes_->find(dragged) ? nodes_->indexOf(dragged) : QModelIndex();
    if (!place.isValid())
        return;
    for (QModelIndex above = place.parent(); above.isValid(); above = above.parent())
        expand(above);
    select(dragged);
}

void Tree::tellSelection(const QItemSelection& selection, void (Node::*told)())
{
    for (const QModelIndex& index : selection.indexes()) {
        Node* node = nodes_->nodeAt(index);
        if (node == nullptr && !nodes_->showsRoot())
            node = nodes_->root();
        if (node != nullptr && index.column() <= 0)
            (node->*told)();
    }
}

void Tree::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    if (quiet_)
        return;
    component::Tree::select(nodes_->nodeAt(currentIndex()));
    tellSelection(deselected, &Node::deselected);
    tellSelection(selected, &Node::selected);
    notify(message::treeSelectionChanged);
}

void Tree::mouseDoubleClickEvent(QMouseEvent* event)
{
    QTreeView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        notify(message::treeDoubleClicked);
}

void Tree::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::RightButton) {
        QTreeView::mouseReleaseEvent(event);
        return;
    }
    event->accept();
    Node* node = nodes_->nodeAt(indexAt(event->pos()));
    if (node == nullptr)
        node = nodes_->root();
    const util::xml::Element menu = node ? node->buildMenu() : util::xml::Element();
    if (menu.childCount() == 0)
        return;
    const std::optional<int> chosen = runPopupMenu(menu, *this);
    if (!chosen)
        return;
    // Other events have run meanwhile: the node may have gone.
    if (Node* const still = nodes_->find(node))
        still->onMenuCommand(*chosen);
}

} // namespace tvw::gui::component::qt

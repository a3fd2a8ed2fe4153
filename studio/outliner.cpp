#include "studio/outliner.h"

#include <QApplication>
#include <QDropEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStyle>

namespace tvw::rgs::studio {

namespace {

enum Column { kName, kShown };
constexpr int kShownWidth = 28;

stage::StageNode& nodeOf(const QTreeWidgetItem& item)
{
    return *static_cast<stage::StageNode*>(item.data(kName, Qt::UserRole).value<void*>());
}

std::uint64_t mixed(std::uint64_t hash, std::uint64_t value)
{
    hash ^= value + 0x9E3779B97F4A7C15ULL + (hash << 6) + (hash >> 2);
    return hash;
}

/// An item above it is selected too, and takes it along.
bool goesWithAnother(const QTreeWidgetItem& item)
{
    const QTreeWidgetItem* above = item.parent();
    while (above && !above->isSelected())
        above = above->parent();
    return above != nullptr;
}

/// An undo bracket of the user's own.
class Bracket
{
public:
    Bracket(stage::Stage& scene, const char* name) : scene_(scene) { scene_.beginUndo(name); }
    ~Bracket() { scene_.endUndo(); }
    Bracket(const Bracket&) = delete;
    Bracket& operator=(const Bracket&) = delete;

private:
    stage::Stage& scene_;
};

} // namespace

Outliner::Outliner(stage::Session& session) : session_(session)
{
    setObjectName("outliner");
    setColumnCount(2);
    setHeaderHidden(true);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(kName, QHeaderView::Stretch);
    header()->setSectionResizeMode(kShown, QHeaderView::Fixed);
    header()->resizeSection(kShown, kShownWidth);
    setSelectionMode(ExtendedSelection);
    setDragDropMode(InternalMove);
    setEditTriggers(EditKeyPressed | SelectedClicked);
    setUniformRowHeights(true);
    setToolTip("Double click or F2 renames, drag links, Delete deletes.");
    connect(this, &QTreeWidget::itemSelectionChanged, this, [this] { takeSelection(); });
    connect(this, &QTreeWidget::itemChanged, this,
            [this](QTreeWidgetItem* item, int column) { edited(item, column); });
    connect(this, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item, int column) {
        if (column == kName)
            editItem(item, kName);
    });
}

std::uint64_t Outliner::structure() const
{
    std::uint64_t hash = 1;
    session_.stage().forEachNode([&](stage::StageNode& node) {
        hash = mixed(hash, reinterpret_cast<std::uintptr_t>(&node));
        hash = mixed(hash, reinterpret_cast<std::uintptr_t>(node.parent()));
    });
    return hash;
}

void Outliner::refresh()
{
    if (session_.stage().version() == version_)
        return;
    version_ = session_.stage().version();
    if (const std::uint64_t now = structure(); now != shown_) {
        shown_ = now;
        rebuild();
    }
    showStates();
    showSelection();
}

void Outliner::showStates()
{
    filling_ = true;
    for (const auto& [node, item] : items_) {
        const QString name = QString::fromStdString(node->name());
        if (item->text(kName) != name)
            item->setText(kName, name);
        const Qt::CheckState check = node->state().visible ? Qt::Checked : Qt::Unchecked;
        if (item->checkState(kShown) != check)
            item->setCheckState(kShown, check);
    }
    filling_ = false;
}

void Outliner::rebuild()
{
    filling_ = true;
    std::vector<stage::StageNode*> open;
    for (const auto& [node, item] : items_) {
        if (item->isExpanded())
            open.push_back(node);
    }
    stage::StageNode* const current = currentItem() ? &nodeOf(*currentItem()) : nullptr;
    const int scrolled = verticalScrollBar()->value();
    clear();
    items_.clear();
    selected_.clear();
    for (stage::StageNode* const node : session_.stage().topLevel())
        addBelow(invisibleRootItem(), *node);
    for (stage::StageNode* const node : open) {
        if (const auto found = items_.find(node); found != items_.end())
            found->second->setExpanded(true);
    }
    if (const auto found = items_.find(current); found != items_.end())
        setCurrentItem(found->second, kName, QItemSelectionModel::NoUpdate);
    verticalScrollBar()->setValue(scrolled);
    filling_ = false;
}

void Outliner::addBelow(QTreeWidgetItem* parent, stage::StageNode& node)
{
    auto* const item = new QTreeWidgetItem(parent);
    item->setText(kName, QString::fromStdString(node.name()));
    item->setData(kName, Qt::UserRole, QVariant::fromValue(static_cast<void*>(&node)));
    item->setToolTip(kName, stage::nameOf(node.kind()));
    item->setFlags(item->flags() | Qt::ItemIsEditable | Qt::ItemIsUserCheckable |
                   Qt::ItemIsDropEnabled | Qt::ItemIsDragEnabled);
    item->setToolTip(kShown, "Visible");
    item->setCheckState(kShown, node.state().visible ? Qt::Checked : Qt::Unchecked);
    items_[&node] = item;
    for (stage::StageNode* const child : node.children())
        addBelow(item, *child);
}

void Outliner::showSelection()
{
    std::vector<stage::StageNode*> now = session_.stage().selection();
    if (now == selected_)
        return;
    filling_ = true;
    QItemSelection all;
    for (stage::StageNode* const node : now) {
        if (const auto found = items_.find(node); found != items_.end()) {
            const QModelIndex first = indexFromItem(found->second, kName);
            all.select(first, first.siblingAtColumn(kShown));
        }
    }
    selectionModel()->select(all, QItemSelectionModel::ClearAndSelect);
    if (now.size() == 1 && !hasFocus() && items_.contains(now.front()))
        scrollToItem(items_.at(now.front())); // chosen in the view
    selected_ = std::move(now);
    filling_ = false;
}

void Outliner::takeSelection()
{
    if (filling_)
        return;
    stage::Stage& scene = session_.stage();
    scene.clearSelection();
    for (QTreeWidgetItem* const item : selectedItems())
        nodeOf(*item).setSelected(true);
    selected_ = scene.selection();
    tell();
}

void Outliner::edited(QTreeWidgetItem* item, int column)
{
    if (filling_)
        return;
    stage::StageNode& node = nodeOf(*item);
    if (column == kShown) {
        const Bracket bracket(session_.stage(), "Show or hide");
        node.setVisible(item->checkState(kShown) == Qt::Checked);
    } else if (const std::string name = item->text(kName).trimmed().toStdString();
               !name.empty() && name != node.name()) {
        const Bracket bracket(session_.stage(), "Rename");
        node.rename(name);
    }
    showStates(); // the scene may have made another name of it, or kept the old one
    tell();
}

void Outliner::dropEvent(QDropEvent* event)
{
    QTreeWidgetItem* const below = itemAt(event->pos());
    const bool onItem = below && dropIndicatorPosition() == OnItem;
    stage::StageNode* parent = onItem                     ? &nodeOf(*below)
                               : below && below->parent() ? &nodeOf(*below->parent())
                                                          : nullptr;
    {
        const Bracket bracket(session_.stage(), "Link");
        for (QTreeWidgetItem* const item : selectedItems()) {
            if (!goesWithAnother(*item)) // nor can it be linked below itself: that does nothing
                nodeOf(*item).setParent(parent);
        }
    }
    event->setDropAction(Qt::IgnoreAction); // the scene tells how the tree is now
    event->accept();
    shown_ = 0;
    tell();
}

void Outliner::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete)
        removeSelected();
    else
        QTreeWidget::keyPressEvent(event);
}

void Outliner::removeSelected()
{
    const std::vector<stage::StageNode*> nodes = session_.stage().selection();
    if (nodes.empty())
        return;
    {
        const Bracket bracket(session_.stage(), "Delete");
        session_.stage().remove(nodes);
    }
    tell();
}

void Outliner::tell()
{
    if (changed)
        changed();
}

} // namespace tvw::rgs::studio

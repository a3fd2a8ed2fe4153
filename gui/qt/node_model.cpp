#include "gui/qt/node_model.h"

#include <QIcon>
#include <QMimeData>

#include <algorithm>
#include <cstring>

namespace tvw::gui {

namespace {

using Node = NodeModel::Node;

int rowOf(const Node& node)
{
    const auto& siblings = node.parent()->children();
    return static_cast<int>(std::find(siblings.begin(), siblings.end(), &node) - siblings.begin());
}

bool isWithin(const Node* node, const Node& ancestor)
{
    while (node != nullptr && node != &ancestor)
        node = node->parent();
    return node != nullptr;
}

bool hasAncestorAmong(const Node& node, const std::vector<Node*>& nodes)
{
    return std::any_of(nodes.begin(), nodes.end(), [&](const Node* other) {
        return other != &node && isWithin(&node, *other);
    });
}

} // namespace

NodeModel::NodeModel(View view, bool dragDrop, QObject* parent)
    : QAbstractItemModel(parent), view_(std::move(view)), dragDrop_(dragDrop)
{
}

void NodeModel::setRoot(Node* root, bool showRoot)
{
    beginResetModel();
    root_ = root;
    showRoot_ = showRoot;
    endResetModel();
}

void NodeModel::setFlagCount(int count)
{
    beginResetModel();
    flagCount_ = count;
    endResetModel();
}

void NodeModel::reload()
{
    beginResetModel();
    endResetModel();
}

void NodeModel::forEach(const std::function<void(Node& node)>& visit) const
{
    const auto walk = [&visit](const auto& self, Node& node) -> void {
        visit(node);
        for (Node* const child : node.children())
            self(self, *child);
    };
    if (root_ != nullptr)
        walk(walk, *root_);
}

Node* NodeModel::find(const Node* wanted) const
{
    Node* found = nullptr;
    forEach([&](Node& node) {
        if (&node == wanted)
            found = &node;
    });
    return found;
}

// Places.

Node* NodeModel::nodeAt(const QModelIndex& index) const
{
    if (!index.isValid() || root_ == nullptr)
        return nullptr;
    const auto row = static_cast<std::size_t>(index.row());
    if (const auto* const parent = static_cast<const Node*>(index.internalPointer()))
        return parent->childAt(row);
    return showRoot_ ? root_ : root_->childAt(row);
}

QModelIndex NodeModel::indexOf(const Node* node, int column) const
{
    if (node == nullptr || root_ == nullptr || !isWithin(node, *root_))
        return {};
    if (node == root_)
        return showRoot_ ? createIndex(0, column, nullptr) : QModelIndex();
    Node* const parent = node->parent();
    return createIndex(rowOf(*node), column, isTop(parent) ? nullptr : parent);
}

QModelIndex NodeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, nodeAt(parent));
}

QModelIndex NodeModel::parent(const QModelIndex& index) const
{
    if (!index.isValid())
        return {};
    return indexOf(static_cast<const Node*>(index.internalPointer()));
}

int NodeModel::rowCount(const QModelIndex& parent) const
{
    if (root_ == nullptr || parent.column() > 0)
        return 0;
    if (const Node* const node = nodeAt(parent))
        return static_cast<int>(node->childCount());
    return showRoot_ ? 1 : static_cast<int>(root_->childCount());
}

int NodeModel::columnCount(const QModelIndex&) const
{
    return 1 + flagCount_;
}

// Content.

QVariant NodeModel::data(const QModelIndex& index, int role) const
{
    const Node* const node = nodeAt(index);
    if (node == nullptr)
        return {};
    if (index.column() > 0)
        return node->getState(index.column() - 1);
    if (role == Qt::EditRole)
        return QString::fromStdString(node->getText());
    if (role == Qt::DecorationRole)
        return view_.icon(*node);
    if (role != Qt::DisplayRole)
        return {};
    const std::string tip = node->getToolTip();
    return QString::fromStdString(tip.empty() ? node->getText() : node->getText() + " - " + tip);
}

bool NodeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    Node* const node = nodeAt(index);
    if (node == nullptr || role != Qt::EditRole || index.column() != 0 || !node->canRename())
        return false;
    const std::string text = value.toString().toStdString();
    if (text == node->getText())
        return true;
    node->rename(text);
    emit dataChanged(index, index);
    return true;
}

QVariant NodeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && section > 0 && role == Qt::ToolTipRole)
        return view_.flagLabel(section - 1);
    return {};
}

Qt::ItemFlags NodeModel::flags(const QModelIndex& index) const
{
    const Node* const node = nodeAt(index);
    if (node == nullptr)
        return dragDrop_ ? Qt::ItemIsDropEnabled : Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled;
    if (index.column() == 0)
        flags |= Qt::ItemIsSelectable;
    if (index.column() == 0 && node->canRename())
        flags |= Qt::ItemIsEditable;
    if (dragDrop_)
        flags |= Qt::ItemIsDropEnabled;
    if (dragDrop_ && index.column() == 0 && node != root_)
        flags |= Qt::ItemIsDragEnabled;
    return flags;
}

// Drag and drop.

Qt::DropActions NodeModel::supportedDropActions() const
{
    return Qt::CopyAction | Qt::MoveAction;
}

QStringList NodeModel::mimeTypes() const
{
    return {QString::fromLatin1(kMimeType)};
}

QMimeData* NodeModel::mimeData(const QModelIndexList& indexes) const
{
    std::vector<Node*> nodes;
    for (const QModelIndex& index : indexes) {
        Node* const node = nodeAt(index);
        if (node != nullptr && std::find(nodes.begin(), nodes.end(), node) == nodes.end())
            nodes.push_back(node);
    }
    QByteArray bytes;
    for (Node* const node : nodes) {
        if (!hasAncestorAmong(*node, nodes))
            bytes.append(reinterpret_cast<const char*>(&node), sizeof node);
    }
    auto* const data = new QMimeData;
    data->setData(QString::fromLatin1(kMimeType), bytes);
    return data;
}

/// Only pointers that are nodes of this tree: the bytes may come from anywhere.
std::vector<Node*> NodeModel::nodesIn(const QMimeData& data) const
{
    std::vector<Node*> all;
    forEach([&all](Node& node) { all.push_back(&node); });
    std::sort(all.begin(), all.end());
    const QByteArray bytes = data.data(QString::fromLatin1(kMimeType));
    std::vector<Node*> nodes;
    for (int at = 0; at + static_cast<int>(sizeof(Node*)) <= bytes.size();
         at += static_cast<int>(sizeof(Node*))) {
        Node* node;
        std::memcpy(&node, bytes.constData() + at, sizeof node);
        if (std::binary_search(all.begin(), all.end(), node) && node != root_)
            nodes.push_back(node);
    }
    return nodes;
}

void NodeModel::take(Node& node)
{
    Node* const parent = node.parent();
    const int row = rowOf(node);
    beginRemoveRows(indexOf(parent), row, row);
    node.detach();
    endRemoveRows();
    parent->childTaken(&node);
}

void NodeModel::put(Node& node, Node& target, int row)
{
    beginInsertRows(indexOf(&target), row, row);
    target.insertChild(&node, static_cast<std::size_t>(row));
    endInsertRows();
    target.childGiven(&node, static_cast<std::size_t>(row));
}

void NodeModel::moveNodes(const std::vector<Node*>& nodes, Node& target, int row)
{
    for (Node* const node : nodes) {
        if (node->parent() == &target && rowOf(*node) < row)
            --row;
        take(*node);
    }
    for (Node* const node : nodes)
        put(*node, target, row++);
}

void NodeModel::copyNodes(const std::vector<Node*>& nodes, Node& target, int row)
{
    for (Node* const node : nodes) {
        if (Node* const copy = node->clone())
            put(*copy, target, row++);
    }
}

bool NodeModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int,
                             const QModelIndex& parent)
{
    if (!dragDrop_ || data == nullptr || root_ == nullptr ||
        (action != Qt::CopyAction && action != Qt::MoveAction))
        return false;
    Node* const at = nodeAt(parent);
    Node& target = at != nullptr ? *at : *root_;
    const bool besideRoot = at == nullptr && showRoot_;
    const std::vector<Node*> nodes = nodesIn(*data);
    const bool isCopy = action == Qt::CopyAction;
    const bool ontoItself = std::any_of(nodes.begin(), nodes.end(),
                                        [&](const Node* node) { return isWithin(&target, *node); });
    if (nodes.empty() || (ontoItself && !isCopy) || !target.dropBegins(isCopy))
        return false;
    const auto end = static_cast<int>(target.childCount());
    const int place = row < 0 || row > end || besideRoot ? end : row;
    isCopy ? copyNodes(nodes, target, place) : moveNodes(nodes, target, place);
    target.dropEnds();
    const QModelIndex targetIndex = indexOf(&target);
    if (targetIndex.isValid() && !view_.isExpanded(targetIndex)) {
        for (int flag = 0; flag < flagCount_; ++flag)
            target.showMixed(flag);
    }
    return true;
}

} // namespace tvw::gui

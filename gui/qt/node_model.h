/// The nodes of a tree, as the view sees them: column 0 the names, behind it a column for each
/// flag.
#pragma once

#include "gui/componentinterface/tree.h"

#include <QAbstractItemModel>

#include <functional>
#include <vector>

namespace tvw::gui {

/// An index's internal pointer is the parent node, null at the top. The nodes are the
/// application's.
class NodeModel : public QAbstractItemModel
{
public:
    using Tree = componentinterface::Tree;
    using Node = Tree::Node;
    static constexpr const char* kMimeType = "application/tvw-gui-abstractitemmodel-node";

    /// What the model asks its view for.
    struct View
    {
        std::function<QIcon(const Node& node)> icon;
        std::function<bool(const QModelIndex& index)> isExpanded;
        std::function<QString(int flag)> flagLabel;
    };
    NodeModel(View view, bool dragDrop, QObject* parent);

    void setRoot(Node* root, bool showRoot);
    void setFlagCount(int count);
    /// Reads the nodes anew.
    void reload();
    /// The node, if it is one of the tree; the pointer is not followed.
    [[nodiscard]] Node* find(const Node* node) const;
    /// Parents before their children.
    void forEach(const std::function<void(Node& node)>& visit) const;

    [[nodiscard]] Node* root() const { return root_; }
    [[nodiscard]] bool showsRoot() const { return showRoot_; }
    [[nodiscard]] Node* nodeAt(const QModelIndex& index) const; ///< null if the index is invalid
    [[nodiscard]] QModelIndex indexOf(const Node* node, int column = 0) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    Qt::DropActions supportedDropActions() const override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    /// Moves the nodes, or with the copy action clones of them, to that place.
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;

private:
    [[nodiscard]] bool isTop(const Node* parent) const { return parent == root_ && !showRoot_; }
    [[nodiscard]] std::vector<Node*> nodesIn(const QMimeData& data) const;
    void take(Node& node);
    void put(Node& node, Node& target, int row);
    void moveNodes(const std::vector<Node*>& nodes, Node& target, int row);
    void copyNodes(const std::vector<Node*>& nodes, Node& target, int row);

    View view_;
    Node* root_ = nullptr;
    bool showRoot_ = true;
    bool dragDrop_;
    int flagCount_ = 0;
};

} // namespace tvw::gui

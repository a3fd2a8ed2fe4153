#pragma once

#include "gui/component/tree.h"
#include "gui/qt/node_model.h"
#include "gui/qt/qtcomponent.h"

#include <QIcon>
#include <QStyledItemDelegate>
#include <QTreeView>

#include <set>
#include <vector>

namespace tvw::gui::component::qt {

class Tree : public QtScrollComponent<QTreeView, component::Tree>
{
public:
    explicit Tree(const util::xml::Element& element);
    ~Tree() override;

    void refresh() override;
    void setFlagCount(int count) override;
    void setHeaderState(int flag, int state) override;
    void setFlagIcons(int flag, const std::string& falseIcon, const std::string& trueIcon,
                      const std::string& undeterminedIcon) override;
    void setRoot(Node* node, bool showRoot) override;
    void select(Node* node) override;
    Node* selected() const override;
    void reset() override; ///< of the component and of the view
    int iconIndex(const std::string& path) override;
    void beginRename(Node* node) override;

protected:
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void build() override;

private:
    struct LoadedIcon
    {
        std::string path;
        QIcon icon;
    };

    /// For the time of a change of the model, in which the view calls reset() by itself.
    template <class Change>
    void changeModel(Change change);
    void makeModel();
    void makeHeader();
    void makeDelegate();
    void layOutColumns();
    void flipHeader(int flag);
    void toldOfExpansion(const QModelIndex& index, bool isExpanded);
    void expandAgain();
    void tellSelection(const QItemSelection& selection, void (Node::*told)());
    [[nodiscard]] QIcon iconOf(const Node& node);
    [[nodiscard]] QIcon iconOfFlag(int flag, int state);

    NodeModel* nodes_ = nullptr;
    QStyledItemDelegate* delegate_ = nullptr;
    std::vector<LoadedIcon> icons_;
    std::set<const Node*> expanded_; ///< never followed: nodes may be gone
    bool quiet_ = true;              ///< the model is changing
};

} // namespace tvw::gui::component::qt

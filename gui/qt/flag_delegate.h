/// Paints and changes the flags of a tree.
#pragma once

#include "gui/componentinterface/tree.h"

#include <QIcon>
#include <QStyledItemDelegate>

#include <functional>

namespace tvw::gui {

class NodeModel;

/// Draws a flag's state: its icon where there is one, else a check box.
void paintFlag(QPainter& painter, const QRect& rect, int state, const QIcon& icon);

class FlagDelegate : public QStyledItemDelegate
{
public:
    static constexpr int kWidth = 20; ///< of a flag column and of an icon [logical pixels]

    struct View
    {
        std::function<bool(int flag)> hasIcons;
        std::function<QIcon(int flag, int state)> icon;
        std::function<bool(const QModelIndex& index)> isExpanded;
        std::function<void()> changed; ///< a flag has been clicked
    };
    FlagDelegate(View view, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override;
    /// A press flips the flag; a drag in its column gives the new state to the rows it passes.
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;
    bool helpEvent(QHelpEvent*, QAbstractItemView*, const QStyleOptionViewItem&,
                   const QModelIndex&) override
    {
        return false; // the numbers of the states are no tips
    }

private:
    View view_;
    int draggedColumn_ = 0; ///< of the model; 0: none
    int draggedState_ = 0;
};

} // namespace tvw::gui

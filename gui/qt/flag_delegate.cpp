#include "gui/qt/flag_delegate.h"

#include "gui/qt/node_model.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>

namespace tvw::gui {

void paintFlag(QPainter& painter, const QRect& rect, int state, const QIcon& icon)
{
    if (!icon.isNull()) {
        QRect place(0, 0, FlagDelegate::kWidth, FlagDelegate::kWidth);
        place.moveCenter(rect.center());
        icon.paint(&painter, place);
        return;
    }
    QStyleOptionButton box;
    box.state = QStyle::State_Enabled | (state == 1   ? QStyle::State_On
                                         : state == 0 ? QStyle::State_Off
                                                      : QStyle::State_NoChange);
    box.palette = QApplication::palette();
    QStyle* const style = QApplication::style();
    box.rect = QRect(QPoint(), QSize(style->pixelMetric(QStyle::PM_IndicatorWidth),
                                     style->pixelMetric(QStyle::PM_IndicatorHeight)));
    box.rect.moveCenter(rect.center());
    style->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, &painter);
}

FlagDelegate::FlagDelegate(View view, QObject* parent)
    : QStyledItemDelegate(parent), view_(std::move(view))
{
}

void FlagDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    const auto* const model = static_cast<const NodeModel*>(index.model());
    const NodeModel::Node* const node = model->nodeAt(index);
    const int flag = index.column() - 1;
    if (node == nullptr || flag < 0 || !(node->flags() >> flag & 1))
        return;
    const int state = node->getState(flag);
    paintFlag(*painter, option.rect, state,
              view_.hasIcons(flag) ? view_.icon(flag, state) : QIcon());
}

QSize FlagDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return {kWidth, kWidth};
}

bool FlagDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                               const QStyleOptionViewItem&, const QModelIndex& index)
{
    const QEvent::Type type = event->type();
    const bool isPress = type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick;
    if (!isPress && type != QEvent::MouseMove)
        return false;
    NodeModel::Node* const node = static_cast<NodeModel*>(model)->nodeAt(index);
    const int flag = index.column() - 1;
    if (node == nullptr || flag < 0)
        return false;
    const bool hasFlag = node->flags() >> flag & 1;
    const auto* const mouse = static_cast<QMouseEvent*>(event);
    if (isPress) {
        draggedColumn_ = 0;
        if (mouse->button() != Qt::LeftButton || !hasFlag)
            return false;
        draggedColumn_ = index.column();
        draggedState_ = node->getState(flag) == 1 ? 0 : 1;
        node->setState(flag, draggedState_, true);
    } else {
        if (!(mouse->buttons() & Qt::LeftButton) || draggedColumn_ != index.column() || !hasFlag ||
            node->getState(flag) == draggedState_)
            return false;
        node->setState(flag, draggedState_, !view_.isExpanded(index.siblingAtColumn(0)));
    }
    view_.changed();
    event->accept();
    return true;
}

} // namespace tvw::gui

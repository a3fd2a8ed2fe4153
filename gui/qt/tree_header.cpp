#include "gui/qt/tree_header.h"

#include "gui/qt/flag_delegate.h"

#include <QMouseEvent>
#include <QPainter>

namespace tvw::gui {

Header::Header(View view, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent), view_(std::move(view))
{
    setSectionsClickable(true);
}

void Header::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const
{
    painter->save();
    QHeaderView::paintSection(painter, rect, logicalIndex);
    painter->restore();
    if (logicalIndex < 1)
        return;
    const int flag = logicalIndex - 1;
    const int state = view_.state(flag);
    paintFlag(*painter, rect, state, view_.icon(flag, state));
}

/// Whether a press there drags the edge between two sections, one of which can be resized.
bool Header::isOverEdge(const QPoint& position) const
{
    return cursor().shape() == Qt::SplitHCursor && logicalIndexAt(position) >= 0;
}

void Header::mousePressEvent(QMouseEvent* event)
{
    pressed_ = event->button() == Qt::LeftButton && !isOverEdge(event->pos())
                   ? logicalIndexAt(event->pos())
                   : -1;
    QHeaderView::mousePressEvent(event);
}

void Header::mouseReleaseEvent(QMouseEvent* event)
{
    QHeaderView::mouseReleaseEvent(event);
    const int section = logicalIndexAt(event->pos());
    if (event->button() == Qt::LeftButton && section == pressed_ && section > 0)
        view_.clicked(section - 1);
    pressed_ = -1;
}

} // namespace tvw::gui

/// The header of a tree: a switch for each flag column.
#pragma once

#include <QHeaderView>
#include <QIcon>

#include <functional>

namespace tvw::gui {

class Header : public QHeaderView
{
public:
    struct View
    {
        std::function<int(int flag)> state;
        std::function<QIcon(int flag, int state)> icon; ///< null: a check box
        std::function<void(int flag)> clicked;
    };
    Header(View view, QWidget* parent);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    [[nodiscard]] bool isOverEdge(const QPoint& position) const;

    View view_;
    int pressed_ = -1; ///< the section that was pressed; -1: none, or an edge
};

} // namespace tvw::gui

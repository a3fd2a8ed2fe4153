#pragma once

#include "gui/component/graph.h"
#include "gui/qt/qtcomponent.h"

#include <QWidget>

namespace tvw::gui::component::qt {

class Graph : public QtComponent<QWidget, component::Graph>
{
public:
    using QtComponent::QtComponent;

protected:
    void paintContent(QPaintEvent* event) override;

private:
    [[nodiscard]] QPointF toPixel(graph::GraphPoint point) const;
    void paintGrid(QPainter& painter) const;
    void paintAxes(QPainter& painter) const;
};

} // namespace tvw::gui::component::qt

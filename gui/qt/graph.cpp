#include "gui/qt/graph.h"

#include "gui/qt/color.h"

#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace tvw::gui::component::qt {

namespace {

constexpr double kGridLines = 10.0; ///< at most about as many in each direction

/// A round distance of grid lines: 1, 2 or 5 times a power of ten.
double gridStep(double extent)
{
    const double raw = std::abs(extent) / kGridLines;
    if (!(raw > 0.0) || !std::isfinite(raw))
        return 0.0;
    const double power = std::pow(10.0, std::floor(std::log10(raw)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (raw <= factor * power)
            return factor * power;
    }
    return 10.0 * power;
}

/// Calls line(value) for each multiple of the grid's step between the ends.
template <class Line>
void forEachGridLine(double from, double to, Line line)
{
    const double step = gridStep(to - from);
    const double low = std::min(from, to), high = std::max(from, to);
    if (step == 0.0 || low + step == low) // too far from 0 for the step to count
        return;
    const double first = std::ceil(low / step);
    for (double i = 0.0; i <= 2.0 * kGridLines && (first + i) * step <= high; i += 1.0)
        line((first + i) * step);
}

} // namespace

QPointF Graph::toPixel(graph::GraphPoint point) const
{
    const auto place = [](double value, double from, double to, int pixels) {
        return to == from ? 0.0 : (value - from) / (to - from) * std::max(pixels - 1, 1);
    };
    const graph::Boundary& b = fields_;
    return {place(point.x, b.left, b.right, width()), place(point.y, b.top, b.bottom, height())};
}

void Graph::paintGrid(QPainter& painter) const
{
    painter.setPen(QColor(200, 200, 200));
    forEachGridLine(fields_.left, fields_.right, [&](double x) {
        painter.drawLine(toPixel({x, fields_.top}), toPixel({x, fields_.bottom}));
    });
    forEachGridLine(fields_.top, fields_.bottom, [&](double y) {
        painter.drawLine(toPixel({fields_.left, y}), toPixel({fields_.right, y}));
    });
}

void Graph::paintAxes(QPainter& painter) const
{
    painter.setPen(QColor(50, 50, 50));
    painter.drawLine(toPixel({0.0, fields_.top}), toPixel({0.0, fields_.bottom}));
    painter.drawLine(toPixel({fields_.left, 0.0}), toPixel({fields_.right, 0.0}));
}

void Graph::paintContent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    paintGrid(painter);
    paintAxes(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t i = 0; i < curveCount(); ++i) {
        const graph::Curve& curve = *curveAt(i);
        QPolygonF line;
        for (const graph::GraphPoint& point : curve.points)
            line << toPixel(point);
        painter.setPen(toQColor(curve.color));
        painter.drawPolyline(line);
    }
}

} // namespace tvw::gui::component::qt

#include "gui/component/graph.h"

#include "gui/color_rows.h"
#include "util/factory.h"

#include <algorithm>

namespace tvw::gui::component {

using util::xml::Element;

namespace {

using B = graph::Boundary;
constexpr Row<B> kRows[] = {
    row<&B::left>("boundary_left"),
    row<&B::right>("boundary_right"),
    row<&B::top>("boundary_top"),
    row<&B::bottom>("boundary_bottom"),
};
constexpr Row<graph::GraphPoint> kPointRows[] = {
    row<&graph::GraphPoint::x>("x"),
    row<&graph::GraphPoint::y>("y"),
};

graph::Curve readCurve(const Element& element)
{
    graph::Curve curve;
    readAttributes<Color>(element, kColorRows, curve.color);
    for (const Element& child : element.children()) {
        if (child.name() == "point")
            readAttributes<graph::GraphPoint>(child, kPointRows, curve.points.emplace_back());
    }
    return curve;
}

Element written(const graph::Curve& curve)
{
    util::xml::Tag element("curve");
    writeAttributes<Color>(element, kColorRows, curve.color);
    for (const graph::GraphPoint& point : curve.points) {
        util::xml::Tag child("point");
        writeAttributes<graph::GraphPoint>(child, kPointRows, point);
        element.addChild(child);
    }
    return element;
}

} // namespace

Graph::Graph(const Element& element) : FieldComponent(kKind, kRows, element)
{
    for (const Element& child : element.children()) {
        if (child.name() == "curve")
            curves_.push_back(readCurve(child));
    }
}

void Graph::writeXml(Element& element) const
{
    FieldComponent::writeXml(element);
    for (const graph::Curve& curve : curves_)
        element.addChild(written(curve));
}

graph::Curve* Graph::curveAt(std::size_t index)
{
    return index < curves_.size() ? &curves_[index] : nullptr;
}

const graph::Curve* Graph::curveAt(std::size_t index) const
{
    return index < curves_.size() ? &curves_[index] : nullptr;
}

void Graph::addCurve(const graph::Curve& curve)
{
    curves_.push_back(curve);
    repaint();
}

void Graph::removeCurve(std::size_t index)
{
    if (index >= curves_.size())
        return;
    curves_.erase(curves_.begin() + static_cast<std::ptrdiff_t>(index));
    repaint();
}

void Graph::clear()
{
    curves_.clear();
    repaint();
}

void Graph::setBoundary(const graph::Boundary& boundary)
{
    fields_ = boundary;
    repaint();
}

graph::GraphPoint Graph::pointAt(Point pixel) const
{
    const double width = std::max(size().width - 1, 1), height = std::max(size().height - 1, 1);
    return {fields_.left + (fields_.right - fields_.left) * pixel.x / width,
            fields_.top + (fields_.bottom - fields_.top) * pixel.y / height};
}

Component* Graph::clone() const
{
    Element element;
    writeXml(element);
    return AbstractFactory<Component>::instance().create(element);
}

} // namespace tvw::gui::component

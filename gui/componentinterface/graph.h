/// Curves over axes.
#pragma once

#include "gui/componentinterface/interface.h"

#include <memory>
#include <vector>

namespace tvw::gui {

namespace graph {

/// The part of the plane that fills the component, in the curves' units. A side may be the larger
/// one: the axis then runs the other way.
struct Boundary
{
    double left = -1.0, right = 1.0, top = 1.0, bottom = -1.0;
    bool operator==(const Boundary&) const = default;
};

struct GraphPoint
{
    double x = 0.0, y = 0.0;
    bool operator==(const GraphPoint&) const = default;
};

struct Curve
{
    Color color;
    std::vector<GraphPoint> points;
    bool operator==(const Curve&) const = default;
};

} // namespace graph

namespace componentinterface {

class Graph : public Interface
{
public:
    static constexpr const char* kTag = "graph";

    [[nodiscard]] virtual std::size_t curveCount() const = 0;
    /// Null if there is none; valid until curves are added or removed. update() shows what changed.
    [[nodiscard]] virtual graph::Curve* curveAt(std::size_t index) = 0;
    [[nodiscard]] virtual const graph::Curve* curveAt(std::size_t index) const = 0;
    virtual void addCurve(const graph::Curve& curve) = 0;
    virtual void removeCurve(std::size_t index) = 0;
    virtual void clear() = 0;
    virtual void update() = 0; ///< repaints
    virtual void setBoundary(const graph::Boundary& boundary) = 0;
    [[nodiscard]] virtual graph::Boundary boundary() const = 0;
    /// The point in the curves' units under a pixel of the component.
    [[nodiscard]] virtual graph::GraphPoint pointAt(Point pixel) const = 0;
    /// A component of its own with the same content; the caller owns it.
    [[nodiscard]] virtual Component* clone() const = 0;
};

} // namespace componentinterface

[[nodiscard]] inline componentinterface::Graph* toGraph(Component* component)
{
    return toKind<componentinterface::Graph>(component);
}

} // namespace tvw::gui

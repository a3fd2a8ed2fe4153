#pragma once

#include "gui/componentinterface/graph.h"
#include "gui/stdcomponent.h"

namespace tvw::gui::component {

class Graph : public FieldComponent<componentinterface::Graph, graph::Boundary>
{
public:
    static constexpr KindInfo kKind{kTag, {17088, 17152}};

    explicit Graph(const util::xml::Element& element);

    void writeXml(util::xml::Element& element) const override;
    std::size_t curveCount() const override { return curves_.size(); }
    graph::Curve* curveAt(std::size_t index) override;
    const graph::Curve* curveAt(std::size_t index) const override;
    void addCurve(const graph::Curve& curve) override;
    void removeCurve(std::size_t index) override;
    void clear() override;
    void update() override { repaint(); }
    void setBoundary(const graph::Boundary& boundary) override;
    graph::Boundary boundary() const override { return fields_; }
    graph::GraphPoint pointAt(Point pixel) const override;
    Component* clone() const override;

private:
    std::vector<graph::Curve> curves_;
};

} // namespace tvw::gui::component

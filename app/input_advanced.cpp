#include "app/input_advanced.h"

#include "gui/componentinterface/dialog.h"
#include "gui/componentinterface/graph.h"
#include "gui/componentinterface/spinner.h"
#include "gui/message_ids.h"
#include "unidevice/property.h"

#include <algorithm>
#include <cmath>

namespace tvw::rgs::app {

namespace ci = gui::componentinterface;
using unidevice::Property;

namespace {

enum Id { kWindow = 100, kGraph = 221, kClose = 222 };

struct Field
{
    int spinner;
    double Property::*number;
};
constexpr Field kFields[] = {{217, &Property::multiplier},
                             {218, &Property::exponent},
                             {219, &Property::deadzone},
                             {220, &Property::offset}};

constexpr gui::Color kCurve{30, 30, 230, 255};
constexpr gui::Color kLive{220, 60, 40, 255};
constexpr double kMark = 0.04; ///< half the size of the mark, of half the graph
constexpr int kPixels = 3;     ///< from point to point of the curve

/// The same numbers on a control of its own, so that the curve is what the tool will read.
class Probe
{
public:
    explicit Probe(const Property& property)
        : property_(property.name(), property.kindMask()),
          control_(nullptr, unidevice::kind::any, 0.0)
    {
        for (const Field& field : kFields)
            property_.*field.number = property.*field.number;
        property_.bind(&control_);
    }
    double operator()(double raw)
    {
        control_.current = raw;
        return property_.value();
    }

private:
    Property property_;
    unidevice::Control control_;
};

gui::graph::Boundary boundaryOf(const Property& property)
{
    const double reach = std::abs(property.multiplier);
    return {.left = -1.0,
            .right = 1.0,
            .top = std::max(property.offset + reach, 1.0),
            .bottom = std::min(property.offset - reach, -1.0)};
}

/// Without the points that are no number, as at a dead zone of 1; held to what can be drawn.
gui::graph::Curve curveOf(const Property& property, const gui::graph::Boundary& boundary, int width)
{
    Probe probe(property);
    gui::graph::Curve curve{kCurve, {}};
    const int steps = std::max(width / kPixels, 2);
    const double room = boundary.top - boundary.bottom;
    for (int i = 0; i <= steps; ++i) {
        const double x = -1.0 + 2.0 * i / steps;
        const double y = probe(x);
        if (!std::isnan(y))
            curve.points.push_back({x, std::clamp(y, boundary.bottom - room, boundary.top + room)});
    }
    return curve;
}

} // namespace

AdvancedInput::AdvancedInput(Property& property) : WindowBase("AdvancedInput"), property_(property)
{
}

void AdvancedInput::open(gui::Component& over)
{
    if (!root() && !build("rgs_inputs_advanced"))
        return;
    root()->setLabel(property_.name() + " - Advanced");
    listen({kWindow, kGraph, kClose});
    for (const Field& field : kFields)
        listen({field.spinner});
    showNumbers();
    if (auto* const dialog = gui::toDialog(root()))
        dialog->showModal();
    placeOver(over);
    drawCurve();
}

void AdvancedInput::close()
{
    if (auto* const dialog = gui::toDialog(root()); dialog && isShown())
        dialog->endModal();
}

void AdvancedInput::showNumbers()
{
    isFilling_ = true;
    for (const Field& field : kFields) {
        if (auto* const spinner = as<ci::Spinner>(field.spinner))
            spinner->setValue(property_.*field.number);
    }
    isFilling_ = false;
    drawCurve();
}

void AdvancedInput::drawCurve()
{
    auto* const graph = as<ci::Graph>(kGraph);
    if (!graph)
        return;
    graph->clear();
    graph->setBoundary(boundaryOf(property_));
    graph->addCurve(curveOf(property_, graph->boundary(), find(kGraph)->size().width));
    graph->addCurve({kLive, {}});
    showLive();
}

void AdvancedInput::showLive()
{
    auto* const graph = as<ci::Graph>(kGraph);
    gui::graph::Curve* const mark = graph ? graph->curveAt(1) : nullptr;
    const double x = property_.raw();
    const double y = property_.value();
    if (!mark || !std::isfinite(y))
        return;
    const double dx = kMark;
    const double dy = kMark * (graph->boundary().top - graph->boundary().bottom) / 2.0;
    std::vector<gui::graph::GraphPoint> points = {
        {x - dx, y}, {x, y + dy}, {x + dx, y}, {x, y - dy}, {x - dx, y}};
    if (mark->points == points)
        return;
    mark->points = std::move(points);
    graph->update();
}

void AdvancedInput::handle(gui::Component& component, Message& message)
{
    const int id = component.id();
    if (id == kWindow &&
        (message.id == gui::message::windowActive || message.id == gui::message::windowInactive))
        handleWindowKeys(message);
    else if (id == kGraph && message.id == gui::message::resized)
        drawCurve();
    else if (id == kClose && message.id == gui::message::buttonClicked)
        close();
    if (isFilling_ || message.id != gui::message::spinnerChanged)
        return;
    for (const Field& field : kFields) {
        if (field.spinner != id)
            continue;
        property_.*field.number = as<ci::Spinner>(id)->value();
        drawCurve();
    }
}

} // namespace tvw::rgs::app

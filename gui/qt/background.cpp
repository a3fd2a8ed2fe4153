#include "gui/qt/background.h"

#include "gui/component.h"
#include "gui/qt/color.h"
#include "gui/qt/widget_events.h"

#include <QLinearGradient>
#include <QPainter>
#include <QWidget>

namespace tvw::gui::background::qt {

namespace {

void fill(Component& component, const QBrush& brush)
{
    if (component.widget() == nullptr)
        return;
    QWidget& area = paintArea(*component.widget());
    QPainter painter(&area);
    painter.fillRect(area.rect(), brush);
}

QGradient::Spread spreadOf(const std::string& name)
{
    if (name == "repeat")
        return QGradient::RepeatSpread;
    return name == "mirror" ? QGradient::ReflectSpread : QGradient::PadSpread;
}

} // namespace

void ColorFill::paint(Component& component) const
{
    fill(component, toQColor(color()));
}

void LinearGradient::paint(Component& component) const
{
    const GradientFields& form = fields();
    QLinearGradient gradient(form.startX, form.startY, form.endX, form.endY);
    gradient.setSpread(spreadOf(form.spread));
    if (form.coordinates != "absolute")
        gradient.setCoordinateMode(QGradient::ObjectMode);
    for (const GradientStop& stop : stops())
        gradient.setColorAt(std::clamp(stop.position, 0.0, 1.0), toQColor(stop.color));
    fill(component, gradient);
}

} // namespace tvw::gui::background::qt

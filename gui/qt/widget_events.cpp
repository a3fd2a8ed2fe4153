#include "gui/qt/widget_events.h"

#include "gui/message_ids.h"
#include "gui/qt/popup_menu.h"

#include <QAbstractScrollArea>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWidget>

#include <algorithm>

namespace tvw::gui {

namespace {

void showTooltipLine(Component& component, const std::string& text)
{
    if (Component* const line = tooltipLabel(component))
        line->setLabel(text);
}

} // namespace

bool handleCommonEvent(StdComponent& component, QWidget& widget, QEvent& event)
{
    switch (event.type()) {
    case QEvent::FocusIn:
        component.notify(message::focusGained);
        return false;
    case QEvent::FocusOut:
        component.notify(message::focusLost);
        return false;
    case QEvent::Enter:
        showTooltipLine(component, component.tooltip());
        component.notify(message::mouseEntered);
        widget.update();
        return false;
    case QEvent::Leave:
        component.notify(message::mouseLeft);
        showTooltipLine(component, {});
        widget.update();
        return false;
    case QEvent::ContextMenu: // the widget's own menu would come ahead of ours
        return component.effectivePopup().childCount() > 0;
    default:
        return handlePopup(component, widget, event);
    }
}

bool handlePopup(StdComponent& component, QWidget& widget, QEvent& event)
{
    if (event.type() != QEvent::MouseButtonRelease ||
        static_cast<QMouseEvent&>(event).button() != Qt::RightButton)
        return false;
    const util::xml::Element popup = component.effectivePopup();
    if (popup.childCount() == 0)
        return false;
    if (const std::optional<int> chosen = runPopupMenu(popup, widget))
        component.notify(message::popupChosen, static_cast<std::uint32_t>(*chosen));
    return true;
}

bool isUndoKey(const QKeyEvent& event)
{
    const auto relevant =
        event.modifiers() & (Qt::ControlModifier | Qt::ShiftModifier | Qt::AltModifier);
    return relevant == Qt::ControlModifier &&
           (event.key() == Qt::Key_Z || event.key() == Qt::Key_Y);
}

bool takeKey(StdComponent& component, QKeyEvent& event, std::uint32_t id, bool passUndoKeysOn)
{
    const KeyStroke stroke{event.key(), static_cast<std::uint32_t>(event.modifiers()),
                           event.isAutoRepeat()};
    Message message(id, static_cast<std::uint32_t>(event.key()),
                    static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&stroke)));
    component.originate(message);
    if (!message.attachments.empty()) {
        event.accept();
        return true;
    }
    if (passUndoKeysOn && isUndoKey(event)) {
        event.ignore();
        return true;
    }
    return false;
}

QWidget& paintArea(QWidget& widget)
{
    auto* const area = qobject_cast<QAbstractScrollArea*>(&widget);
    return area ? *area->viewport() : widget;
}

void paintBackground(StdComponent& component)
{
    if (component.background() != nullptr)
        component.background()->paint(component);
}

void paintHighlight(const StdComponent& component, QWidget& widget, const QPaintEvent& event)
{
    if (!component.isHighlighted())
        return;
    QPainter painter(&paintArea(widget));
    painter.setOpacity(0.3);
    painter.fillRect(event.rect(), QColor(100, 100, 255, 255));
}

void applyLimitsTo(const Component& component, QWidget& widget)
{
    const auto held = [](Size size) {
        return QSize(std::clamp(size.width, 0, kWidgetLimit),
                     std::clamp(size.height, 0, kWidgetLimit));
    };
    widget.setMinimumSize(held(component.minSize()));
    widget.setMaximumSize(held(component.maxSize()));
    widget.updateGeometry();
}

} // namespace tvw::gui

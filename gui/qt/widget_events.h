/// What every widget does with events and paints beside its own kind, told once.
#pragma once

#include "gui/stdcomponent.h"

class QEvent;
class QKeyEvent;
class QPaintEvent;
class QWidget;

namespace tvw::gui {

/// Focus, the mouse that comes and goes with the tooltip line, and the right-click menu. True if
/// the event is dealt with, so that the widget's own class must not see it.
bool handleCommonEvent(StdComponent& component, QWidget& widget, QEvent& event);
/// The menu of a right mouse button release, if that is what the event is.
bool handlePopup(StdComponent& component, QWidget& widget, QEvent& event);

/// Z or Y with Ctrl alone among Ctrl, Shift and Alt.
bool isUndoKey(const QKeyEvent& event);
/// Tells the listeners of a key. True if the widget's own class must not see it: a listener has
/// swallowed it, or it is an undo key that goes on to the dialog.
bool takeKey(StdComponent& component, QKeyEvent& event, std::uint32_t message, bool passUndoKeysOn);

/// The widget that paint events of a widget are about: of a scroll area its viewport.
QWidget& paintArea(QWidget& widget);
void paintBackground(StdComponent& component);
void paintHighlight(const StdComponent& component, QWidget& widget, const QPaintEvent& event);

/// The limits of the component, within what a widget takes.
void applyLimitsTo(const Component& component, QWidget& widget);

} // namespace tvw::gui

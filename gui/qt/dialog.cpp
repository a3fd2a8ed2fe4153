#include "gui/qt/dialog.h"

#include "gui/qt/pixmap.h"

#include <QCoreApplication>
#include <QPointer>

#include <algorithm>
#include <vector>

namespace tvw::gui::component::qt {

namespace {

/// What tells a dialog that its window has come to the front or left it.
class ActivationEvent : public QEvent
{
public:
    explicit ActivationEvent(bool deactivated) : QEvent(kind()), deactivated_(deactivated) {}

    static QEvent::Type kind()
    {
        static const auto number = static_cast<QEvent::Type>(registerEventType());
        return number;
    }
    [[nodiscard]] bool deactivated() const { return deactivated_; }

private:
    bool deactivated_;
};

void collectTabStops(const Component& component, std::vector<Component*>& found)
{
    for (Component* const child : component.children()) {
        if (child->tabStop() >= 0 && child->widget() != nullptr)
            found.push_back(child);
        collectTabStops(*child, found);
    }
}

} // namespace

Dialog::Dialog(const util::xml::Element& element)
    : QtContainer(element, nullptr, Qt::CustomizeWindowHint)
{
    setFocusPolicy(Qt::StrongFocus);
    setWindowFlags(wantedFlags());
    Dialog::applyLabel();
}

Qt::WindowFlags Dialog::wantedFlags() const
{
    Qt::WindowFlags flags = Qt::Dialog | Qt::CustomizeWindowHint;
    if (fields_.titlebar)
        flags |= Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    else
        flags |= Qt::FramelessWindowHint;
    if (fields_.closeButton)
        flags |= Qt::WindowCloseButtonHint;
    if (fields_.minimizeButton)
        flags |= Qt::WindowMinimizeButtonHint;
    if (fields_.maximizeButton)
        flags |= Qt::WindowMaximizeButtonHint;
    if (fields_.topmost)
        flags |= Qt::WindowStaysOnTopHint;
    return flags;
}

void Dialog::applyWindowFlags()
{
    if (windowFlags() == wantedFlags())
        return;
    const bool isUp = QDialog::isVisible();
    setWindowFlags(wantedFlags());
    if (isUp)
        QWidget::show();
}

void Dialog::applyLabel()
{
    setWindowTitle(QString::fromStdString(label()));
}

void Dialog::build()
{
    QtContainer::build();
    if (!fields_.icon.empty())
        setWindowIcon(loadIcon(expandVariables(fields_.icon)));
    if (fields_.modal)
        setWindowModality(Qt::ApplicationModal);
}

void Dialog::applyVisible(bool value)
{
    if (value && !QDialog::isVisible()) {
        orderTabStops();
        restoreOrSize();
    }
    QtContainer::applyVisible(value);
}

void Dialog::restoreOrSize()
{
    if (geometry_.isEmpty()) {
        const Size present = component::Dialog::size();
        if (present.width == 0 || present.height == 0) {
            setMinimumSize(1, 1);
            resize(100, 100);
        }
    } else {
        restoreGeometry(geometry_);
    }
}

void Dialog::orderTabStops()
{
    std::vector<Component*> stops;
    collectTabStops(*this, stops);
    std::stable_sort(stops.begin(), stops.end(), [](const Component* a, const Component* b) {
        return a->tabStop() < b->tabStop();
    });
    for (std::size_t i = 1; i < stops.size(); ++i)
        setTabOrder(stops[i - 1]->widget(), stops[i]->widget());
}

void Dialog::rememberGeometry()
{
    if (QDialog::isVisible())
        geometry_ = saveGeometry();
}

void Dialog::hide()
{
    rememberGeometry();
    component::Dialog::hide();
}

int Dialog::exec()
{
    if (waits_)
        return 0;
    modal_ = true;
    waits_ = true;
    closed_ = false;
    setWindowModality(Qt::ApplicationModal);
    component::Dialog::show();
    shownModally();
    setTopmost(true);
    const QPointer<QDialog> alive(this);
    notify(message::modalShown);
    if (!alive)
        return 0;
    if (!closed_) // a listener may have closed it at once
        QDialog::exec();
    if (!alive)
        return 0;
    waits_ = false;
    modal_ = false;
    setWindowModality(fields_.modal ? Qt::ApplicationModal : Qt::NonModal);
    if (isShown())
        hide();
    return result();
}

void Dialog::close(int code)
{
    done(code);
}

void Dialog::done(int code)
{
    rememberGeometry();
    closed_ = true;
    QDialog::done(code);
    if (waits_)
        return; // exec goes on from here
    if (modal_)
        endModal();
    else if (isShown())
        hide();
}

void Dialog::showModal()
{
    setModal(true);
    component::Dialog::showModal();
    if (modal_) // no listener has closed it at once
        QWidget::show();
}

void Dialog::endModal()
{
    component::Dialog::endModal();
    setModal(false); // only then: hidden as an ordinary window it would go on blocking the others
}

void Dialog::processEvents()
{
    QCoreApplication::processEvents();
}

void Dialog::activate()
{
    if (QDialog::isMinimized())
        showNormal();
    raise();
    activateWindow();
}

bool Dialog::event(QEvent* event)
{
    if (event->type() == ActivationEvent::kind()) {
        const bool left = static_cast<ActivationEvent*>(event)->deactivated();
        notify(left ? message::windowInactive : message::windowActive);
        return true;
    }
    const bool handled = QtContainer::event(event);
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate) {
        ActivationEvent told(event->type() == QEvent::WindowDeactivate);
        QCoreApplication::sendEvent(this, &told);
    }
    return handled;
}

void Dialog::keyPressEvent(QKeyEvent* event)
{
    // Qt closes any dialog by Escape; a window that the user works in would go by accident.
    const bool wouldClose = event->key() == Qt::Key_Escape && !modal_;
    heldUndoKey_ = isUndoKey(*event) ? event->key() : 0;
    if (wouldClose)
        takeKey(*this, *event, message::keyPressed, false);
    else
        QtContainer::keyPressEvent(event);
}

void Dialog::keyReleaseEvent(QKeyEvent* event)
{
    // Whoever lets Ctrl go first means the same.
    if (isUndoKey(*event) || (heldUndoKey_ != 0 && event->key() == heldUndoKey_)) {
        heldUndoKey_ = 0;
        notify(event->key() == Qt::Key_Z ? message::undoKey : message::redoKey);
        event->accept();
    }
    QtContainer::keyReleaseEvent(event);
}

} // namespace tvw::gui::component::qt

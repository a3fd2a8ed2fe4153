#include "app/resimulate_window.h"

#include "core/adaptor.h"
#include "core/core_implementation.h"
#include "gui/componentinterface/checkbox.h"
#include "gui/componentinterface/dialog.h"
#include "gui/message_ids.h"

#include <QProgressBar>

#include <cmath>
#include <sstream>

namespace tvw::rgs::app {

namespace ci = gui::componentinterface;
using core::CoreImplementation;

namespace {

enum Id {
    kWindow = 98,
    kStop = 99,
    kBar = 100,
    kSpan = 101,
    kDone = 102,
    kLeft = 103,
    kFrame = 104,
    kRedraw = 112,
    kRedrawLabel = 113
};

constexpr std::int32_t kTimer = 1;
constexpr double kInterval = 0.01;          // [s], between slices
constexpr std::int64_t kSlice = 500;        // [ms] of work, then the windows get their turn
constexpr std::int64_t kRedrawPause = 2000; // [ms]

std::string textOf(float number)
{
    std::ostringstream out;
    out << number;
    return out.str();
}

core::RecordManager& records()
{
    return CoreImplementation::instance().records();
}

} // namespace

ResimulateWindow::ResimulateWindow() : WindowBase("ResimulateWindow") {}

ResimulateWindow::~ResimulateWindow()
{
    if (CoreImplementation::exists())
        records().clock().killTimer(*this, kTimer);
}

void ResimulateWindow::opened(const core::ResimulationProgress& progress)
{
    if (!root() && !build("rgs_resimulate"))
        return;
    listen({kWindow, kStop, kRedraw});
    core::AdaptorInterface& host = *core::adaptor();
    const core::Settings settings = CoreImplementation::instance().getSettings();
    updateViewport_ = settings.updateViewport && host.canRedrawInResimulation();
    if (auto* const box = as<ci::CheckBox>(kRedraw))
        box->setValue(updateViewport_);
    for (const int part : {kRedraw, kRedrawLabel}) {
        if (gui::Component* const component = find(part))
            component->setEnabled(host.canRedrawInResimulation(), false);
    }
    if (auto* const dialog = gui::toDialog(root()))
        dialog->setTopmost(settings.alwaysOnTop);
    core::Clock& clock = records().clock();
    lastRedraw_ = lastText_ = clock.elapsedMs();
    lastFrame_ = static_cast<float>(host.getFramesPerSecond() * progress.start);
    show();
    showTexts();
    clock.startTimer(*this, kTimer, kInterval);
}

void ResimulateWindow::closed()
{
    records().clock().killTimer(*this, kTimer);
    hide();
}

void ResimulateWindow::onTimer(std::int32_t, std::int64_t)
{
    if (!records().isResimulating())
        return;
    if (records().resimulateSlice(kSlice))
        return; // it is over, and this window closed
    showTexts();
    redrawIfDue();
}

void ResimulateWindow::redrawIfDue()
{
    const std::int64_t now = records().clock().elapsedMs();
    if (!updateViewport_ || now - lastRedraw_ < kRedrawPause)
        return;
    lastRedraw_ = now;
    core::adaptor()->setTime(records().progress().time);
}

void ResimulateWindow::showTexts()
{
    const core::ResimulationProgress& progress = records().progress();
    const double rate = core::adaptor()->getFramesPerSecond();
    const auto first = static_cast<float>(rate * progress.start);
    const auto last = static_cast<float>(rate * progress.end);
    const auto present = static_cast<float>(rate * progress.time);
    const std::int64_t now = records().clock().elapsedMs();
    const double elapsed = static_cast<double>(now - lastText_) / 1000.0;
    const int done = static_cast<int>(present - lastFrame_);
    if (done != 0) {
        lastFrame_ = present;
        lastText_ = now;
        const int remaining =
            static_cast<int>(static_cast<double>(last - present) / done * elapsed);
        const std::string left = std::to_string(remaining / 60) + " minutes and " +
                                 std::to_string(remaining % 60) + " seconds";
        const int percent = static_cast<int>(std::ceil(progress.fraction * 100.0));
        setText(kWindow, std::to_string(percent) + "% - " + left);
        setText(kLeft, left + ".");
    }
    setText(kDone, textOf(present - 1.0F - first) + " out of " + textOf(last - first) + " frames.");
    setText(kSpan, "Resimulating frame " + textOf(first) + " to " + textOf(last) + "...");
    setText(kFrame, "Current frame: " + textOf(present - 1.0F));
    if (gui::Component* const bar = find(kBar)) {
        if (auto* const widget = dynamic_cast<QProgressBar*>(bar->widget()))
            widget->setValue(static_cast<int>(std::lround(progress.fraction * 100.0)));
    }
}

void ResimulateWindow::handle(gui::Component& component, Message& message)
{
    switch (component.id()) {
    case kWindow:
        handleWindowKeys(message);
        break;
    case kStop:
        if (message.id == gui::message::buttonClicked)
            records().finishResimulation();
        break;
    case kRedraw:
        if (message.id == gui::message::checkChanged)
            chooseRedraw(as<ci::CheckBox>(kRedraw)->value());
        break;
    default:
        break;
    }
}

void ResimulateWindow::chooseRedraw(bool on)
{
    updateViewport_ = on;
    core::SettingsStore& store = CoreImplementation::instance().settings();
    core::Settings settings = store.get();
    settings.updateViewport = on;
    (void)store.set(settings); // a folder that can't be written loses the choice, not the run
}

} // namespace tvw::rgs::app

/// A resimulation at work: how far it has come, how long it will take, and Stop.
#pragma once

#include "app/window_base.h"
#include "core/record_manager.h"

namespace tvw::rgs::app {

class ResimulateWindow final : public WindowBase,
                               public core::ResimulationView,
                               private core::TimerTarget
{
public:
    ResimulateWindow();
    ~ResimulateWindow() override;

    void opened(const core::ResimulationProgress& progress) override;
    void closed() override;

private:
    void handle(gui::Component& component, Message& message) override;
    void onTimer(std::int32_t id, std::int64_t elapsedMs) override;
    void chooseRedraw(bool on);
    void showTexts();
    void redrawIfDue();

    bool updateViewport_ = false;
    std::int64_t lastRedraw_ = 0; ///< [ms]
    std::int64_t lastText_ = 0;   ///< [ms]
    float lastFrame_ = 0.0F;
};

} // namespace tvw::rgs::app

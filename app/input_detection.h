/// "Press now!": finds the control that the user moves.
#pragma once

#include "app/input_binding.h"
#include "app/window_base.h"
#include "core/timer.h"

#include <functional>

namespace tvw::rgs::app {

/// One detection for one input. It ends by itself when a run begins, which owns the devices.
class InputDetection final : public WindowBase, private core::TimerTarget
{
public:
    /// positive: the control was moved towards larger values.
    using Accepted = std::function<void(unidevice::Control& control, bool positive)>;

    InputDetection(const unidevice::Property& property, Accepted accepted);
    ~InputDetection() override;

    /// Shows it, modally, over the middle of another window, and listens.
    void open(gui::Component& over);
    void cancel();
    [[nodiscard]] bool isOpen() const { return isShown(); }

private:
    enum class State { Idle, First, ConfirmFirst, Second, ConfirmBoth };

    void handle(gui::Component& component, Message& message) override;
    void onTimer(std::int32_t id, std::int64_t elapsedMs) override;

    void showTexts(const std::string& prompt, const std::string& control);
    void fitHeight();
    void listenForFirst();
    void firstFound();
    void listenForSecond();
    void secondFound();
    void retry();
    void accept();
    void finish();
    void stopTimers();
    void close();
    [[nodiscard]] bool swallows(const Message& key) const;

    const unidevice::Property& property_;
    Accepted accepted_;
    State state_ = State::Idle;
    HeldControls first_; ///< or both as one, once both are found
    HeldControls second_;
    HeldControls excluded_;
    bool positive_ = true;
};

} // namespace tvw::rgs::app

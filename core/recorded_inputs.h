/// The raw input of a tool's take, and the controls that play it back.
#pragma once

#include "core/contract/interface.h"
#include "unidevice/property_handler.h"
#include "util/avar.h"

#include <memory>
#include <vector>

namespace tvw::rgs::core {

/// One time line for each input, by the input's place: the value of the bound control at each frame,
/// before the input's own pipeline, 0 with none bound. Beside it one for the values at the starts of
/// takes: a take that begins in the middle of another starts from its own input, but the frame at that
/// time is still the older take's. Times are seconds.
class RecordedInputs
{
public:
    using Lines = std::vector<AVar_Linear<double>>;

    // Recording.

    /// Keeps what lies up to `time`; the values of the controls now are those of the start.
    void startRecording(double time, unidevice::PropertyHandler& inputs, CInterface& runtime);
    void record(double time, const unidevice::PropertyHandler& inputs);

    // Playing back.

    /// Binds the inputs to controls of our own, which hold the values with which a take began at `time`,
    /// else those of the frame.
    void startReplay(double time, unidevice::PropertyHandler& inputs);
    void replay(double time);
    void endReplay(unidevice::PropertyHandler& inputs); ///< the real controls are bound again

    const Lines& lines() const { return lines_; }
    Lines& lines() { return lines_; }
    const Lines& starts() const { return starts_; }
    Lines& starts() { return starts_; }

    /// Times of the first and last record of any line; false when there is none.
    bool extent(double& first, double& last) const;

private:
    /// A real control that waits for the end of the replay; null once its device has gone.
    class Waiting final : public unidevice::ControlTarget
    {
    public:
        Waiting() = default;
        ~Waiting() { hold(nullptr); }
        Waiting(const Waiting&) = delete;
        Waiting& operator=(const Waiting&) = delete;
        void hold(unidevice::Control* control);
        unidevice::Control* control() const { return control_; }
        void controlDeleted(unidevice::Control* control) override;

    private:
        unidevice::Control* control_ = nullptr;
    };

    void growTo(int count);

    Lines lines_;
    Lines starts_;
    std::vector<std::unique_ptr<unidevice::Control>> temporary_;
    std::vector<std::unique_ptr<Waiting>> waiting_; ///< one for each of ours
};

} // namespace tvw::rgs::core

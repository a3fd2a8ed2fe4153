/// The raw input of a tool's take, and the controls that play it back.
#pragma once

#include "core/contract/interface.h"
#include "unidevice/property_handler.h"
#include "util/avar.h"

#include <memory>
#include <vector>

namespace tvw::rgs::core {

/// One time line for each input, by the input's place: the value of the bound control at each frame,
/// before the input's own pipeline, 0 with none bound. Times are seconds.
class RecordedInputs
{
public:
    using Lines = std::vector<AVar_Linear<double>>;

    // Recording.

    /// Keeps what lies before `time`; the values of the controls now are those at `time`.
    void startRecording(double time, unidevice::PropertyHandler& inputs, CInterface& runtime);
    void record(double time, const unidevice::PropertyHandler& inputs);

    // Playing back.

    /// Binds the inputs to controls of our own, which hold the values at `time`.
    void startReplay(double time, unidevice::PropertyHandler& inputs);
    void replay(double time);
    void endReplay(unidevice::PropertyHandler& inputs); ///< the real controls are bound again

    const Lines& lines() const { return lines_; }
    Lines& lines() { return lines_; }

    /// Times of the first and last record of any line; false when there is none.
    bool extent(double& first, double& last) const;

private:
    void growTo(int count);
    void swapControls(unidevice::PropertyHandler& inputs);

    Lines lines_;
    std::vector<std::unique_ptr<unidevice::Control>> temporary_;
    std::vector<unidevice::Control*> bound_; ///< while replaying the real controls, else ours
};

} // namespace tvw::rgs::core

/// The raw input of a tool's take, and the controls that play it back.
#pragma once

#include "core/contract/interface.h"
#include "unidevice/property_handler.h"
#include "util/avar.h"
#include "util/recent_rows.h"

#include <array>
#include <deque>
#include <span>
#include <vector>

namespace tvw::rgs::core {

/// One time line for each input, by the input's place: the value of the bound control at each
/// frame, before the input's own pipeline, 0 with none bound. Beside it one for the values at the
/// starts of takes: a take that begins in the middle of another starts from its own input, but the
/// frame at that time is still the older take's. Times are seconds.
///
/// A frame visits none of the lines: what it records waits in rows, and what it plays back was read
/// a number of frames ahead.
class RecordedInputs
{
public:
    using Lines = std::vector<AVar_Linear<double>>;

    // Recording.

    /// Keeps what lies up to `time`; the values of the controls now are those of the start.
    void startRecording(double time, unidevice::PropertyHandler& inputs, CInterface& runtime);
    void record(double time, const unidevice::PropertyHandler& inputs);
    void endRecording() { takeRows(); }

    /// What was recorded last, by the inputs' places.
    std::span<const double> newest() const { return raw_; }

    // Playing back.

    /// Binds the inputs to controls of our own, which hold the values with which a take began at
    /// `time`, else those of the frame. step: of the frames to come, whose times are multiples of
    /// it.
    void startReplay(double time, double step, unidevice::PropertyHandler& inputs);
    void replay(double time);
    void endReplay(unidevice::PropertyHandler& inputs); ///< the real controls are bound again

    /// With all that was recorded. Ask for them each time: they don't keep up by themselves.
    const Lines& lines() const
    {
        takeRows();
        return lines_;
    }
    Lines& lines()
    {
        takeRows();
        return lines_;
    }
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

    static constexpr std::size_t kAhead = 32; ///< frames

    void growTo(int count);
    void takeRows() const;
    void lookAhead(double time);

    mutable Lines lines_; ///< with the rows, their value
    mutable RecentRows rows_;
    std::size_t firstPlace_ = 0; ///< in a row
    std::vector<double> raw_;    ///< of the present frame, the rows' variables
    Lines starts_;

    std::vector<std::size_t>
        moving_;                 ///< of the present replay: lines that are not one value throughout
    std::vector<double> coming_; ///< their values, frame after frame
    std::array<double, kAhead> comingTimes_{};
    std::size_t next_ = kAhead; ///< of these
    double step_ = 0.0;         ///< [s]
    std::deque<unidevice::Control> temporary_;
    std::deque<Waiting> waiting_; ///< one for each of ours
};

} // namespace tvw::rgs::core

/// Moves a node back and forth along the Y axis of a reference node, and gives the same value as an
/// output. The phase is that of the scene's time, so it does not depend on where a run starts.
#pragma once

#include "plugins/common/scrubbed_parameter.h"
#include "plugins/release/sinusoid/sinusoid_items.h"

namespace tvw::rgs::addon {

class CSinusoidObject final : public Tool<sinusoid::Settings>
{
public:
    explicit CSinusoidObject(const CreateParam& param);

private:
    void settleParameters() override;
    void runStarts(double time) override;
    void step(double time) override;
    void timeMoved(double time) override;
    double outputValue(std::size_t index) override;
    void itemActed(std::string_view label) override;

    /// The wave at a time [s] with these filtered values.
    double wave(double amplitude, double frequency, double time) const;

    /// The wave at a time [s]: as it was recorded, and behind the recording as it would go on.
    double valueAt(double time) const;

    void moveNode(double value, double time);

    double amplitude_ = 1.0; ///< filtered
    double frequency_ = 1.0; ///< filtered [rad/s]
    Recorded<AVar_Linear<double>>* amplitudes_ = nullptr;
    Recorded<AVar_Linear<double>>* frequencies_ = nullptr;
    ScrubbedParameter wantedAmplitude_{settings.userAmplitude};
    ScrubbedParameter wantedFrequency_{settings.userFrequency};
};

} // namespace tvw::rgs::addon

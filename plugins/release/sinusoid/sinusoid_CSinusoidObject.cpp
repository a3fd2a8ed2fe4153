#include "plugins/release/sinusoid/sinusoid_CSinusoidObject.h"

#include "util/filters.h"

#include <cmath>

namespace tvw::rgs::addon {

using namespace sinusoid;

CSinusoidObject::CSinusoidObject(const CreateParam& param) : Tool(param, kSpec, kItems, "Sinus")
{
    StateStore& saved = state();
    saved.stored("sinusVal", settings.sinusVal);
    saved.stored("userAmplitude", settings.userAmplitude);
    saved.stored("userFrequency", settings.userFrequency);
    saved.stored("sinusAbs", settings.sinusAbs);
    saved.packed("sDataChunkSaveStruct", 2).field(settings.hideDuringRecording).required();
    auto& amplitudes = saved.linear("amplitude", amplitude_);
    auto& frequencies = saved.linear("frequency", frequency_);
    amplitudes.required();
    frequencies.required();
    saved.undone(settings.responseFactor);

    amplitudes_ = &amplitudes;
    frequencies_ = &frequencies;
    amplitudes_->curve().set(0.0, amplitude_);
    frequencies_->curve().set(0.0, frequency_);
}

void CSinusoidObject::settleParameters()
{
    wantedAmplitude_.settle();
    wantedFrequency_.settle();
}

void CSinusoidObject::runStarts(double time)
{
    settings.sinusVal = valueAt(time + stepLength());
}

void CSinusoidObject::step(double time)
{
    const double dt = stepLength();
    response(amplitude_, settings.userAmplitude, settings.responseFactor, dt);
    response(frequency_, settings.userFrequency, settings.responseFactor, dt);
    settings.sinusVal = wave(amplitude_, frequency_, time);
    moveNode(settings.sinusVal, time);
}

void CSinusoidObject::moveNode(double value, double time)
{
    Matrix4 reference;
    if (!node(kReferenceNode).readGlobal(time, reference))
        return;
    Matrix4 pose = node(kSinusNode).global(time);
    setTranslation(pose, transformPoint(reference, {0.0, value, 0.0}));
    node(kSinusNode).setGlobal(time, pose);
}

double CSinusoidObject::wave(double amplitude, double frequency, double time) const
{
    const double value = amplitude * std::sin(frequency * time);
    return settings.sinusAbs ? std::abs(value) : value;
}

double CSinusoidObject::valueAt(double time) const
{
    double amplitude = amplitudes_->curve().get(time);
    double frequency = frequencies_->curve().get(time);
    const bool recorded =
        !amplitudes_->curve().empty() && time <= amplitudes_->curve().records().back().time;
    if (!recorded) {
        const double dt = stepLength();
        response(amplitude, settings.userAmplitude, settings.responseFactor, dt);
        response(frequency, settings.userFrequency, settings.responseFactor, dt);
    }
    return wave(amplitude, frequency, time);
}

void CSinusoidObject::timeMoved(double time)
{
    settings.sinusVal = valueAt(time);
    if (!running()) {
        wantedAmplitude_.show(amplitudes_->curve().get(time));
        wantedFrequency_.show(frequencies_->curve().get(time));
    }
}

/// In a run the tick's own value: the host's time lags behind the frames.
double CSinusoidObject::outputValue(std::size_t)
{
    return running() ? settings.sinusVal : valueAt(runtime().getTime());
}

void CSinusoidObject::itemActed(std::string_view label)
{
    if (label == kAmplitude)
        wantedAmplitude_.touched();
    else if (label == kFrequency)
        wantedFrequency_.touched();
    else if (label == kUpdateValues) {
        settings.sinusVal = valueAt(runtime().getTime());
        runtime().updateConfiguration();
    }
}

} // namespace tvw::rgs::addon

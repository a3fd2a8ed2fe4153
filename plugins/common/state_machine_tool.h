/// A state machine as a tool; with a lens, as a camera.
#pragma once

#include "plugins/common/change_line.h"
#include "plugins/common/custom_data.h"
#include "plugins/common/lens.h"
#include "plugins/common/pose.h"
#include "plugins/common/state_machine.h"

#include <string>

namespace tvw::rgs {

/// S: made from `machine::Settings`. Nodes and inputs are `machine::nodeRows` and `inputRows`.
template <class S>
class StateMachineTool : public Tool<S>
{
public:
    std::vector<std::int32_t> supportedCodes() override
    {
        return {code::writeCustomData, code::readCustomData};
    }

    /// A copy begins in the state in which the original stands.
    std::intptr_t call(std::int32_t code, void* argument) override
    {
        if (code == code::writeCustomData) {
            writeCustomNumber(*static_cast<util::xml::Element*>(argument), kCopiedState,
                              wantedStates_->curve().get(this->runtime().getTime()));
            return 1;
        }
        if (code == code::readCustomData)
            return beginIn(*static_cast<const util::xml::Element*>(argument));
        return Tool<S>::call(code, argument);
    }

protected:
    StateMachineTool(const CCamera::CreateParam& param, const ToolSpec& spec,
                     std::span<const Item<S>> items, std::string chunkWord, bool hasLens)
        : Tool<S>(param, spec, items, std::move(chunkWord)), hasLens_(hasLens)
    {
        StateStore& saved = this->state();
        saved.packed("sDataChunkSaveStruct", 3)
            .field(this->settings.hideHelpers)
            .field(this->settings.hideDuringRecording)
            .field(needsInitialize_);
        auto& states =
            saved.template add<Recorded<ChangeLine<unsigned char>>>("aniWantedState", wanted_);
        auto& memories = saved.nearest("anqTransStateMem", memory_);
        saved.stored("cCurrentStateNode.bSimplifiedSettings", this->settings.bSimplifiedSettings);
        keepLimits("cCurrentStateNode.", this->settings.simplified);
        for (std::size_t i = 0; i < machine::kStates; ++i)
            keepLimits("cWantedStateNode_p[ " + std::to_string(i) + "].", this->settings.states[i]);
        saved.undone(needsInitialize_);
        wantedStates_ = &states;
        memories_ = &memories;
    }

    void runStarts(double time) override
    {
        const auto known = memories_->curve().records();
        if (needsInitialize_ || known.empty() || known.front().time > time)
            memory_ = splitPose(this->node(machine::kCurrent).local(time)).transform;
        needsInitialize_ = false;
        if (hasLens_) // the key that the first change of the lens departs from
            writeLens(time, lensOf(this->node(machine::kCurrent), time, {}));
    }

    void step(double time) override
    {
        for (std::size_t i = 0; i < machine::kStates; ++i) {
            if (this->input(i).value() > 0.5)
                wanted_ = static_cast<unsigned char>(i + 1);
        }
        const machine::StateLimits& limits = this->settings.limitsOf(wanted_);
        const SceneNode& state = this->node(machine::kFirstState + wanted_ - 1);
        movePose(state, limits, time);
        if (hasLens_)
            moveLens(state, limits, time);
    }

    void itemActed(std::string_view label) override
    {
        if (label != machine::kInitialize)
            return;
        this->runtime().pushUndo(new CVariableModUndo<bool>(&needsInitialize_));
        needsInitialize_ = true;
    }

private:
    static constexpr std::string_view kCopiedState = "wantedstate";

    std::intptr_t beginIn(const util::xml::Element& custom)
    {
        double state = 0.0;
        if (!readCustomNumber(custom, kCopiedState, state) || state < 1.0 ||
            state > machine::kStates)
            return 0;
        wantedStates_->curve().set(0.0, static_cast<unsigned char>(state));
        return 1;
    }

    void keepLimits(const std::string& prefix, machine::StateLimits& limits)
    {
        StateStore& saved = this->state();
        if (hasLens_) {
            saved.stored(prefix + "dMaxFov", limits.dMaxFov);
            saved.stored(prefix + "dMaxTargetDist", limits.dMaxTargetDist);
            saved.stored(prefix + "dFovRespFactor", limits.dFovRespFactor);
            saved.stored(prefix + "dTDistRespFactor", limits.dTDistRespFactor);
        }
        saved.stored(prefix + "dMaxVel", limits.dMaxVel);
        saved.stored(prefix + "dMaxAngVel", limits.dMaxAngVel);
        saved.stored(prefix + "dVelRespFactor", limits.dVelRespFactor);
        saved.stored(prefix + "dRotVelRespFactor", limits.dRotVelRespFactor);
    }

    /// A state whose node the user has deleted is no goal: the machine stays.
    void movePose(const SceneNode& state, const machine::StateLimits& limits, double time)
    {
        const double dt = this->stepLength();
        PoseParts current = splitPose(this->node(machine::kCurrent).local(time - dt));
        Matrix4 place;
        if (state.readGlobal(time, place)) {
            const Matrix4 toCage = inverse(this->node(machine::kCage).global(time));
            machine::travel(current.transform, memory_, splitPose(toCage * place).transform, limits,
                            dt);
        }
        this->node(machine::kCurrent).setLocal(time, joinPose(current));
    }

    void moveLens(const SceneNode& state, const machine::StateLimits& limits, double time)
    {
        const double dt = this->stepLength();
        machine::Lens lens = lensOf(this->node(machine::kCurrent), time - dt, {});
        machine::travel(lens, lensOf(state, time, lens), limits, dt);
        writeLens(time, lens);
    }

    machine::Lens lensOf(const SceneNode& node, double time, machine::Lens otherwise) const
    {
        withLens(this->runtime(), node, time, [&](CSnapshot_Lens& lens) {
            otherwise = {lens.getFieldOfView(), lens.getTargetDistance()};
        });
        return otherwise;
    }

    void writeLens(double time, const machine::Lens& wanted)
    {
        withLens(this->runtime(), this->node(machine::kCurrent), time, [&](CSnapshot_Lens& lens) {
            lens.setFieldOfView(wanted.fieldOfView);
            lens.setTargetDistance(wanted.targetDistance);
        });
    }

    bool hasLens_;
    bool needsInitialize_ = false;
    unsigned char wanted_ = 1; ///< 1 to 10
    QTransformd memory_;       ///< the first filter, in the cage
    Recorded<ChangeLine<unsigned char>>* wantedStates_ = nullptr;
    Recorded<AVar_Nearest<QTransformd>>* memories_ = nullptr;
};

} // namespace tvw::rgs

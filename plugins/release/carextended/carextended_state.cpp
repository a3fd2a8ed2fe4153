/// What of the four-wheeler is saved and recorded, and under which names. The order and the names
/// are those of the files.
#include "plugins/common/stored_mesh.h"
#include "plugins/release/carextended/carextended_CCarCamObject.h"

namespace tvw::rgs::addon {

using namespace carextended;

void CCarCamObject::registerFlags()
{
    constexpr std::size_t kBlock = 368; // [bytes]
    CarParameters& car = settings.car;
    PackedState& block = state().packed("sDataChunkSaveStruct", kBlock);
    block.required();
    for (InputChannel& channel : car.pcInput)
        block.field(channel.dResponseFactor);
    for (InputChannel& channel : car.pcInput)
        block.field(channel.dMaximum);
    block.field(car.rig.dCarHeight).field(car.rig.dCarWidth).field(car.rig.dCarLength);
    block.field(car.rig.dBodyHeight).field(car.rig.dWheelRadiusRel);
    block.field(car.rig.dWheelZ).field(car.rig.dWheelX).field(car.rig.dWheelWidth);
    block.field(car.dMassMult).field(car.fStiffnessFront).field(car.fDampingFront);
    block.field(car.dGravelRoughness).field(car.dTurnBase);
    block.field(car.dSkidReleaseRespFact).field(car.dSkidBrakeStopFactor);
    block.field(settings.hideHelpers).field(settings.hideDuringRecording);
    block.field(settings.hideFollowCam).field(settings.hideDriverCam);
    block.field(settings.hideTopViewCam).field(reInitialise_);
}

void CCarCamObject::registerBody()
{
    CCarCam& sim = cCarCam_;
    CarParameters& car = settings.car;
    state().stored("fRelMaxBumperLen", car.wheels.fRelMaxBumperLen);
    state().stored("fSurfaceEdgeResponseFactor", car.wheels.fSurfaceEdgeResponseFactor);
    state().stored("cCarCambGravityOn", car.bGravityOn);
    state().stored("dScaleRelMaxJumpVelocity", car.dScaleRelMaxJumpVelocity);
    state().stored("dHorizontalRestoringFactor", car.dHorizontalRestoringFactor);
    state().stored("dLandingNeutralizer", car.dLandingNeutralizer);
    state().stored("iRayMultiplier", car.wheels.iRayMultiplier);
    state().linear("ancCarCamcCarBodyfRelYPos", sim.heave.value);
    state().linear("ancCarCamcCarBodyfRelXAng", sim.pitch.value);
    state().linear("ancCarCamcCarBodyfRelZAng", sim.roll.value);
    state().linear("ancCarCamcCarBodyfRelYVel", sim.heave.rate);
    state().linear("ancCarCamcCarBodyfRelXAngVel", sim.pitch.rate);
    state().linear("ancCarCamcCarBodyfRelZAngVel", sim.roll.rate);
    state().nearest("anFollowCamFilterMem", followCam_.first);
    state().linear("ancCarCampcInput_STEERING_WHEEL", car.pcInput[STEERING_WHEEL].dValue);
    auto& gas = state().linear("ancCarCampcInput_GAS_PEDAL", car.pcInput[GAS_PEDAL].dValue);
    gasCurve_ = &gas;
}

void CCarCamObject::registerWheels()
{
    StateStore& store = state().nested("wheelstore");
    for (std::size_t i = 0; i < kWheels; ++i) {
        CarWheel& wheel = cCarCam_.m.wheel[i];
        WheelUnit& unit = cCarCam_.unit[i];
        StateStore& one = store.nested(std::to_string(i));
        one.linear("ancCarCampcWheelfSuspZeroDiff", wheel.fSuspZeroDiff);
        one.linear("ancCarCampcWheelfSuspZeroDiff_prev", wheel.fSuspZeroDiff_prev);
        one.linear("ancCarCampcWheelpfTotalPitch", wheel.pfTotalPitch);
        one.linear("ancWheelNodeCurrDelta", unit.memory.CurrDelta);
        one.linear("ancWheelNodeCurrDeltaW", unit.memory.CurrDeltaW);
        one.nearest("andWheelGroundNormalDiff", unit.contact.normal);
        one.latest("anWheelMemory", unit.memory);
    }
}

void CCarCamObject::registerDriving()
{
    CCarCam& sim = cCarCam_;
    CarParameters& car = settings.car;
    state().nearest("ancCarCamqTransCarAbsIncr", sim.qTransCarAbsIncr);
    state().linear("ancCarCampcInput_SKID_BRAKE", car.pcInput[SKID_BRAKE].dValue);
    state().nearest("ancCarCambSkidBreakingOn", sim.bSkidBreakingOn);
    state().linear("ancCarCampcInput_SKIDDING", car.pcInput[SKIDDING].dValue);
    state().nearest("ancCarCambSkiddingOn", sim.bSkiddingOn);
    state().linear("ancCarCamfSkidWantedGasPedalValue", sim.fSkidWantedGasPedalValue);
    state().nearest("anQGravityFilterMem", sim.QGravityFilterMem);
    state().nearest("anbCarInTheAir", sim.bCarInTheAir);
    state().stored("dVelRelMaxSteeringChangeVel", car.dVelRelMaxSteeringChangeVel);
    state().linear("cCarCamdWantedSkiddingValue", sim.dWantedSkiddingValue);
    state().stored("dBurnoutShake", car.dBurnoutShake);
    state().stored("dBurnoutTiltForce", car.dBurnoutTiltForce);
    state().stored("dMinGroundDistance", car.dMinGroundDistance);
    state().stored("dSpeedDependentTurnRadiusReductionFactor",
                   car.dSpeedDependentTurnRadiusReductionFactor);
    state().linear("ancCarCampcInput_BOOSTER", car.pcInput[BOOSTER].dValue);
    state().stored("cCarCamfGravity", car.fGravity);
    state().linear("ancCarCampcInput_BURNOUT", car.pcInput[BURNOUT].dValue);
    state().stored("cCarCamdBurnoutFadeoutFactor", car.dBurnoutFadeoutFactor);
    state().stored("dLandingSkiddingFactor", car.dLandingSkiddingFactor);
    state().stored("dBoosterStiffnessMult", car.dBoosterStiffnessMult);
    state().stored("fStiffnessBack", car.fStiffnessBack);
    state().stored("fDampingBack", car.fDampingBack);
}

void CCarCamObject::registerFollowing()
{
    CCarCam& sim = cCarCam_;
    CarParameters& car = settings.car;
    state().stored("cCarCambAutonomousMode", car.bAutonomousMode);
    state().stored("dFollowAccelerationMult", car.follow.dFollowAccelerationMult);
    state().stored("dIgnoreSphereRadius", car.follow.dIgnoreSphereRadius);
    state().stored("cCarCamdSkiddingOffset", car.dSkiddingOffset);
    state().stored("cCarCamdSkiddingReleaseThresh", car.dSkiddingReleaseThresh);
    state().stored("cCarCamdGravelShakeOffset", car.dGravelShakeOffset);
    state().nearest("anvAcceleration", sim.vAcceleration);
    state().linear("cCarCamdInputFilterMem", sim.dInputFilterMem);
    state().linear("cCarCamdGasPedalInputFilterMem", sim.dGasPedalInputFilterMem);
    state().stored("dFollowAccRespFact", car.follow.dFollowAccRespFact);
    state().stored("dAutoSteeringValueRespFact", car.follow.dAutoSteeringValueRespFact);
    state().linear("andFollowAccMem", sim.follower.dFollowAccMem);
    state().linear("andAutoSteeringValueMem", sim.follower.dAutoSteeringValueMem);
    state().stored("cCarCamdForceOffset", car.dForceOffset);
}

void CCarCamObject::registerModes()
{
    CarParameters& car = settings.car;
    state().stored("bSaveDynamicData", settings.bSaveDynamicData);
    state().stored("bDisableGroundNodesAnimation", groundNodesAreStill_);
    state().stored("bDisableFollowCamAnimation", followCamIsStill_);
    state().stored("bDisableGravityNodeAnimation", gravityNodeIsStill_);
    state().stored("cCarCamdMaximumForwardTiltAngle", car.dMaximumForwardTiltAngle);
    state().stored("cCarCamdMaximumSideTiltAngle", car.dMaximumSideTiltAngle);
    state().stored("dMaximumSpringChangeVelocityRel", car.wheels.dMaximumSpringChangeVelocityRel);
    state().stored("bFixateWheelBottomNodes", settings.bFixateWheelBottomNodes);
    state().linear("ancCarCamfCarLocalYawIncr", cCarCam_.fCarLocalYawIncr);
    state().stored("dDegsPerRay", car.wheels.dDegsPerRay);
    state().stored("dVelocityConversionMult", settings.dVelocityConversionMult);
    state().stored("bAlignWheelCenterToGroundNormal", settings.bAlignWheelCenterToGroundNormal);
    state().stored("dInitialVelocity", settings.dInitialVelocity);
    state().stored("bAddRaysAtWheelEdges", car.wheels.bAddRaysAtWheelEdges);
    state().stored("dStartTime", dStartTime_);
    state().stored("bKeyframeOnlyEssential", settings.bKeyframeOnlyEssential);
}

void CCarCamObject::registerSkidBrake()
{
    CCarCam& sim = cCarCam_;
    CarParameters& car = settings.car;
    state().stored("cCarCam.dSkidBrakeRotBrakeMult", car.dSkidBrakeRotBrakeMult);
    state().nearest("ancCarCambSkidBreakingOnDisableFeatures", sim.bSkidBreakingOnDisableFeatures);
    state().stored("dReverseMaxVelMult", car.follow.dReverseMaxVelMult);
    state().stored("cCarCam.dSteeringNoise", car.dSteeringNoise);
    state().stored("cSteeringWheelNode.dSteeringWheelRotMult", settings.dSteeringWheelRotMult);
    state().stored("cCarCam.bUseReverseAsAbsBrake", car.bUseReverseAsAbsBrake);
    state().linear("ancCarCampcInput_GAS_PEDAL_inp_prev", sim.gasInputPrev);
    state().nearest("ancCarCambIsReverseVelAbsBraking", sim.bIsReverseVelAbsBraking);
    state().nearest("ancCarCamvSkidBrakePosIncr", sim.vSkidBrakePosIncr);
    state().linear("ancCarCamdSkidBrakeLocalYawIncr", sim.dSkidBrakeLocalYawIncr);
    state().nearest("ancCarCambSkidFirstTime", sim.bSkidFirstTime);
    state().stored("bMoveWheelCenterNodeToGroundHitPoint",
                   settings.bMoveWheelCenterNodeToGroundHitPoint);
    state().stored("cCarCam.dGasPedalMaxRateOfChange", car.dGasPedalMaxRateOfChange);
    state().latest("ancCarCamrandomValue_gravelShake", sim.randomValue_gravelShake);
    state().latest("ancCarCamrandomValue_burnout", sim.randomValue_burnout);
    state().latest("ancCarCamrandomValue_steeringNoise", sim.randomValue_steeringNoise);
    state().stored("cSteeringWheelNode.mInit_loc", steeringWheelInit_);
}

void CCarCamObject::registerGround()
{
    CarParameters& car = settings.car;
    state().stored("bUseStaticMesh", settings.bUseStaticMesh);
    state().stored("bStoreGroundMeshData", settings.bStoreGroundMeshData);
    state().add<StoredMesh>("cMesh_storedGroundMesh", groundSettings_.storedMesh);
    state().stored("mBulletGroundMesh", groundSettings_.storedMatrix);
    state().stored("cCarCam.dWorldAvoidanceSphereRadius", car.dWorldAvoidanceSphereRadius);
    state().stored("cCarCam.dWheelRadiusMult", car.dWheelRadiusMult);
    state().stored("bGroundReleaseOn", car.wheels.bGroundReleaseOn);
}

/// What else a tick leaves for the next.
void CCarCamObject::registerRest()
{
    CarParameters& car = settings.car;
    state().nearest("anFollowCamFilterMem2", followCam_.second);
    state().linear("andAutoSteeringPrev", cCarCam_.follower.dAutoSteeringPrev);
    state().linear("ancCarCampcInput_ABS_BRAKE", car.pcInput[ABS_BRAKE].dValue);
    state().linear("ancCarCampcInput_GRAVEL_SHAKE", car.pcInput[GRAVEL_SHAKE].dValue);
    state().linear("ancCarCampcInput_EXTERNAL_FORCE", car.pcInput[EXTERNAL_FORCE].dValue);
    auto& memory = state().latest("anCarMemory", cCarCam_.m);
    memoryCurve_ = &memory;
    state().stored("scales", scales_);
    state().undone(reInitialise_);
}

} // namespace tvw::rgs::addon

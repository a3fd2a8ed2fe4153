/// "Tarvo 4-Wheeler Extended": joins the four-wheeler's model with its nodes.
///
/// A tick reads the inputs and what the user animates (gravity, target, force), steps the model,
/// and writes body, wheels and cameras. A run that starts at or before the first start, or after
/// "Re-Initialize Car Attributes", takes the rig from the scene; any other goes on from the state
/// that was recorded at its start.
#pragma once

#include "plugins/common/follow_camera.h"
#include "plugins/common/tool_object.h"
#include "plugins/release/carextended/carextended_CCarCam.h"
#include "plugins/release/carextended/carextended_items.h"
#include "plugins/release/carextended/carextended_nodes.h"

namespace tvw::rgs::addon {

class CCarCamObject final : public Tool<carextended::Settings>
{
public:
    explicit CCarCamObject(const CreateParam& param);

private:
    static constexpr std::size_t kWheels = carextended::kWheels;

    // Registration (state.cpp)
    void registerFlags();
    void registerBody();
    void registerWheels();
    void registerDriving();
    void registerFollowing();
    void registerModes();
    void registerSkidBrake();
    void registerGround();
    void registerRest();

    // The life of a run (start.cpp)
    bool nodesCreated() override;
    bool startsAnew(double time) override;
    void runStarts(double time) override;
    void runEnds() override;
    void readScales(double time);
    void readRig(double time);
    double uniformBody(double time, Matrix4& body);
    std::array<carextended::WheelPlace, kWheels> readWheels(double time, const Matrix4& body);
    void startMoving(double time);
    double keyedVelocity(double time) const;
    void startGround(double time);
    void warnOfTarget();
    bool targetHangsOnBody();

    // A tick
    void step(double time) override;
    void readInputs();
    void readGravity(double time);
    void readForce(double time);
    void writeBody(double time);
    void followGround(double time);
    void writeWheels(double time, const Quatd& bodyBefore);
    void writeSpinKeys(std::size_t i, double time, const Quatd& bodyBefore);
    void writeCentres(std::size_t i, double time);
    void writeTurnBase(double time);
    void writeSteeringWheel(double time);
    void writeBase(double time);
    void writeFollowCam(double time);
    QTransformd turnBase() const;
    QTransformd followTarget() const;

    // What the windows show (shown.cpp)
    bool recordsState() const override
    {
        return settings.bSaveDynamicData || settings.bKeyframeOnlyEssential;
    }
    void timeMoved(double time) override;
    double outputValue(std::size_t index) override;
    void itemActed(std::string_view label) override;
    void showVelocity(double gas);
    void showLimits();
    void moveTurnBase();
    void pushStoredGround(bool& turned);
    void dropStoredGround();
    void changeFastRayCast();
    void changeStoredGround();

    carextended::CCarCam cCarCam_{settings.car};
    GroundSensor ground_;
    GroundSettings groundSettings_;
    FollowCamera followCam_;
    Matrix4 steeringWheelInit_; ///< local pose of the steering wheel when it looks ahead
    double dStartTime_ = 0.0;   ///< where the car has started anew [s]
    bool reInitialise_ = true;
    // Of older files: kept, no longer asked.
    bool groundNodesAreStill_ = false;
    bool followCamIsStill_ = false;
    bool gravityNodeIsStill_ = false;
    Recorded<AVar_Linear<double>>* gasCurve_ = nullptr;
    const Recorded<AVar_Latest<carextended::CarMemory>>* memoryCurve_ = nullptr;

    struct Scales
    {
        Vector3d turnBase{1, 1, 1};
        std::array<Vector3d, kWheels> centre, suspension;
    };
    Scales scales_; ///< of nodes that keep their own
};

} // namespace tvw::rgs::addon

#include "demo/demo_scene.h"

#include "adaptor/stage/tool_items.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/instance_reference.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace tvw::rgs::demo {

namespace {

constexpr double kStart = 0.005; // of the loop
constexpr const char* kGas = "Gas Pedal (Forw/Backw)";
constexpr const char* kSteering = "Steering Wheel (Right/Left)";

using Color = std::array<float, 3>;

stage::StageNode& addPart(stage::Stage& scene, const char* name, const CMesh& mesh,
                          const Color& color)
{
    stage::StageNode& node = scene.addMesh(name, mesh);
    node.setColor(color[0], color[1], color[2]);
    return node;
}

stage::StageNode* nodeOf(core::Instance& car, const std::string& name)
{
    auto* const handle = static_cast<stage::NodeHandle*>(car.getNode(name));
    return handle && !handle->isDeleted() ? &handle->node() : nullptr;
}

/// What a rigger needs and a driver does not is put out of sight.
void dress(core::Instance& car)
{
    constexpr std::array<std::string_view, 4> kWheels{"_FL", "_FR", "_BL", "_BR"};
    for (const std::string_view wheel : kWheels) {
        for (const char* const part :
             {"WheelRelocatorMesh", "WheelCenterMesh", "WheelCenterSuspensionMesh"}) {
            if (stage::StageNode* const node = nodeOf(car, part + std::string(wheel)))
                node->setVisible(false);
        }
        if (stage::StageNode* const node = nodeOf(car, "WheelMesh" + std::string(wheel)))
            node->setColor(0.20F, 0.21F, 0.23F);
    }
    for (const char* const part :
         {"CarBodyBaseMesh", "TurnBaseMesh", "ChassisRelocatorMesh", "ExternalForceMesh",
          "TargetMesh", "GravityDirectionMesh", "SteeringWheelMesh"}) {
        if (stage::StageNode* const node = nodeOf(car, part))
            node->setVisible(false);
    }
    if (stage::StageNode* const body = nodeOf(car, "CarBodyMesh"))
        body->setColor(0.86F, 0.36F, 0.16F);
}

/// The body goes to the start, and with it all that hangs on it; the follow camera behind it.
void placeAtStart(core::Instance& car, const Course& course)
{
    const Matrix4 start = course.poseAt(kStart);
    stage::StageNode* const body = nodeOf(car, "CarBodyMesh");
    for (const char* const name : {"CarBodyMesh", "TargetMesh", "FollowCam"}) {
        if (stage::StageNode* const node = body ? nodeOf(car, name) : nullptr)
            node->setWorld(start * node->world(0.0), 0.0, false);
    }
}

void makeGround(stage::Session& session, core::Instance& car, const Course& course)
{
    stage::Stage& scene = session.stage();
    stage::StageNode& terrain = addPart(scene, "Terrain", course.terrain(), {0.44F, 0.52F, 0.34F});
    stage::StageNode* const gravity = nodeOf(car, "GravityDirectionMesh");
    if (gravity)
        gravity->setParent(&terrain);
    stage::StageNode& road = addPart(scene, "Road", course.road(), {0.33F, 0.34F, 0.36F});
    stage::StageNode& kerbs = addPart(scene, "Kerbs", course.kerbs(), {0.80F, 0.78F, 0.74F});
    stage::StageNode& ramps = addPart(scene, "Ramps", course.ramps(), {0.72F, 0.55F, 0.30F});
    for (stage::StageNode* const surface : {&road, &kerbs, &ramps}) {
        if (gravity)
            surface->setParent(gravity);
    }
    addPart(scene, "Posts", course.posts(), {0.90F, 0.90F, 0.88F});
}

/// Steers at a point of the road ahead and lifts the gas for bends.
class Driver
{
public:
    Driver(core::Instance& car, unidevice::ScriptedDevice& pad)
        : body_(*nodeOf(car, "CarBodyMesh")), pad_(pad)
    {
    }

    void act(double time)
    {
        const Matrix4 pose = orthonormalise(body_.world(time));
        const double here = course_.nearest(translationOf(pose));
        const Vector3d goal = translationOf(course_.poseAt(here + kLook / course_.length()));
        const Vector3d seen = transformPoint(inverse(pose), goal);
        const double turn = std::atan2(seen.x, -seen.z);
        pad_.set("Axis", 1, std::clamp(turn * kEager, -1.0, 1.0));
        pad_.set("Axis", 0, std::clamp(1.0 - std::abs(turn) * 0.9, 0.45, 1.0));
    }

private:
    static constexpr double kLook = 9.0; // [m] ahead
    static constexpr double kEager = 2.6;

    Course course_;
    stage::StageNode& body_;
    unidevice::ScriptedDevice& pad_;
};

} // namespace

Status build(stage::Session& session)
{
    const Course course;
    const auto made = session.create("4WheelerExt", kCar);
    if (!made)
        return Status::failure(made.reason());
    core::Instance& car = (*made)->instance();
    makeGround(session, car, course);
    placeAtStart(car, course);
    dress(car);
    // A livelier pedal than a new rig's: whoever tries it drives within a second.
    if (auto item = stage::findToolItem(car, "Gas Pedal (Forw/Backw) Response Factor"))
        (void)stage::setToolItem(*item, 0.06);
    session.stage().undoStack().clear();
    return {};
}

Status driveAlong(stage::Session& session, const stage::Progress& progress)
{
    core::InstanceReference* const car = session.tool(kCar);
    if (!car)
        return Status::failure("the scene has no tool named \"Car\"");
    unidevice::ScriptedDevice& pad = session.addDevice("Driver", {.axes = 2, .buttons = 1});
    car->instance().properties().findProperty(kGas)->bind(pad.controlAt(0));
    car->instance().properties().findProperty(kSteering)->bind(pad.controlAt(1));
    Driver driver(car->instance(), pad);
    session.stage().setRange({0.0, kTakeSeconds});
    const Status done = session.record({.seconds = kTakeSeconds,
                                        .beforeFrame = [&](double time) { driver.act(time); },
                                        .progress = progress});
    session.stage().setTime(0.0);
    return done;
}

} // namespace tvw::rgs::demo

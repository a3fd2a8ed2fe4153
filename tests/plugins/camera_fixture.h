/// A camera tool on a stage, with a pad whose axes drive its inputs by name.
#pragma once

#include "tests/runs/run_fixture.h"
#include "util/transform.h"

#include <initializer_list>
#include <map>

namespace tvw::rgs::tests {

inline constexpr double kDegree = 0.017453292519943295; // [rad]

inline Matrix4 at(const Vector3d& position, const Vector3d& turn = {})
{
    return toMatrix(QTransformd{position, fromRotationVector(turn)});
}

class CameraTest : public RunTest
{
protected:
    /// Another stage with that tool. fps: frames a second.
    void place(const std::string& type, double fps = 25.0)
    {
        session.reset();
        open(fps);
        fps_ = fps;
        tool = &create(type);
        hands_ = &session->addDevice("Hands", {.axes = tool->properties().count() + 1});
    }

    /// A key of a node's local pose.
    void key(const std::string& name, double time, const Matrix4& pose)
    {
        node(*tool, name).setLocal(pose, time, true);
    }

    /// The input has this value from now on, as if the device gave it without a dead zone.
    void hold(const std::string& input, double value)
    {
        auto& inputs = tool->properties();
        for (int i = 0; i < inputs.count(); ++i) {
            Property& each = *inputs.propertyAt(i);
            if (each.name() != input)
                continue;
            each.deadzone = 0.0;
            if (each.control() != hands_->controlAt(i))
                each.bind(hands_->controlAt(i));
            hands_->set("Axis", i, value);
            return;
        }
        FAIL() << "no input " << input;
    }

    QTransformd pose(const std::string& name, double time)
    {
        return toTransform(node(*tool, name).world(time));
    }

    /// How fast a node moves over the frame that ends at a time [m/s], [rad/s].
    Vector3d velocity(const std::string& name, double time)
    {
        const double dt = 1.0 / fps_;
        return (pose(name, time).translation - pose(name, time - dt).translation) / dt;
    }
    Vector3d turning(const std::string& name, double time)
    {
        const double dt = 1.0 / fps_;
        return toRotationVector(conjugate(pose(name, time - dt).rotation) *
                                pose(name, time).rotation) /
               dt;
    }

    static void expectNear(const Vector3d& value, const Vector3d& expected, double tolerance,
                           const std::string& what)
    {
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(value[i], expected[i], tolerance) << what << ", component " << i;
    }

    core::Instance* tool = nullptr;

private:
    unidevice::ScriptedDevice* hands_ = nullptr;
    double fps_ = 25.0;
};

} // namespace tvw::rgs::tests

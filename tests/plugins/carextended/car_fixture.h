/// A four-wheeler on a stage, with a pad that drives it.
#pragma once

#include "tests/runs/run_fixture.h"

namespace tvw::rgs::tests {

/// How the pad stands; each from -1 or 0 to 1.
struct Hands
{
    double gas = 0.0, steering = 0.0, booster = 0.0, brake = 0.0;
    double skid = 0.0, skidBrake = 0.0, burnout = 0.0, force = 0.0;
};

class CarTest : public RunTest
{
protected:
    void SetUp() override { place(25.0); }

    /// Another stage with a car at the origin.
    void place(double fps)
    {
        session.reset();
        auto started = stage::Session::start({.framesPerSecond = fps, .isolated = true});
        ASSERT_TRUE(started) << started.reason();
        session = *std::move(started);
        pad = &session->addDevice("Pad", {.axes = 8, .buttons = 1});
        car = &create("4WheelerExt");
        static constexpr const char* kInputs[] = {"Gas Pedal (Forw/Backw)",
                                                  "Steering Wheel (Right/Left)",
                                                  "Booster",
                                                  "ABS Brake",
                                                  "Skidding",
                                                  "Skid Brake",
                                                  "Burnout",
                                                  "External Force"};
        for (int i = 0; i < 8; ++i)
            bindAxis(*car, kInputs[i], i);
    }

    void hold(const Hands& h)
    {
        const double values[] = {h.gas,  h.steering,  h.booster, h.brake,
                                 h.skid, h.skidBrake, h.burnout, h.force};
        for (int i = 0; i < 8; ++i)
            pad->set("Axis", i, values[i]);
    }

    /// A take of that length with the pad as `hands` says for each time.
    void drive(double seconds, std::function<Hands(double)> hands)
    {
        hold(hands(0.0));
        record(seconds, [this, hands](double time) { hold(hands(time)); });
    }

    Matrix4 body(double time) { return node(*car, "CarBodyMesh").world(time); }
    Vector3d position(double time) { return translationOf(body(time)); }

    /// Of the body along the ground [m/s].
    double speed(double time)
    {
        constexpr double kSpan = 0.08;
        const Vector3d way = position(time) - position(time - kSpan);
        return std::hypot(way.x, way.z) / kSpan;
    }

    /// Nose up [rad].
    double pitch(double time) { return std::asin(-normalise(body(time).axis(2)).y); }
    double roll(double time) { return std::asin(normalise(body(time).axis(0)).y); }

    core::Instance* car = nullptr;
    static constexpr double kLength = 3.522;
};

} // namespace tvw::rgs::tests

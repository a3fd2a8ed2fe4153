/// A scene with a gravity node, and ground for it whose hits can be computed by hand.
#pragma once

#include "plugins/common/ground_sensor.h"
#include "tests/runs/run_fixture.h"
#include "tests/support/ground_meshes.h"

namespace tvw::rgs::tests {

inline constexpr double kFar = 100.0; ///< longest ray [m]

/// Which of the three ways answers.
enum class Way { Host, Tree, World, WorldOfCopy };

inline const char* nameOf(Way way)
{
    constexpr const char* kNames[] = {"host", "tree", "world", "world of the stored copy"};
    return kNames[static_cast<int>(way)];
}

inline constexpr Way kWays[] = {Way::Host, Way::Tree, Way::World, Way::WorldOfCopy};

class GroundScene : public RunTest
{
protected:
    void SetUp() override
    {
        open();
        tool_ = &create("Sinusoid");
        gravity_ = tool_->createHelperNode("GravityDirectionMesh", nullptr, nodekind::shape);
    }

    stage::StageNode& gravityNode() { return static_cast<stage::NodeHandle*>(gravity_)->node(); }

    stage::StageNode& addParent(const CMesh& mesh, const Matrix4& place = {})
    {
        stage::StageNode& surface = session->stage().addMesh("surface", mesh, place);
        gravityNode().setParent(&surface);
        return surface;
    }
    stage::StageNode& addChild(const CMesh& mesh, const Matrix4& place)
    {
        stage::StageNode& surface = session->stage().addMesh("child", mesh, place);
        surface.setParent(&gravityNode());
        return surface;
    }

    /// Begins a run that asks in that way.
    GroundSensor::Problem begin(Way way, CNode* ownBody = nullptr)
    {
        GroundSettings settings;
        settings.useStaticMesh = way == Way::World || way == Way::WorldOfCopy;
        if (way == Way::Tree || way == Way::WorldOfCopy) {
            EXPECT_EQ(GroundSensor::storeMesh(*tool_, gravity_, 0.0, settings), "");
        }
        return begin(settings, ownBody);
    }
    GroundSensor::Problem begin(const GroundSettings& settings, CNode* ownBody = nullptr)
    {
        const auto problem =
            sensor_.beginRun(*tool_, gravity_, settings, 0.0, kBodyLength, ownBody);
        sensor_.beginTick(0.0);
        return problem;
    }
    void tick(double time)
    {
        sensor_.endTick();
        sensor_.beginTick(time);
    }

    GroundHit down(double x, double z, double from = 10.0, std::size_t surface = 0)
    {
        GroundHit out;
        out.hit = sensor_.castGroundRay(surface, {{x, from, z}, {0, -1, 0}}, kFar, &out.distance,
                                        &out.normal);
        return out;
    }

    static constexpr double kBodyLength = 4.0;

    core::Instance* tool_ = nullptr;
    CNode* gravity_ = nullptr;
    GroundSensor sensor_;
};

} // namespace tvw::rgs::tests

// The rulers and the ray: what they measure between nodes that are moved, scaled and mirrored.
#include "plugins/common/ruler.h"
#include "tests/runs/run_fixture.h"

#include <numbers>

namespace tvw::rgs::tests {
namespace {

constexpr double kPi = std::numbers::pi;

Matrix4 at(const Vector3d& position, const Vector3d& scale = {1, 1, 1}, double yaw = 0.0)
{
    Matrix4 pose = scaled(rotationMatrix(yaw, 0, 1, 0), scale);
    setTranslation(pose, position);
    return pose;
}

TEST(RulerLimits, TriggerStrictlyAndShareTheRange)
{
    struct Case
    {
        const char* name;
        ruler::Limits limits;
        double value, fraction, above, below;
    };
    for (const Case& c : {Case{"below", {1, 3}, 0.5, 0.0, 0.0, 1.0},
                          {"at the minimum", {1, 3}, 1.0, 0.0, 0.0, 0.0},
                          {"between", {1, 3}, 1.5, 0.25, 0.0, 0.0},
                          {"at the maximum", {1, 3}, 3.0, 1.0, 0.0, 0.0},
                          {"above", {1, 3}, 4.0, 1.0, 1.0, 0.0},
                          {"one limit, below it", {2, 2}, 1.0, 0.0, 0.0, 1.0},
                          {"one limit, at it", {2, 2}, 2.0, 1.0, 0.0, 0.0}}) {
        EXPECT_NEAR(c.limits.fraction(c.value), c.fraction, 1e-12) << c.name;
        EXPECT_EQ(c.limits.above(c.value), c.above) << c.name;
        EXPECT_EQ(c.limits.below(c.value), c.below) << c.name;
    }
}

class Rulers : public RunTest
{
protected:
    void make(const char* type)
    {
        session.reset();
        open();
        tool_ = &create(type);
    }
    void put(const char* name, const Matrix4& pose)
    {
        node(*tool_, name).setWorld(pose, 0.0, false);
    }

    double output(const std::string& name)
    {
        for (int i = 0; tool_->controlAt(i); ++i) {
            if (tool_->controlAt(i)->description == name)
                return tool_->controlAt(i)->value();
        }
        ADD_FAILURE() << "no output " << name;
        return std::nan("");
    }

    void press(const char* label)
    {
        const auto button = stage::findToolItem(*tool_, label);
        ASSERT_TRUE(button) << button.reason();
        button->node->press();
    }

    core::Instance* tool_ = nullptr;
};

TEST_F(Rulers, ADistanceIsInLengthsOfTheFirstNodesZAxis)
{
    struct Case
    {
        const char* name;
        Matrix4 first, second;
        double expected;
    };
    make("DistanceRuler");
    EXPECT_EQ(get(*tool_, "Current Distance"), 2.0) << "as the nodes are made";
    for (const Case& c : {Case{"in space", at({1, 2, 3}), at({3, 5, 9}), 7.0},
                          {"a scaled first node", at({}, {5, 5, 3}), at({0, 2, 0}), 6.0},
                          {"a scaled second node", at({}), at({0, 2, 0}, {9, 9, 9}), 2.0},
                          {"a mirrored one", at({}, {1, 1, -1}), at({0, 2, 0}), 2.0},
                          {"at one place", at({1, 1, 1}), at({1, 1, 1}), 0.0}}) {
        put("Node1", c.first);
        put("Node2", c.second);
        press("Update Values");
        EXPECT_NEAR(get(*tool_, "Current Distance"), c.expected, 1e-12) << c.name;
    }
}

TEST_F(Rulers, ATakesReadingsGoOutAndAreUndoneWithIt)
{
    make("DistanceRuler");
    set(*tool_, "Max Distance", 3.0);
    for (int i = 0; i <= 25; ++i)
        node(*tool_, "Node2").setWorld(at({0, 0, 2.0 + 0.08 * i}), 0.04 * i, true);
    record(1.0);
    EXPECT_NEAR(output("Distance value"), 4.0, 1e-9);
    EXPECT_EQ(output("Maximum Trigger Value"), 1.0);
    EXPECT_EQ(output("Distance from Min/Max"), 1.0);
    EXPECT_NEAR(get(*tool_, "Current Distance"), 4.0, 1e-9);
    session->stage().hostUndo();
    EXPECT_NEAR(get(*tool_, "Current Distance"), 2.0, 1e-9);
    EXPECT_EQ(node(*tool_, "Node2").poseKeyTimes().size(), 26u) << "the keys are the user's";
}

TEST_F(Rulers, AReadingStaysWithoutOneOfTheNodes)
{
    struct Case
    {
        const char *type, *gone, *moved, *item;
        Matrix4 pose; ///< of the moved node
        double expected;
    };
    for (const Case& c :
         {Case{"DistanceRuler", "Node1", "Node1", "Current Distance", at({7, 0, 2}), 7},
          {"AngleRuler", "BaseNode", "Node1", "Current Angle", at({3, 0, 0}), kPi / 2},
          {"ScaleRuler", "ScalingNode", "ScalingNode", "Current X Scale", at({}, {5, 1, 1}), 5}}) {
        make(c.type);
        put(c.moved, c.pose);
        press("Update Values");
        EXPECT_NEAR(get(*tool_, c.item), c.expected, 1e-12) << c.type;
        session->stage().remove(node(*tool_, c.gone));
        record(0.2);
        EXPECT_NEAR(get(*tool_, c.item), c.expected, 1e-12) << c.type << " without " << c.gone;
    }
}

TEST_F(Rulers, AnAngleIsSeenFromTheBase)
{
    struct Case
    {
        const char* name;
        Vector3d first, second, base;
        double expected;
    };
    make("AngleRuler");
    for (const Case& c : {Case{"right", {3, 1, 0}, {1, 4, 0}, {1, 1, 0}, kPi / 2},
                          {"flat", {3, 0, 0}, {-1, 0, 0}, {}, kPi},
                          {"the same direction", {3, 1, 7}, {6, 2, 14}, {}, 0.0},
                          {"tiny", {1, 0, 0}, {1, 1e-9, 0}, {}, 1e-9},
                          {"no length counts as upright", {0, 0, 0}, {1, 1, 0}, {}, kPi / 4}}) {
        put("Node1", at(c.first));
        put("Node2", at(c.second));
        put("BaseNode", at(c.base));
        press("Update Values");
        EXPECT_NEAR(get(*tool_, "Current Angle"), c.expected, 1e-12) << c.name;
    }
}

TEST_F(Rulers, AnAnglesVelocityIsThatOfTheFrame)
{
    make("AngleRuler");
    put("Node1", at({1, 0, 0}));
    put("BaseNode", {});
    for (int i = 0; i <= 25; ++i) { // 1 rad/s away, then 2 rad/s back
        const double angle = i <= 15 ? 1.0 + 0.04 * i : 1.6 - 0.08 * (i - 15);
        node(*tool_, "Node2").setWorld(at({std::cos(angle), std::sin(angle), 0}), 0.04 * i, true);
    }
    record(0.4);
    EXPECT_NEAR(output("Angular Velocity"), 1.0, 1e-9);
    record(0.4);
    EXPECT_NEAR(output("Angular Velocity"), 2.0, 1e-9) << "never negative";
}

TEST_F(Rulers, AScaleIsTheReferencesAxisByAxis)
{
    make("ScaleRuler");
    put("ReferenceNode", at({5, 0, 0}, {2, -1, 0}, 30));
    put("ScalingNode", at({}, {3, 30, 4}, 70));
    record(0.2);
    struct Case
    {
        const char* output;
        double expected;
    };
    for (const Case& c : {Case{"X Scale Value", 1.5},
                          {"Y Scale Value", 30.0},
                          {"Z Scale Value", 0.0}, // of a flattened reference
                          {"Percentage from X Min/Max", 0.5 / 9.0},
                          {"Maximum X Trigger Value", 0.0},
                          {"Maximum Y Trigger Value", 1.0},
                          {"Minimum Z Trigger Value", 1.0}})
        EXPECT_NEAR(output(c.output), c.expected, 1e-12) << c.output;
}

/// Two triangles: a square of side 2 at y = 0 in its own space, facing +Y, or a slope of 45
/// degrees.
CMesh square(bool isSlope)
{
    CMesh mesh;
    for (const auto& [x, z] : {std::pair{-1.0, -1.0}, {1.0, -1.0}, {1.0, 1.0}, {-1.0, 1.0}})
        mesh.vertex.push_back({x, isSlope ? x : 0.0, z});
    mesh.face = {0, 2, 1, 0, 3, 2};
    return mesh;
}

/// Looks down from a place.
Matrix4 down(const Vector3d& position)
{
    Matrix4 pose = rotationMatrix(-90, 1, 0, 0);
    setTranslation(pose, position);
    return pose;
}

class Rays : public Rulers
{
protected:
    void cast(const Matrix4& origin)
    {
        put("RayOrigin", origin);
        press("Initialize RayCaster");
        hit_ = node(*tool_, "RayHit").world(0.0);
    }
    Matrix4 hit_;
};

TEST_F(Rays, WithNoSurfaceTheGroundIsTheOne)
{
    struct Case
    {
        const char* name;
        Matrix4 origin;
        double maximum;
        Vector3d expected;
    };
    const Matrix4 ahead = at({1, 2, 3});
    Matrix4 slanting = rotationMatrix(-45, 1, 0, 0);
    setTranslation(slanting, {0, 2, 0});
    Matrix4 upward = rotationMatrix(90, 1, 0, 0);
    setTranslation(upward, {0, 2, 0});
    for (const Case& c : {Case{"straight down", down({1, 2, 3}), 0, {1, 0, 3}},
                          {"slanting", slanting, 0, {0, 0, -2}},
                          {"no further than it may", down({0, 9, 0}), 4, {0, 5, 0}},
                          {"level: at the origin", ahead, 0, {1, 2, 3}},
                          {"upward: behind the origin", upward, 5, {0, 0, 0}}}) {
        make("RayCaster");
        set(*tool_, "Maximum Ray Distance", c.maximum);
        cast(c.origin);
        EXPECT_NEAR(length(translationOf(hit_) - c.expected), 0.0, 1e-9) << c.name;
    }
}

TEST_F(Rays, HitSurfacesThatAreMovedScaledAndMirrored)
{
    struct Case
    {
        const char* name;
        bool isSlope;
        Matrix4 surface;
        double maximum;
        Vector3d position, normal;
    };
    const double half = std::sqrt(0.5);
    const Vector3d missed{0.5, -1e8, 0};
    const Vector3d up{0, 1, 0};
    for (const Case& c :
         {Case{"moved", false, at({0, 1, 0}), 0, {0.5, 1, 0}, up},
          {"turned", true, at({}, {1, 1, 1}, 180), 0, {0.5, -0.5, 0}, {half, half, 0}},
          {"scaled alike", true, at({}, {4, 4, 4}), 0, {0.5, 0.5, 0}, {-half, half, 0}},
          {"flatter",
           true,
           at({}, {1, 0.5, 1}),
           0,
           {0.5, 0.25, 0},
           {-1 / std::sqrt(5.0), 2 / std::sqrt(5.0), 0}},
          {"mirrored", true, at({}, {-1, 1, 1}), 0, {0.5, -0.5, 0}, {half, half, 0}},
          {"within its reach", false, at({0, 1, 0}, {1, 3, 1}), 50, {0.5, 1, 0}, up},
          {"beyond it", false, at({0, 1, 0}), 2, {0.5, 8, 0}, up},
          {"missed", false, at({9, 1, 0}), 0, missed + Vector3d{0, 10, 0}, up},
          {"missed within a reach", false, at({9, 1, 0}), 3, {0.5, 7, 0}, up},
          {"flattened: nothing to hit", false, at({}, {0, 1, 1}), 3, {0.5, 7, 0}, up}}) {
        make("RayCaster");
        set(*tool_, "Maximum Ray Distance", c.maximum);
        stage::StageNode& surface =
            session->stage().addMesh("Surface", square(c.isSlope), c.surface);
        node(*tool_, "HitSurfaceChild").setParent(&surface);
        put("RayHit", at({}, {2, 3, 4}));
        cast(down({0.5, 10, 0}));
        EXPECT_NEAR(length(translationOf(hit_) - c.position), 0.0, 1e-7) << c.name;
        EXPECT_NEAR(length(normalise(hit_.axis(2)) - c.normal), 0.0, 1e-9) << c.name;
        EXPECT_NEAR(length(scaleOf(hit_) - Vector3d{2, 3, 4}), 0.0, 1e-9) << c.name;
    }
}

TEST_F(Rays, LeaveTheOrientationOfTheOriginOnAMissOrAtWill)
{
    make("RayCaster");
    stage::StageNode& surface = session->stage().addMesh("Surface", square(true), {});
    node(*tool_, "HitSurfaceChild").setParent(&surface);
    const auto keepsOrientation = [&](const Matrix4& origin) {
        cast(origin);
        for (int i = 0; i < 12; ++i)
            EXPECT_NEAR(hit_[i], origin[i], 1e-12) << i;
    };
    keepsOrientation(down({7, 2, 0}));
    set(*tool_, "Align RayHit to hit surface normal", 0.0);
    keepsOrientation(down({0.5, 2, 0}));
}

TEST_F(Rays, LeaveTheHitWhereItIsBelowAParentThatIsNoMesh)
{
    make("RayCaster");
    put("RayHit", at({1, 3, 2}));
    node(*tool_, "HitSurfaceChild").setParent(&session->stage().addEmpty("Group", {}));
    cast(down({0, 5, 0}));
    EXPECT_EQ(hit_, at({1, 3, 2}));
}

TEST_F(Rays, FollowASurfaceThatMoves)
{
    make("RayCaster");
    stage::StageNode& surface = session->stage().addMesh("Lift", square(false), {});
    node(*tool_, "HitSurfaceChild").setParent(&surface);
    put("RayOrigin", down({0, 5, 0}));
    surface.setWorld(at({}), 0.0, true);
    surface.setWorld(at({0, 2, 0}), 1.0, true);
    record(1.0);
    EXPECT_NEAR(node(*tool_, "RayHit").world(0.0)[13], 0.0, 1e-9) << "the first key is a hit";
    EXPECT_NEAR(node(*tool_, "RayHit").world(1.0)[13], 2.0, 1e-9);
}

} // namespace
} // namespace tvw::rgs::tests

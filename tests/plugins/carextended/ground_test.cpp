#include "tests/plugins/carextended/car_fixture.h"

namespace tvw::rgs::tests {
namespace {

/// A strip 200 m wide along Z from its profile: (z, y) from far ahead to behind.
CMesh strip(const std::vector<std::pair<double, double>>& profile)
{
    CMesh mesh;
    for (const auto& [z, y] : profile) {
        mesh.vertex.push_back({-100, y, z});
        mesh.vertex.push_back({100, y, z});
    }
    for (std::int32_t i = 0; i + 3 < static_cast<std::int32_t>(mesh.vertex.size()); i += 2) {
        for (const std::int32_t index : {i, i + 2, i + 1, i + 1, i + 2, i + 3})
            mesh.face.push_back(index);
    }
    return mesh;
}

class CarOnGround : public CarTest
{
protected:
    void ground(const CMesh& mesh, const Matrix4& place = {}, bool fast = false)
    {
        stage::StageNode& surface = session->stage().addMesh("Ground", mesh, place);
        node(*car, "GravityDirectionMesh").setParent(&surface);
        set(*car, "Use Fast Ray Cast", fast);
        set(*car, "Gravel Shake Offset Value", 0);
    }
};

TEST_F(CarOnGround, StandsOnASlopeAtEveryHeading)
{
    for (int heading = 0; heading < 360; heading += 45) {
        place(25.0);
        const Matrix4 tilt = rotationMatrix(5, 0, 0, 1);
        ground(strip({{-300, 0}, {300, 0}}), tilt);
        Matrix4 pose = scaled(tilt * rotationMatrix(heading, 0, 1, 0), {kLength, kLength, kLength});
        setTranslation(pose, transformDirection(tilt, {0, 0.15, 0}));
        node(*car, "CarBodyMesh").setWorld(pose, 0.0, false);
        drive(20.0, [](double) { return Hands{}; });
        EXPECT_LT(length(position(20.0) - position(0.0)), 0.01) << heading << " degrees";
        EXPECT_LT(length(position(20.0) - position(10.0)), 1e-5) << heading << " degrees";
    }
}

/// Where the reverse gear is a gear, hills pull at the car: it rolls back down.
TEST_F(CarOnGround, RollsDownAHillUnlessReverseBrakes)
{
    for (const bool rolls : {true, false}) {
        place(25.0);
        const Matrix4 tilt = rotationMatrix(5, 1, 0, 0); // rises ahead
        ground(strip({{-300, 0}, {300, 0}}), tilt);
        set(*car, "Use Reverse as ABS Brake", rolls ? 0 : 1);
        Matrix4 pose = scaled(tilt, {kLength, kLength, kLength});
        setTranslation(pose, transformDirection(tilt, {0, 0.15, 0}));
        node(*car, "CarBodyMesh").setWorld(pose, 0.0, false);
        drive(6.0, [](double) { return Hands{}; });
        const Vector3d moved = position(6.0) - position(0.0);
        EXPECT_EQ(moved.z > 1.0, rolls);
        EXPECT_EQ(moved.y < -0.05, rolls);
    }
}

TEST_F(CarOnGround, ClimbsAKerbWithTheWheelsBeforeIt)
{
    constexpr double kHeight = 0.1;
    constexpr double kEdge = -20.0;
    constexpr double kRadius = 0.247;
    for (const bool rays : {true, false}) {
        place(25.0);
        ground(strip({{-300, kHeight}, {kEdge, kHeight}, {kEdge, 0}, {300, 0}}), {}, rays);
        if (!rays)
            set(*car, "Ray Multiplier", 1);
        drive(16.0, [](double t) { return Hands{.gas = t > 0 ? 0.4 : 0.0}; });
        double before = 0.0;
        for (double t = 0; t < 14; t += 0.04) {
            const Vector3d wheel = translationOf(node(*car, "WheelMesh_FL").world(t));
            if (wheel.z > kEdge)
                before = std::max(before, wheel.y - kRadius);
        }
        EXPECT_EQ(before > 0.02, rays) << "the rim feels the edge before the hub is over it";
        EXPECT_NEAR(position(16.0).y, 0.15 + kHeight, 0.02) << rays;
    }
}

TEST_F(CarOnGround, FliesOffARampAndLandsLevel)
{
    ground(strip({{-800, 0}, {-40.1, 0}, {-40, 2}, {-20, 0}, {300, 0}}));
    set(*car, "Initital Velocity (% of max)", 100);
    drive(8.0, [](double) { return Hands{.gas = 1.0}; });
    // In flight all wheels hang; two equal spans give the acceleration.
    const auto y = [&](double t) { return position(t).y; };
    constexpr double kSpan = 0.08;
    const double fall = (y(4.36) - 2 * y(4.36 - kSpan) + y(4.36 - 2 * kSpan)) / kSpan / kSpan;
    EXPECT_NEAR(fall, -9.81 * kLength / 4, 0.05);
    double lowest = 1.0;
    for (double t = 4.3; t < 5.5; t += 0.04)
        lowest = std::min(lowest, y(t));
    EXPECT_LT(lowest, 0.12) << "a dip on landing";
    EXPECT_NEAR(y(6.2), 0.15, 0.005);
    EXPECT_NEAR(pitch(6.2), 0.0, 0.005);
}

/// The springs' own motion is no edge: nothing may feed it back to them.
TEST_F(CarOnGround, ComesToRestBehindEdgesAtEveryFrameRate)
{
    using Profile = std::vector<std::pair<double, double>>;
    struct Case
    {
        const char* name;
        Profile profile;
        double booster, settled; ///< settled: when the edge must be forgotten [s]
    };
    const Case cases[] = {
        {"a boost on the plane", {{-900, 0}, {900, 0}}, 1.0, 1.0},
        {"a jump", {{-800, 0}, {-32.1, 0}, {-32, 1.2}, {-20, 0}, {300, 0}}, 0.0, 5.2},
        {"the foot of a hill", {{-300, 70}, {-20, 0}, {300, 0}}, 0.0, 3.2},
    };
    const auto groundAt = [](const Profile& profile, double z) {
        std::size_t i = 1;
        while (profile[i].first < z)
            ++i;
        const auto [z0, y0] = profile[i - 1];
        const auto [z1, y1] = profile[i];
        return y0 + (y1 - y0) * (z - z0) / (z1 - z0);
    };
    std::map<std::string, double> noseDown; // at the first frame rate [rad]
    for (const double fps : {25.0, 10.0, 60.0, 120.0}) {
        for (const Case& c : cases) {
            place(fps);
            ground(strip(c.profile), {}, true);
            drive(8.0, [&](double) { return Hands{.gas = 1.0, .booster = c.booster}; });
            double highest = 0.0;
            for (double t = c.settled; t < 8.0; t += 0.1) {
                const Vector3d hub = translationOf(node(*car, "WheelMesh_BL").world(t));
                const double above = hub.y - 0.247 - groundAt(c.profile, hub.z);
                highest = std::max({highest, std::abs(above), std::abs(pitch(t) - pitch(8.0))});
            }
            EXPECT_LT(highest, 0.03) << c.name << " at " << fps << " fps"; // [m], [rad]
            double lowest = 0.0;
            for (double t = 1.0; t < 8.0; t += 0.02)
                lowest = std::min(lowest, pitch(t));
            noseDown.emplace(c.name, lowest);
            EXPECT_GT(lowest, noseDown[c.name] - 0.05) << c.name << " at " << fps << " fps";
        }
    }
}

TEST_F(CarOnGround, ResimulatesOverEdgesAndThroughTheAir)
{
    for (const bool fast : {false, true}) {
        place(25.0);
        ground(strip({{-800, 0}, {-40.1, 0}, {-40, 2}, {-20, 0}, {-10, 0.1}, {-10, 0}, {300, 0}}),
               {}, fast);
        set(*car, "Initital Velocity (% of max)", 100);
        const auto hands = [](double t) { return Hands{.gas = 1.0, .steering = 0.1 * wobble(t)}; };
        drive(6.0, hands);
        const auto take = allKeys();
        for (const double from : {0.0, 1.0, 3.0, 4.0, 4.4}) {
            resimulate(from, 6.0);
            for (const auto& [name, keys] : allKeys())
                ASSERT_TRUE(keys == take.at(name)) << name << " from " << from << ", fast " << fast;
        }
    }
}

/// A copy without its box would be driven on unseen.
TEST_F(CarOnGround, UndoTurnsTheBoxesWithTheStoredGround)
{
    ground(strip({{-300, 1}, {300, 1}}), {}, true);
    const auto boxes = [this] {
        return std::pair{get(*car, "Use Fast Ray Cast"), get(*car, "Store Ground Mesh Data")};
    };
    set(*car, "Store Ground Mesh Data", 1);
    set(*car, "Use Fast Ray Cast", 0);
    EXPECT_EQ(boxes(), std::pair(0.0, 0.0));
    ASSERT_TRUE(session->stage().hostUndo());
    EXPECT_EQ(boxes(), std::pair(1.0, 1.0));
    ASSERT_TRUE(session->stage().hostUndo());
    EXPECT_EQ(boxes(), std::pair(1.0, 0.0));
}

TEST_F(CarOnGround, AWheelOverALedgeHangsNoFurtherThanItsSpring)
{
    ground(strip({{-20, 0}, {300, 0}})); // nothing ahead of z = -20
    drive(14.0,
          [](double t) { return Hands{.gas = t > 0 ? 0.3 : 0.0, .brake = t > 12 ? 1.0 : 0.0}; });
    constexpr double kRadius = 0.247;
    double fastest = 0.0;
    for (double t = 0.04; t < 14; t += 0.04) {
        const auto inBody = [&](double time) {
            Matrix4 frame = orthonormalise(body(time));
            return transformPoint(inverse(frame),
                                  translationOf(node(*car, "WheelMesh_FL").world(time)));
        };
        const double drop = kRadius - 0.15 - inBody(t).y;
        EXPECT_LT(drop, 0.5 * kRadius + 1e-6) << t;
        fastest = std::max(fastest, (inBody(t - 0.04).y - inBody(t).y) / 0.04);
        if (HasFailure())
            break;
    }
    EXPECT_LT(fastest, 3.0 * kRadius + 1e-6);
}

} // namespace
} // namespace tvw::rgs::tests

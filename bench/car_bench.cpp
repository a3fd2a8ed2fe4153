/// Whole cars: resimulated seconds against the vehicle of another library, and our ways with the
/// ground.
#include "adaptor/stage/session.h"
#include "adaptor/stage/tool_items.h"
#include "bench/bullet_terrain.h"
#include "bench/compare.h"
#include "core/instance.h"
#include "core/instance_reference.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wshadow"
#include <BulletDynamics/Vehicle/btRaycastVehicle.h>
#pragma GCC diagnostic pop

#include <memory>
#include <string>
#include <vector>

namespace {

using namespace tvw;
using namespace tvw::rgs;
using tvw::bench::BareBullet;
using tvw::bench::terrain;

constexpr double kSeconds = 4.0; ///< of a take
constexpr double kCell = 0.5;    ///< of a terrain [m]

enum Mode : int { kHost, kTree, kBullet };

/// Where the i-th of many cars starts: rows of ten, 8 m apart, all driving along -Z.
Vector3d startOf(int i)
{
    return {(i % 10 - 5) * 8.0, 0.0, (i / 10 - 5) * 8.0};
}

/// Cars on one terrain with a take of full gas behind them.
class Cars
{
public:
    Cars(int count, int side, Mode mode)
    {
        session_ = *stage::Session::start({.framesPerSecond = 25.0, .isolated = true});
        session_->stage().undoStack().setLimit(1); // the memory of old takes comes back at once
        ground_ = &session_->stage().addMesh("Ground", terrain(side, kCell));
        Device& pad = session_->addDevice("Pad", {.axes = 1, .buttons = 0});
        pad_ = &pad;
        for (int i = 0; i < count; ++i)
            addCar(i, mode);
        (void)session_->record({.seconds = kSeconds, .beforeFrame = [&](double) { press(); }});
    }

    void resimulate() { (void)session_->resimulate(0.0, kSeconds); }

    /// How far the first car came [m].
    double way()
    {
        return length(translationOf(body_->world(kSeconds)) - translationOf(body_->world(0.0)));
    }

private:
    using Device = unidevice::ScriptedDevice;

    void press() { pad_->set("Axis", 0, 1.0); }

    void addCar(int i, Mode mode)
    {
        core::Instance& car = (*session_->create("4WheelerExt"))->instance();
        setItem(car, "Use Fast Ray Cast", mode == kBullet ? 1.0 : 0.0);
        nodeOf(car, "GravityDirectionMesh").setParent(ground_);
        if (mode == kTree)
            setItem(car, "Store Ground Mesh Data", 1.0);
        stage::StageNode& body = nodeOf(car, "CarBodyMesh");
        Matrix4 pose = body.world(0.0);
        const Vector3d place = startOf(i);
        setTranslation(pose, translationOf(pose) + place);
        body.setWorld(pose, 0.0, false);
        car.properties().findProperty("Gas Pedal (Forw/Backw)")->bind(pad_->controlAt(0));
        if (i == 0)
            body_ = &body;
    }

    static void setItem(core::Instance& car, const std::string& label, double value)
    {
        (void)stage::setToolItem(*stage::findToolItem(car, label), value);
    }
    static stage::StageNode& nodeOf(core::Instance& car, const char* name)
    {
        return static_cast<stage::NodeHandle*>(car.getNode(name))->node();
    }

    std::unique_ptr<stage::Session> session_;
    stage::StageNode* ground_ = nullptr;
    stage::StageNode* body_ = nullptr;
    Device* pad_ = nullptr;
};

/// Bullet's own ray-cast vehicles, four rays a step at 60 Hz, in the manner of its documentation.
class PeerVehicles
{
public:
    PeerVehicles(int count, int side) : mesh_(terrain(side, kCell)), bullet_(mesh_)
    {
        bullet_.world.setGravity({0, -9.81, 0});
        for (int i = 0; i < count; ++i)
            add(startOf(i));
    }
    ~PeerVehicles()
    {
        for (const auto& one : vehicles_) {
            bullet_.world.removeVehicle(one->vehicle.get());
            bullet_.world.removeRigidBody(one->body.get());
        }
    }

    void drive()
    {
        reset();
        const int steps = static_cast<int>(kSeconds * 60.0);
        for (int step = 0; step < steps; ++step)
            bullet_.world.stepSimulation(1.0 / 60.0, 0, 1.0 / 60.0);
    }

    double way()
    {
        return (vehicles_[0]->body->getWorldTransform().getOrigin() - vehicles_[0]->start).length();
    }

private:
    struct One
    {
        btVector3 start;
        btRaycastVehicle::btVehicleTuning tuning;
        std::unique_ptr<btRigidBody> body;
        std::unique_ptr<btRaycastVehicle> vehicle;
    };

    void add(const Vector3d& at)
    {
        auto one = std::make_unique<One>();
        one->start = btVector3(at.x, 3.0, at.z);
        constexpr double kMass = 800.0;
        btVector3 inertia;
        chassis_.calculateLocalInertia(kMass, inertia);
        one->body = std::make_unique<btRigidBody>(kMass, nullptr, &chassis_, inertia);
        one->body->setActivationState(DISABLE_DEACTIVATION);
        bullet_.world.addRigidBody(one->body.get());
        one->vehicle =
            std::make_unique<btRaycastVehicle>(one->tuning, one->body.get(), &bullet_.caster);
        one->vehicle->setCoordinateSystem(0, 1, 2);
        for (int wheel = 0; wheel < 4; ++wheel) {
            const btVector3 mount(wheel % 2 ? 0.64 : -0.64, 0.0, wheel < 2 ? -1.05 : 1.05);
            one->vehicle->addWheel(mount, {0, -1, 0}, {-1, 0, 0}, 0.4, 0.26, one->tuning,
                                   wheel < 2);
            one->vehicle->applyEngineForce(-400.0, wheel);
        }
        bullet_.world.addVehicle(one->vehicle.get());
        vehicles_.push_back(std::move(one));
    }

    void reset()
    {
        for (const auto& one : vehicles_) {
            btTransform place = btTransform::getIdentity();
            place.setOrigin(one->start);
            one->body->setWorldTransform(place);
            one->body->setLinearVelocity({0, 0, 0});
            one->body->setAngularVelocity({0, 0, 0});
            one->vehicle->resetSuspension();
        }
    }

    CMesh mesh_;
    BareBullet bullet_;
    btBoxShape chassis_{{0.7, 0.4, 1.7}};
    std::vector<std::unique_ptr<One>> vehicles_;
};

/// As many seconds of as many cars, on 200,000 triangles, by the host's rays.
void carSecondAgainstBullet(benchmark::State& state)
{
    constexpr int kSide = 316;
    const int count = static_cast<int>(state.range(0));
    Cars cars(count, kSide, kHost);
    PeerVehicles peers(count, kSide);
    peers.drive();
    if (cars.way() < 5.0 || peers.way() < 5.0) {
        state.SkipWithError("a car does not drive");
        return;
    }
    tvw::bench::compare(
        state, [&] { peers.drive(); }, [&] { cars.resimulate(); });
    const double machine = state.counters["ours_ns"] / 1e9;
    state.counters["seconds_per_second"] = kSeconds * count / machine;
}
BENCHMARK(carSecondAgainstBullet)
    ->Name("car_second_vs_btRaycastVehicle")
    ->Arg(1)
    ->Arg(100)
    ->Unit(benchmark::kMillisecond);

/// Resimulated seconds of all cars in a second of machine time. Arguments: cars, side of the
/// terrain (2 side^2 triangles), mode.
void carModes(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    Cars cars(count, static_cast<int>(state.range(1)), static_cast<Mode>(state.range(2)));
    for ([[maybe_unused]] auto _ : state)
        cars.resimulate();
    state.counters["seconds_per_second"] = benchmark::Counter(
        kSeconds * count * static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(carModes)
    ->Name("car_modes")
    ->ArgNames({"cars", "side", "mode"})
    ->ArgsProduct({{1}, {32, 316, 1000}, {kHost, kTree, kBullet}})
    ->ArgsProduct({{10, 100}, {316}, {kHost, kTree, kBullet}})
    ->Unit(benchmark::kMillisecond);

/// A car among a hundred against one alone.
void carAmongAHundredAgainstOne(benchmark::State& state)
{
    tvw::bench::compareAmong(
        state, 100, [](int count) { return std::make_unique<Cars>(count, 316, kHost); });
}
BENCHMARK(carAmongAHundredAgainstOne)->Name("car_among_100_vs_one")->Unit(benchmark::kMillisecond);

} // namespace

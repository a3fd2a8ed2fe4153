#include "tests/plugins/carextended/car_fixture.h"

namespace tvw::rgs::tests {
namespace {

TEST_F(CarTest, Dump)
{
    drive(20.0, [](double) { return Hands{.gas = 1.0}; });
    for (double t : {0.04, 0.08, 0.2, 1.0, 2.0, 5.0, 10.0, 20.0})
        printf("t %g speed/L %.4f pos %.4f %.4f %.4f pitch %.5f roll %.5f v %g\n", t, speed(t) / kLength,
               position(t).x, position(t).y, position(t).z, pitch(t), roll(t), 0.0);
    for (auto* n : session->stage().nodes()) {
        auto p = n->world(2.0);
        printf("%s: %.3f %.3f %.3f scale %.3f %.3f %.3f keys %zu\n", n->name().c_str(), p[12], p[13], p[14],
               scaleOf(p).x, scaleOf(p).y, scaleOf(p).z, n->poseKeyTimes().size());
    }
}

} // namespace
} // namespace tvw::rgs::tests

#include "tests/adaptor/stage/counting_new.h"
#include "tests/plugins/carextended/car_fixture.h"

namespace tvw::rgs::tests {
namespace {

/// Room for keys and records is taken in blocks, so that most frames allocate nothing at all. A
/// tick that allocated would do so in each.
TEST_F(CarTest, MostFramesAllocateNothing)
{
    std::vector<std::size_t> counts;
    counts.reserve(1000);
    drive(6.0, [](double) { return Hands{.gas = 1.0}; });
    session->stage().setTime(0.0);
    hold({.gas = 1.0});
    record(6.0, [&](double) { counts.push_back(test::allocationCount()); });
    ASSERT_GT(counts.size(), 100U);
    int quiet = 0;
    for (std::size_t i = 2; i < counts.size(); ++i)
        quiet += counts[i] == counts[i - 1];
    EXPECT_GT(quiet, static_cast<int>(counts.size()) * 9 / 10);
}

} // namespace
} // namespace tvw::rgs::tests

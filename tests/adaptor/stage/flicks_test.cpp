#include "adaptor/stage/flicks.h"

#include <gtest/gtest.h>

#include <limits>

namespace tvw::rgs::stage {
namespace {

TEST(Flicks, FramesOfUsualRatesLandExactly)
{
    constexpr std::pair<int, Flicks> kCases[] = {
        {24, 29'400'000}, {25, 28'224'000}, {30, 23'520'000}, {60, 11'760'000}, {120, 5'880'000}};
    for (const auto& [fps, perFrame] : kCases) {
        for (int frame : {0, 1, 2, 3, 7, 1001, 86'399, 2'000'000, -5}) {
            SCOPED_TRACE(testing::Message() << fps << " fps, frame " << frame);
            const Flicks expected = perFrame * frame;
            EXPECT_EQ(toFlicks(frame * (1.0 / fps)), expected) << "index times step";
            EXPECT_EQ(toFlicks(static_cast<double>(frame) / fps), expected) << "index over rate";
            EXPECT_EQ(toSeconds(expected), static_cast<double>(frame) / fps);
        }
    }
}

TEST(Flicks, RoundsToTheNearestAndHoldsToItsRange)
{
    constexpr double kFlick = 1.0 / 705'600'000.0;
    struct Case
    {
        const char* name;
        double seconds;
        Flicks expected;
    };
    const Case kCases[] = {
        {"less than half", 10.4 * kFlick, 10},
        {"more than half", 10.6 * kFlick, 11},
        {"negative", -10.6 * kFlick, -11},
        {"no number", std::numeric_limits<double>::quiet_NaN(), 0},
        {"without end", std::numeric_limits<double>::infinity(), kLastFlick},
        {"without beginning", -std::numeric_limits<double>::infinity(), -kLastFlick},
        {"huge", 1e300, kLastFlick},
    };
    for (const Case& c : kCases)
        EXPECT_EQ(toFlicks(c.seconds), c.expected) << c.name;
}

} // namespace
} // namespace tvw::rgs::stage

#include "util/random.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace tvw {
namespace {

TEST(Random, aStoredStateGoesOnWithTheSameNumbers)
{
    Random a(42);
    for (int i = 0; i < 10; ++i) {
        a.next();
    }
    const RandomState state = a.state();
    const auto low = static_cast<double>(state.low); // as a recorded number holds it
    Random b(RandomState{static_cast<std::int32_t>(low), state.high});
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(a.next(), b.next());
    }
    EXPECT_EQ(a.state(), b.state());
    EXPECT_NE(Random(1).next(), Random(2).next());
    EXPECT_EQ(Random(1).next(), Random(1).next());
}

/// Draws fill [low, high] evenly: the mean and the variance of an even distribution, each within
/// five standard errors, and every tenth about equally full.
template <class Draw>
void expectEven(double low, double high, Draw draw)
{
    constexpr int kDraws = 100000;
    const double width = high - low;
    double sum = 0;
    double squares = 0;
    std::array<int, 10> tenths{};
    for (int i = 0; i < kDraws; ++i) {
        const double x = (draw(i) - low) / width;
        ASSERT_GE(x, 0.0);
        ASSERT_LE(x, 1.0);
        sum += x;
        squares += (x - 0.5) * (x - 0.5);
        ++tenths[static_cast<std::size_t>(std::min(x * 10, 9.0))];
    }
    EXPECT_NEAR(sum / kDraws, 0.5, 5 * std::sqrt(1.0 / 12 / kDraws));
    EXPECT_NEAR(squares / kDraws, 1.0 / 12, 5 * std::sqrt(1.0 / 180 / kDraws));
    for (const int count : tenths) {
        EXPECT_NEAR(count, kDraws / 10, 5 * std::sqrt(kDraws * 0.09));
    }
}

TEST(Random, drawsFillTheirRangesEvenly)
{
    Random random(7);
    expectEven(0.0, 1.0, [&](int) { return random.next01(); });
    expectEven(-0.5, 0.5, [&](int) { return random.centred(); });
    expectEven(0.0, 999.0, [&](int) { return random.below(1000); });
    expectEven(0.0, 1.0, [](int i) { return hashNoise(3, i - 50000); });
    expectEven(0.0, 1.0, [](int i) { return hashNoise(static_cast<std::uint32_t>(i), 3); });
    EXPECT_EQ(random.below(1), 0u);
}

TEST(Random, hashNoiseHasNoStateAndNoTies)
{
    EXPECT_NE(hashNoise(5, 7), hashNoise(6, 7));
    EXPECT_NE(hashNoise(5, 7), hashNoise(6, 6)); // no seed is another one shifted
    double together = 0;
    constexpr int kDraws = 10000;
    for (int i = 0; i < kDraws; ++i) {
        together += (hashNoise(1, i) - 0.5) * (hashNoise(1, i + 1) - 0.5);
    }
    EXPECT_NEAR(together / kDraws, 0, 5.0 / 12 / std::sqrt(kDraws)); // neighbours are independent
}

} // namespace
} // namespace tvw

/// Random numbers of the tools: the same seed gives the same numbers on every machine, and the
/// state is two ints, so that a tool keeps it among its recorded variables and a resimulation draws
/// the same numbers.
#pragma once

#include <cstdint>

namespace tvw {

/// The whole state of a Random: plain ints, as an animated variable or a saved block holds them.
struct RandomState
{
    std::int32_t low = 0;
    std::int32_t high = 0;

    [[nodiscard]] friend constexpr bool operator==(const RandomState& a,
                                                   const RandomState& b) noexcept
    {
        return a.low == b.low && a.high == b.high;
    }
};

/// PCG32: a 64-bit linear congruential state, of which the high bits pass through a shift and a
/// rotation (M. E. O'Neill, "PCG: A Family of Simple Fast Space-Efficient Statistically Good
/// Algorithms for Random Number Generation", 2014; XSH-RR, 64 bits of state, 32 bits out). Period
/// 2^64.
class Random
{
public:
    constexpr explicit Random(std::uint64_t seed = 0) noexcept
    {
        next();
        state_ += seed;
        next();
    }
    constexpr explicit Random(const RandomState& state) noexcept { setState(state); }

    [[nodiscard]] constexpr RandomState state() const noexcept
    {
        return {static_cast<std::int32_t>(static_cast<std::uint32_t>(state_)),
                static_cast<std::int32_t>(static_cast<std::uint32_t>(state_ >> 32))};
    }
    constexpr void setState(const RandomState& state) noexcept
    {
        state_ = std::uint64_t{static_cast<std::uint32_t>(state.high)} << 32 |
                 static_cast<std::uint32_t>(state.low);
    }

    /// Any 32-bit number.
    constexpr std::uint32_t next() noexcept
    {
        const std::uint64_t old = state_;
        state_ = old * kMultiplier + kIncrement;
        const auto shifted = static_cast<std::uint32_t>(((old >> 18) ^ old) >> 27);
        const auto turn = static_cast<std::uint32_t>(old >> 59);
        return shifted >> turn | shifted << ((32 - turn) & 31);
    }

    /// 0 to 1, both ends included.
    constexpr double next01() noexcept { return next() * (1.0 / 4294967295.0); }

    /// -0.5 to 0.5, both ends included.
    constexpr double centred() noexcept { return next01() - 0.5; }

    /// 0 to count - 1, count from 1: what a remainder of a draw is used for.
    constexpr std::uint32_t below(std::uint32_t count) noexcept
    {
        return static_cast<std::uint32_t>(std::uint64_t{next()} * count >> 32);
    }

private:
    static constexpr std::uint64_t kMultiplier = 6364136223846793005u;
    static constexpr std::uint64_t kIncrement = 1442695040888963407u;

    std::uint64_t state_ = 0;
};

/// Noise without a state: a number of 0 up to but not 1 that depends on seed and index alone, so
/// that any index can be asked for in any order. The mixing is the finaliser of SplitMix64 (G. L.
/// Steele, D. Lea, C. H. Flood, "Fast Splittable Pseudorandom Number Generators", 2014), after
/// index steps of its counter; the seed is mixed first.
[[nodiscard]] constexpr double hashNoise(std::uint32_t seed, std::int64_t index) noexcept
{
    const auto mix = [](std::uint64_t z) {
        z = (z ^ z >> 30) * 0xbf58476d1ce4e5b9u;
        z = (z ^ z >> 27) * 0x94d049bb133111ebu;
        return z ^ z >> 31;
    };
    constexpr std::uint64_t kGolden = 0x9e3779b97f4a7c15u;
    const std::uint64_t start = mix(seed + kGolden);
    const std::uint64_t bits = mix(start + kGolden * (static_cast<std::uint64_t>(index) + 1));
    return static_cast<double>(bits >> 11) * 0x1p-53;
}

} // namespace tvw

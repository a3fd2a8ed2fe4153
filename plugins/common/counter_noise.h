/// Noise without hidden state: a hash of a counter that its owner keeps and records, so that a run
/// repeats as soon as the counter is put back.
#pragma once

#include <cstdint>

namespace tvw::rgs {

/// Takes the counter's next value. Answers 0 up to, not including, 1.
/// Integer noise by a cubic polynomial over a shifted and folded counter, in wrapping arithmetic.
constexpr double counterNoise(std::int32_t& counter) noexcept
{
    const auto n = static_cast<std::uint32_t>(counter);
    counter = static_cast<std::int32_t>(n + 1U);
    const std::uint32_t x = (n << 13) ^ n;
    const std::uint32_t folded = x * (x * x * 15731U + 789221U) - 771171059U;
    return (folded & 0x7fffffffU) * 0x1p-31;
}

} // namespace tvw::rgs

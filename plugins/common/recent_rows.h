/// What a store recorded in the last few ticks: one row for each, all its variables side by side.
///
/// A hundred tools have ten thousand time lines, each with an end of its own somewhere in memory.
/// To visit all of them in each tick costs more than the tools' arithmetic. So a tick writes one
/// row, and the lines take their values a dozen ticks at a time, or when one of them is read.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace tvw::rgs {

class RecentRows
{
public:
    RecentRows() = default;
    RecentRows(const RecentRows&) = delete;
    RecentRows& operator=(const RecentRows&) = delete;

    /// Before the first `write`. variable: of `size` bytes, plain data, lives as long as this.
    /// Answers its place in a row.
    std::size_t add(const void* variable, std::size_t size)
    {
        const std::size_t place = stride_;
        columns_.push_back(
            {variable, static_cast<std::uint32_t>(place), static_cast<std::uint32_t>(size)});
        stride_ += (size + 7) / 8 * 8;
        bytes_.resize(kRows * stride_);
        return place;
    }

    [[nodiscard]] bool full() const { return count_ == kRows; }

    /// The variables as they are, at time t [s]. Not when full.
    void write(double t)
    {
        std::byte* const row = bytes_.data() + count_ * stride_;
        for (const Column& column : columns_) {
            if (column.size == sizeof(double))
                std::memcpy(row + column.place, column.variable, sizeof(double));
            else
                std::memcpy(row + column.place, column.variable, column.size);
        }
        times_[count_++] = t;
    }

    /// The rows are numbered from 0 for the first that was ever written; `end` is the number of the
    /// next.
    [[nodiscard]] std::uint64_t end() const { return first_ + count_; }

    /// Of the row with that number, or of the oldest that is left.
    [[nodiscard]] std::size_t indexOf(std::uint64_t number) const
    {
        return number > first_ ? static_cast<std::size_t>(number - first_) : 0;
    }

    [[nodiscard]] std::size_t count() const { return count_; }
    [[nodiscard]] double time(std::size_t index) const { return times_[index]; }
    [[nodiscard]] const void* at(std::size_t index, std::size_t place) const
    {
        return bytes_.data() + index * stride_ + place;
    }

    void clear()
    {
        first_ += count_;
        count_ = 0;
    }

private:
    static constexpr std::size_t kRows = 16;

    struct Column
    {
        const void* variable;
        std::uint32_t place, size; ///< [bytes]
    };

    std::vector<Column> columns_;
    std::vector<std::byte> bytes_; ///< row after row
    std::size_t stride_ = 0;
    std::size_t count_ = 0;
    std::uint64_t first_ = 0; ///< number of the oldest row
    std::array<double, kRows> times_{};
};

} // namespace tvw::rgs

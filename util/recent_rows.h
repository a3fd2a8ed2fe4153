/// What a tool recorded in the last few ticks: one row for each, all its variables side by side.
///
/// A hundred tools have ten thousand time lines, each with an end of its own somewhere in memory.
/// To visit all of them in each tick costs more than the tools' arithmetic. So a tick writes one
/// row, and the lines take their values many ticks at a time, or when one of them is read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace tvw {

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
        const auto* const from = static_cast<const std::byte*>(variable);
        if (!columns_.empty() && columns_.back().from + columns_.back().size == from)
            columns_.back().size += size; // neighbours are copied as one
        else
            columns_.push_back({from, size});
        stride_ += size;
        bytes_.resize(kRows * stride_);
        next_ = bytes_.data();
        return place;
    }

    /// Drops the rows and the variables.
    void reset()
    {
        clear();
        columns_.clear();
        stride_ = sizeof(double);
    }

    [[nodiscard]] bool full() const { return count_ == kRows; }

    /// The variables as they are, at time t [s]. Not when full; a row of nothing is none.
    void write(double t)
    {
        if (columns_.empty())
            return;
        std::byte* to = next_;
        std::memcpy(to, &t, sizeof(double));
        to += sizeof(double);
        for (const Column& column : columns_) {
            if (column.size == sizeof(double))
                std::memcpy(to, column.from, sizeof(double));
            else
                std::memcpy(to, column.from, column.size);
            to += column.size;
        }
        next_ = to;
        ++count_;
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
    [[nodiscard]] double time(std::size_t index) const { return at<double>(index, 0); }
    template <class T>
    [[nodiscard]] T at(std::size_t index, std::size_t place) const
    {
        T value;
        std::memcpy(static_cast<void*>(&value), bytes_.data() + index * stride_ + place, sizeof(T));
        return value;
    }

    void clear()
    {
        first_ += count_;
        count_ = 0;
        next_ = bytes_.data();
    }

private:
    static constexpr std::size_t kRows = 32;

    struct Column
    {
        const std::byte* from;
        std::size_t size; ///< [bytes]
    };

    std::vector<Column> columns_;
    std::vector<std::byte> bytes_; ///< row after row
    std::byte* next_ = nullptr;
    std::size_t stride_ = sizeof(double); ///< the time of a row stands first
    std::size_t count_ = 0;
    std::uint64_t first_ = 0; ///< number of the oldest row
};

} // namespace tvw

/// Animated variables: a value as a time line of records.
///
/// A record is a time [s] and a value; the times rise strictly. Between two records a derived class
/// reads its own way (AVar_Linear, AVar_Nearest, AVar_Latest); before the first and after the last
/// record the variable holds that record's value, nothing is extrapolated. An empty one answers its
/// default value.
///
/// Times must be numbers: a NaN given to `set` breaks the order; one given to a reading function
/// answers as the earliest time does.
///
/// Cost: `set` behind the last record is amortised constant and searches nothing; reading near the
/// place of the last reading, or anywhere in a line of evenly spaced records, is constant,
/// elsewhere logarithmic. Cutting keeps the storage, so that a take after it allocates nothing
/// until it grows longer. A copy is linear in bytes, a swap is constant.
///
/// [one thread at a time, reading included: reading moves the cursor]
#pragma once

#include "util/quat.h"
#include "util/recordbuffer.h"
#include "util/transform.h"
#include "util/vector3.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>
#include <utility>

namespace tvw {

namespace detail {

static_assert(std::endian::native == std::endian::little,
              "the binary blocks are little-endian and copied as they stand");

/// A value in a binary block is its bytes without padding; a bool is one byte, 0 or 1.
template <class T>
inline void storeField(std::byte*& at, const T& value)
{
    std::memcpy(at, &value, sizeof(T));
    at += sizeof(T);
}

template <class T>
[[nodiscard]] inline T loadField(const std::byte*& at)
{
    T value{};
    if constexpr (std::is_same_v<T, bool>) {
        value = *at != std::byte{0};
    } else {
        std::memcpy(&value, at, sizeof(T));
    }
    at += sizeof(T);
    return value;
}

} // namespace detail

/// The part that does not depend on how the variable reads between its records. The order of the
/// virtual functions is frozen.
template <class T>
class AVar
{
    static_assert(std::is_trivially_copyable_v<T>);

public:
    struct Record
    {
        double time; ///< [s]
        T value;
    };

    explicit AVar(const T& defaultValue = T{}) : default_(defaultValue) {}
    AVar(const AVar&) = default;
    AVar(AVar&&) noexcept = default;
    AVar& operator=(const AVar&) = default;
    AVar& operator=(AVar&&) noexcept = default;

    /// The record at time t, a.time < t < b.time.
    [[nodiscard]] virtual Record interpolate(const Record& a, const Record& b, double t) const = 0;
    /// Bytes that `store` needs.
    [[nodiscard]] virtual std::size_t binarySize() const;
    /// Writes the binary block and answers binarySize(). If maxSize is below it, only the header
    /// is written, as far as it fits: call again with as many bytes as the answer says.
    virtual std::size_t store(void* buffer, std::size_t maxSize) const;
    /// Reads a block that `store` wrote; size: bytes at buffer, what lies behind the block is left
    /// alone. False, and the variable stays as it was, if it is no such block: an unknown header or
    /// version, a count that does not fit the sizes, times that do not rise or are no scene's.
    virtual bool load(const void* buffer, std::size_t size);
    virtual ~AVar() = default;

    /// The value at time t [s].
    [[nodiscard]] T get(double t) const;

    /// Enters a record, or replaces the value of the one at exactly this time. The reference holds
    /// until the next change of the variable.
    T& set(double t, const T& value)
    {
        if (records_.empty() || t > records_.back().time) {
            return records_.append({t, value}).value;
        }
        return setWithin(t, value);
    }

    /// Index of the record nearest to t, of two equally near the later one; -1 if there is none.
    [[nodiscard]] int find(double t) const;

    /// Keeps the first `count` records; a count of size() or more keeps all.
    void truncate(std::size_t count) noexcept
    {
        if (count < records_.size()) {
            records_.shrink(count);
        }
    }
    /// Drops the records at t and later: what a run that starts at t makes stale.
    void cutFrom(double t) noexcept { truncate(countBefore(t, false)); }
    /// Drops the records later than t; one at exactly t stands.
    void cutBehind(double t) noexcept { truncate(countBefore(t, true)); }
    void clear() noexcept { truncate(0); }
    /// Takes the records of the other up to t, and makes room for as many as it has.
    void copyUpTo(const AVar& other, double t)
    {
        records_.assign(other.records_.data(), other.countBefore(t, true), other.records_.size());
    }
    /// Makes room for `count` records in all.
    void reserve(std::size_t count) { records_.reserve(count); }

    [[nodiscard]] std::size_t size() const noexcept { return records_.size(); }
    [[nodiscard]] bool empty() const noexcept { return records_.empty(); }
    /// All records, by rising time; the span holds until the next change of the variable.
    [[nodiscard]] std::span<const Record> records() const noexcept
    {
        return {records_.data(), records_.size()};
    }

    [[nodiscard]] const T& defaultValue() const noexcept { return default_; }
    void setDefaultValue(const T& value) noexcept { default_ = value; }

    /// Exchanges records and default value, in constant time.
    void swap(AVar& other) noexcept
    {
        records_.swap(other.records_);
        std::swap(default_, other.default_);
    }

private:
    static constexpr std::size_t kRecordBytes = sizeof(double) + sizeof(T);
    static constexpr std::uint32_t kHeaderBytes = 16;
    static constexpr std::uint32_t kVersion = 100;
    static constexpr double kFarthest = 1e15; ///< [s] of a record in a block: no scene is as long

    [[gnu::noinline]] T& setWithin(double t, const T& value);
    /// Index of the last record at or before t. There must be a record at or before t.
    [[nodiscard]] std::size_t lastAtOrBefore(double t) const noexcept;
    /// The same for a t outside of the cursor's neighbourhood.
    [[nodiscard]] std::size_t search(double t) const noexcept;
    /// The same among `count` records from `first` on, of which the first is at or before t.
    [[nodiscard]] std::size_t bisect(std::size_t first, std::size_t count, double t) const noexcept;
    /// Number of records before t, one at exactly t included or not.
    [[nodiscard]] std::size_t countBefore(double t, bool including) const noexcept;

    detail::RecordBuffer<Record> records_;
    T default_;
    /// Where the last reading was: a hint, no part of the value, and it may point past the end.
    mutable std::size_t cursor_ = 0;
    mutable std::uint8_t guessRests_ = 0; ///< searches to come that do not guess the place
};

template <class T>
void swap(AVar<T>& a, AVar<T>& b) noexcept
{
    a.swap(b);
}

/// Keeps of a line what a run that starts at t keeps, the records up to t, and answers what the
/// line was. Only what stays is copied.
template <class Line>
[[nodiscard]] Line retakenFrom(Line& line, double t)
{
    Line before(line.defaultValue());
    before.swap(line);
    line.copyUpTo(before, t);
    return before;
}

template <class T>
T AVar<T>::get(double t) const
{
    if (records_.empty()) {
        return default_;
    }
    if (!(t > records_[0].time)) {
        return records_[0].value;
    }
    const std::size_t i = lastAtOrBefore(t);
    const Record& a = records_[i];
    if (a.time == t || i + 1 == records_.size()) {
        return a.value;
    }
    return interpolate(a, records_[i + 1], t).value;
}

template <class T>
int AVar<T>::find(double t) const
{
    if (records_.empty()) {
        return -1;
    }
    if (!(t > records_[0].time)) {
        return 0;
    }
    const std::size_t i = lastAtOrBefore(t);
    const bool isLast = i + 1 == records_.size();
    if (isLast || records_[i + 1].time - t > t - records_[i].time || records_[i].time == t) {
        return static_cast<int>(i);
    }
    return static_cast<int>(i + 1);
}

template <class T>
T& AVar<T>::setWithin(double t, const T& value)
{
    const std::size_t before = countBefore(t, false);
    if (before < records_.size() && records_[before].time == t) {
        return records_[before].value = value;
    }
    return records_.insert(before, {t, value}).value;
}

template <class T>
std::size_t AVar<T>::lastAtOrBefore(double t) const noexcept
{
    // A run reads where it read last, or a few records on.
    constexpr std::size_t kNear = 8;
    const std::size_t last = records_.size() - 1;
    const Record* const r = records_.data();
    const std::size_t i = std::min(cursor_, last);
    const std::size_t end = std::min(i + kNear, last);
    // One branch for both sides: on random times the first alone would be a toss-up.
    if (static_cast<int>(r[i].time <= t) & static_cast<int>(t < r[end].time)) {
        if (t < r[i + 1].time) {
            return cursor_ = i;
        }
        return cursor_ = bisect(i + 1, end - i - 1, t);
    }
    return cursor_ = search(t);
}

template <class T>
std::size_t AVar<T>::search(double t) const noexcept
{
    constexpr std::uint8_t kRest = 100;
    const Record* const r = records_.data();
    const std::size_t last = records_.size() - 1;
    if (r[last].time <= t) {
        return last;
    }
    if (guessRests_ > 0) {
        --guessRests_;
        return bisect(0, last, t);
    }
    // A take has a record each frame, so its even spacing tells the place. Where it does not, the
    // next searches do without the try.
    const double share = (t - r[0].time) / (r[last].time - r[0].time);
    const auto guess = static_cast<std::size_t>(share * static_cast<double>(last));
    if (guess < last) {
        const std::size_t from = guess == 0 ? 0 : guess - 1;
        const std::size_t to = guess + 2 < last ? guess + 2 : last;
        if (r[from].time <= t && t < r[to].time) {
            return bisect(from, to - from, t);
        }
    }
    guessRests_ = kRest;
    return bisect(0, last, t);
}

template <class T>
std::size_t AVar<T>::bisect(std::size_t first, std::size_t count, double t) const noexcept
{
    const Record* base = records_.data() + first;
    while (count > 1) {
        const std::size_t half = count / 2;
        // A mask, not a branch: on random times every other branch would be mispredicted.
        base += half & -static_cast<std::size_t>(base[half].time <= t);
        count -= half;
    }
    return static_cast<std::size_t>(base - records_.data());
}

template <class T>
std::size_t AVar<T>::countBefore(double t, bool including) const noexcept
{
    if (records_.empty() || !(t >= records_[0].time)) {
        return 0;
    }
    const std::size_t i = lastAtOrBefore(t);
    return records_[i].time == t && !including ? i : i + 1;
}

template <class T>
std::size_t AVar<T>::binarySize() const
{
    return kHeaderBytes + records_.size() * kRecordBytes;
}

template <class T>
std::size_t AVar<T>::store(void* buffer, std::size_t maxSize) const
{
    const std::size_t needed = binarySize();
    const std::uint32_t header[4] = {kHeaderBytes,
                                     static_cast<std::uint32_t>(needed - kHeaderBytes), kVersion,
                                     static_cast<std::uint32_t>(records_.size())};
    if (maxSize < needed) {
        constexpr std::size_t kWithoutCount = 12;
        std::memcpy(buffer, header, maxSize < kWithoutCount ? maxSize : kWithoutCount);
        return needed;
    }
    std::memcpy(buffer, header, kHeaderBytes);
    std::byte* at = static_cast<std::byte*>(buffer) + kHeaderBytes;
    for (const Record& record : records()) {
        detail::storeField(at, record.time);
        detail::storeField(at, record.value);
    }
    return needed;
}

template <class T>
bool AVar<T>::load(const void* buffer, std::size_t size)
{
    std::uint32_t header[4] = {};
    if (buffer == nullptr || size < kHeaderBytes) {
        return false;
    }
    std::memcpy(header, buffer, kHeaderBytes);
    const auto [headerBytes, bodyBytes, version, count] = header;
    if (headerBytes != kHeaderBytes || version != kVersion || bodyBytes > size - kHeaderBytes ||
        std::uint64_t{count} * kRecordBytes != bodyBytes) {
        return false;
    }
    detail::RecordBuffer<Record> loaded;
    loaded.reserve(count);
    const std::byte* at = static_cast<const std::byte*>(buffer) + kHeaderBytes;
    for (std::uint32_t i = 0; i < count; ++i) {
        const auto time = detail::loadField<double>(at);
        const T value = detail::loadField<T>(at);
        const bool rises = loaded.empty() || time > loaded.back().time;
        if (!rises || !(std::abs(time) <= kFarthest)) {
            return false;
        }
        loaded.append({time, value});
    }
    records_.swap(loaded);
    return true;
}

/// Reads on the straight line between the two records: numbers, and vectors component by component.
/// An int is reckoned in double and truncated toward zero. A bool counts as 0 or 1 and is false
/// only where the line is exactly 0, so that it is true everywhere between a true and a false one.
template <class T>
class AVar_Linear : public AVar<T>
{
public:
    using typename AVar<T>::Record;
    using AVar<T>::AVar;

    [[nodiscard]] Record interpolate(const Record& a, const Record& b, double t) const override
    {
        const double run = t - a.time;
        const double whole = b.time - a.time;
        if constexpr (std::is_same_v<T, bool>) {
            const double from = a.value ? 1.0 : 0.0;
            const double to = b.value ? 1.0 : 0.0;
            return {t, from + (to - from) * run / whole != 0.0};
        } else if constexpr (std::is_arithmetic_v<T>) {
            const auto from = static_cast<double>(a.value);
            const auto to = static_cast<double>(b.value);
            return {t, static_cast<T>(from + (to - from) * run / whole)};
        } else {
            return {t, a.value + (b.value - a.value) * run / whole};
        }
    }
};

/// Answers the nearer record, of two equally near the later one. Rotations are read this way: they
/// are never blended.
template <class T>
class AVar_Nearest : public AVar<T>
{
public:
    using typename AVar<T>::Record;
    using AVar<T>::AVar;

    [[nodiscard]] Record interpolate(const Record& a, const Record& b, double t) const override
    {
        return b.time - t > t - a.time ? a : b;
    }
};

/// Answers the earlier record: a state that holds until it changes.
template <class T>
class AVar_Latest : public AVar<T>
{
public:
    using typename AVar<T>::Record;
    using AVar<T>::AVar;

    [[nodiscard]] Record interpolate(const Record& a, const Record& /*b*/,
                                     double /*t*/) const override
    {
        return a;
    }
};

} // namespace tvw

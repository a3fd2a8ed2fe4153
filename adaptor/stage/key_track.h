/// A value over time as sorted keys.
///
/// Made for takes: a key behind the last one is appended in constant time, a read near the last
/// read costs a step of a cursor, and a state of the whole track is remembered and put back in a
/// time that does not depend on the number of frames (`Content`).
///
/// T is plain data for which `interpolate(a, b, f)` is declared. The value at a key's own time is
/// the value written, bit for bit. Main thread only, reads too: the cursor moves.
#pragma once

#include "adaptor/stage/key_blocks.h"
#include "adaptor/stage/key_interpolation.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tvw::rgs::stage {

template <class T>
class KeyTrack
{
public:
    using Key = TrackKey<T>;

private:
    using Block = detail::KeyBlock<T>;
    using Pool = detail::KeyBlockPool<T>;

    struct Entry
    {
        Block* block;
        std::size_t first; ///< keys before this block
    };

    struct Place
    {
        std::size_t block;
        std::uint32_t key;
    };

public:
    /// All keys of a track at one moment. Costs one pointer for each few hundred keys: the keys
    /// themselves are shared until one side changes them.
    class Content
    {
    public:
        Content() = default;
        Content(Content&& other) noexcept { swap(other); }
        Content& operator=(Content&& other) noexcept
        {
            Content taken(std::move(other));
            swap(taken);
            return *this;
        }
        ~Content()
        {
            for (const Entry& entry : entries_)
                Pool::instance().drop(entry.block);
        }

    private:
        friend class KeyTrack;
        void swap(Content& other) noexcept { entries_.swap(other.entries_); }
        std::vector<Entry> entries_;
    };

    KeyTrack() = default;
    KeyTrack(const KeyTrack&) = delete;
    KeyTrack& operator=(const KeyTrack&) = delete;

    [[nodiscard]] bool empty() const noexcept { return end_ == nullptr; }
    [[nodiscard]] std::size_t size() const noexcept
    {
        settle();
        return countKeys();
    }

    /// Asks for the memory of the next key.
    void fetchEnd() const noexcept
    {
        for (std::size_t byte = 0; byte <= sizeof(Key); byte += 64)
            __builtin_prefetch(reinterpret_cast<const char*>(end_) + byte, 1);
    }

    /// The i-th key in the order of time, i < size().
    [[nodiscard]] const Key& key(std::size_t i) const noexcept
    {
        settle();
        const std::vector<Entry>& entries = content_.entries_;
        const auto after =
            std::upper_bound(entries.begin(), entries.end(), i,
                             [](std::size_t index, const Entry& e) { return index < e.first; });
        const Entry& entry = *(after - 1);
        return entry.block->keys()[i - entry.first];
    }

    [[nodiscard]] Flicks lastTime() const noexcept { return end_[-1].time; } ///< not empty()

    [[nodiscard]] bool hasKeyAt(Flicks time) const noexcept
    {
        return !empty() && time <= lastTime() && keyAt(seek(time)).time == time;
    }

    /// The index of the first key at or behind `time`; size() when there is none.
    [[nodiscard]] std::size_t indexAtOrBehind(Flicks time) const noexcept
    {
        if (empty() || time > lastTime())
            return size();
        const Place place = seek(time);
        return content_.entries_[place.block].first + place.key;
    }

    /// Before the first key its value, behind the last key that one's. Not for an empty track.
    [[nodiscard]] T at(Flicks time) const noexcept
    {
        if (time >= lastTime())
            return end_[-1].value;
        const Place place = seek(time);
        const Key& next = keyAt(place);
        if (next.time == time || (place.block == 0 && place.key == 0))
            return next.value;
        const Key& before = keyAt(previous(place));
        const double f =
            static_cast<double>(time - before.time) / static_cast<double>(next.time - before.time);
        return interpolate(before.value, next.value, f);
    }

    /// Calls f(key) for each key in the order of time.
    template <class F>
    void forEach(F&& f) const
    {
        settle();
        for (const Entry& entry : content_.entries_) {
            for (std::uint32_t i = 0; i < entry.block->count; ++i)
                f(entry.block->keys()[i]);
        }
    }

    /// Lays a key; one that stands at that time already is replaced.
    void write(Flicks time, const T& value)
    {
        if (empty() || time > end_[-1].time) {
            append(time, value);
        } else {
            const Place place = seek(time);
            if (const Key& present = keyAt(place); present.time == time) {
                // A run lays its start on a key that mostly says the same: no block is copied.
                if (std::memcmp(&present.value, &value, sizeof(T)) == 0)
                    return;
                writable(place.block)->keys()[place.key].value = value;
                refreshEnd(); // the last block may be a copy now
            } else {
                insert(place, Key{time, value});
            }
        }
    }

    /// Removes the key at exactly that time; false when there is none.
    bool remove(Flicks time)
    {
        if (!hasKeyAt(time))
            return false;
        const Place place = seek(time);
        Block* const block = writable(place.block);
        Key* const gap = block->keys() + place.key;
        move(gap, gap + 1, block->count - place.key - 1);
        if (--block->count == 0) {
            Pool::instance().drop(block);
            content_.entries_.erase(content_.entries_.begin() + place.block);
        }
        renumber(place.block);
        refreshEnd();
        return true;
    }

    /// Removes the keys later than `time`; one at exactly that time stands.
    void cutBehind(Flicks time)
    {
        if (empty() || time >= lastTime())
            return;
        Place place = seek(time);
        if (keyAt(place).time == time)
            place = next(place);
        const std::size_t kept = place.block + (place.key != 0 ? 1 : 0);
        while (content_.entries_.size() > kept) {
            Pool::instance().drop(content_.entries_.back().block);
            content_.entries_.pop_back();
        }
        if (place.key != 0)
            writable(place.block, place.key)->count = place.key;
        refreshEnd();
    }

    void clear() noexcept
    {
        Content none;
        exchange(none);
    }

    /// Changes every value in place: f(value&).
    template <class F>
    void transformValues(F&& f)
    {
        settle();
        for (std::size_t b = 0; b < content_.entries_.size(); ++b) {
            Block* const block = writable(b);
            for (std::uint32_t i = 0; i < block->count; ++i)
                f(block->keys()[i].value);
        }
        refreshEnd();
    }

    /// The state of now, to be put back with `exchange`.
    [[nodiscard]] Content content()
    {
        settle();
        Content copy;
        copy.entries_ = content_.entries_;
        for (const Entry& entry : copy.entries_)
            ++entry.block->users;
        limit_ = end_; // the last block is shared from here on
        return copy;
    }

    /// Swaps the whole state. Constant time.
    void exchange(Content& other) noexcept
    {
        settle();
        content_.swap(other);
        cursor_ = {};
        refreshEnd();
    }

    /// Makes room for `count` more keys at the end of each of `tracks` tracks that are about to be
    /// written: appending them then takes no fresh block. The tracks' own tables are grown by
    /// `reserve`, each.
    static void reserveBlocks(std::size_t tracks, std::size_t count)
    {
        constexpr std::uint32_t kLargest = Pool::kClasses - 1;
        for (std::uint32_t c = 0; c < kLargest; ++c)
            Pool::instance().reserve(c, tracks);
        Pool::instance().reserve(kLargest, tracks * (2 + count / Pool::capacityOf(kLargest)));
    }

    /// Memory that waits for the next take of all tracks of this kind [bytes].
    [[nodiscard]] static std::size_t idleBytes() noexcept { return Pool::instance().freeBytes(); }

    /// Gives back the memory that past takes of all tracks of this kind have left for the next.
    static void trimBlocks() noexcept { Pool::instance().trim(); }

    /// Makes room in this track's table for `count` more keys at the end.
    void reserve(std::size_t count)
    {
        const std::size_t blocks = count / Pool::capacityOf(Pool::kClasses - 1);
        content_.entries_.reserve(content_.entries_.size() + blocks + Pool::kClasses + 1);
    }

private:
    static void move(Key* to, const Key* from, std::size_t count) noexcept
    {
        std::memmove(static_cast<void*>(to), from, count * sizeof(Key));
    }

    [[nodiscard]] const Key& keyAt(Place place) const noexcept
    {
        return content_.entries_[place.block].block->keys()[place.key];
    }

    [[nodiscard]] Place previous(Place place) const noexcept
    {
        if (place.key != 0)
            return {place.block, place.key - 1};
        return {place.block - 1, content_.entries_[place.block - 1].block->count - 1};
    }

    [[nodiscard]] Place next(Place place) const noexcept
    {
        if (place.key + 1 < content_.entries_[place.block].block->count)
            return {place.block, place.key + 1};
        return {place.block + 1, 0};
    }

    /// The first key at or behind `time`, which is not behind the last key.
    [[nodiscard]] Place seek(Flicks time) const noexcept
    {
        settle();
        if (const Place near = cursor_; isFirstAtOrBehind(near, time))
            return near;
        if (const Place near = cursor_; isInside(near)) {
            const Place step = next(near);
            if (isFirstAtOrBehind(step, time))
                return cursor_ = step;
        }
        return cursor_ = search(time);
    }

    [[nodiscard]] bool isInside(Place place) const noexcept
    {
        return place.block < content_.entries_.size() &&
               place.key < content_.entries_[place.block].block->count;
    }

    [[nodiscard]] bool isFirstAtOrBehind(Place place, Flicks time) const noexcept
    {
        if (!isInside(place) || keyAt(place).time < time)
            return false;
        return (place.block == 0 && place.key == 0) || keyAt(previous(place)).time < time;
    }

    [[nodiscard]] Place search(Flicks time) const noexcept
    {
        const std::vector<Entry>& entries = content_.entries_;
        const auto found =
            std::partition_point(entries.begin(), entries.end(), [&](const Entry& e) {
                return e.block->keys()[e.block->count - 1].time < time;
            });
        const Key* const keys = found->block->keys();
        const Key* const key = std::partition_point(keys, keys + found->block->count,
                                                    [&](const Key& k) { return k.time < time; });
        return {static_cast<std::size_t>(found - entries.begin()),
                static_cast<std::uint32_t>(key - keys)};
    }

    void append(Flicks time, const T& value)
    {
        if (end_ == limit_) [[unlikely]]
            openEnd();
        end_->time = time;
        end_->value = value;
        ++end_;
    }

    /// Tells the last block how many keys it holds. `append` leaves that: it would fetch the table
    /// and the block's head too, which no other write of a take looks at.
    void settle() const noexcept
    {
        if (end_ == nullptr)
            return;
        Block* const last = content_.entries_.back().block;
        last->count = static_cast<std::uint32_t>(end_ - last->keys());
    }

    /// Of a settled track.
    [[nodiscard]] std::size_t countKeys() const noexcept
    {
        const std::vector<Entry>& entries = content_.entries_;
        return entries.empty() ? 0 : entries.back().first + entries.back().block->count;
    }

    /// Makes the last block one that can take a key.
    [[gnu::noinline]] void openEnd()
    {
        settle();
        std::vector<Entry>& entries = content_.entries_;
        if (entries.empty() || entries.back().block->full()) {
            const std::uint32_t wanted = std::min<std::uint32_t>(
                static_cast<std::uint32_t>(entries.size()), Pool::kClasses - 1);
            if (entries.size() == entries.capacity())
                entries.reserve(2 * entries.size() + 4);
            const std::size_t before = countKeys();
            entries.push_back({Pool::instance().take(wanted), before});
        } else {
            writable(entries.size() - 1);
        }
        refreshEnd();
    }

    void insert(Place place, const Key& key)
    {
        Block* block = writable(place.block);
        if (block->full()) {
            splitBlock(place.block);
            if (place.key > block->count) {
                place = {place.block + 1, place.key - block->count};
                block = content_.entries_[place.block].block;
            }
        }
        Key* const gap = block->keys() + place.key;
        move(gap + 1, gap, block->count - place.key);
        *gap = key;
        ++block->count;
        renumber(place.block);
        refreshEnd();
    }

    /// The second half of a block goes into one of its own.
    void splitBlock(std::size_t index)
    {
        std::vector<Entry>& entries = content_.entries_;
        entries.reserve(entries.size() + 1);
        Block* const block = entries[index].block;
        Block* const second = Pool::instance().take(Pool::kClasses - 1);
        const std::uint32_t half = block->count / 2;
        second->count = block->count - half;
        move(second->keys(), block->keys() + half, second->count);
        block->count = half;
        entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(index) + 1,
                       {second, entries[index].first + half});
    }

    Block* writable(std::size_t index)
    {
        return writable(index, content_.entries_[index].block->count);
    }

    /// The block for this state alone; a shared one is copied, of its keys the first `kept`.
    Block* writable(std::size_t index, std::uint32_t kept)
    {
        Entry& entry = content_.entries_[index];
        if (entry.block->users > 1) {
            Block* const own = Pool::instance().take(entry.block->sizeClass);
            move(own->keys(), entry.block->keys(), kept);
            own->count = kept;
            --entry.block->users;
            entry.block = own;
        }
        return entry.block;
    }

    void renumber(std::size_t from) noexcept
    {
        std::vector<Entry>& entries = content_.entries_;
        std::size_t first =
            from == 0 ? 0 : entries[from - 1].first + entries[from - 1].block->count;
        for (std::size_t b = from; b < entries.size(); ++b) {
            entries[b].first = first;
            first += entries[b].block->count;
        }
    }

    void refreshEnd() noexcept
    {
        end_ = limit_ = nullptr;
        if (!content_.entries_.empty()) {
            Block* const block = content_.entries_.back().block;
            end_ = block->keys() + block->count;
            limit_ = block->users > 1 ? end_ : block->keys() + block->capacity;
        }
    }

    Key* end_ = nullptr;   ///< one behind the last key; null: no key
    Key* limit_ = nullptr; ///< where the last block ends, or end_ where it may not be written to
    Content content_;      ///< but for the count of the last block, see `settle`
    mutable Place cursor_{0, 0};
};

} // namespace tvw::rgs::stage

/// The contiguous storage under AVar: a growing array of plain records.
///
/// What a long take costs is the first touch of fresh memory, not the stores. So the block grows
/// through realloc, which moves a large block by remapping its pages where the platform can, and
/// storage that was cut stays for the next take.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace tvw::detail {

template <class Record>
class RecordBuffer
{
    static_assert(std::is_trivially_copyable_v<Record>);

public:
    RecordBuffer() = default;
    RecordBuffer(const RecordBuffer& other) { assign(other.data_, other.size(), other.size()); }
    RecordBuffer(RecordBuffer&& other) noexcept { swap(other); }
    RecordBuffer& operator=(const RecordBuffer& other)
    {
        if (this != &other) {
            assign(other.data_, other.size(), other.size());
        }
        return *this;
    }
    RecordBuffer& operator=(RecordBuffer&& other) noexcept
    {
        RecordBuffer taken(std::move(other));
        swap(taken);
        return *this;
    }
    ~RecordBuffer() { std::free(data_); }

    void swap(RecordBuffer& other) noexcept
    {
        std::swap(data_, other.data_);
        std::swap(end_, other.end_);
        std::swap(capacityEnd_, other.capacityEnd_);
    }

    [[nodiscard]] std::size_t size() const noexcept
    {
        return static_cast<std::size_t>(end_ - data_);
    }
    [[nodiscard]] bool empty() const noexcept { return end_ == data_; }
    [[nodiscard]] std::size_t capacity() const noexcept
    {
        return static_cast<std::size_t>(capacityEnd_ - data_);
    }
    [[nodiscard]] Record* data() noexcept { return data_; }
    [[nodiscard]] const Record* data() const noexcept { return data_; }
    [[nodiscard]] Record& operator[](std::size_t i) noexcept { return data_[i]; }
    [[nodiscard]] const Record& operator[](std::size_t i) const noexcept { return data_[i]; }
    [[nodiscard]] Record& back() noexcept { return end_[-1]; }
    [[nodiscard]] const Record& back() const noexcept { return end_[-1]; }

    /// record may stand in this buffer.
    Record& append(const Record& record)
    {
        if (end_ == capacityEnd_) {
            return appendGrown(record);
        }
        *end_ = record;
        return *end_++;
    }

    /// record may stand in this buffer; index is 0 to size().
    Record& insert(std::size_t index, const Record& record)
    {
        const Record kept = record;
        append(kept);
        std::memmove(static_cast<void*>(data_ + index + 1), data_ + index,
                     (size() - 1 - index) * sizeof(Record));
        data_[index] = kept;
        return data_[index];
    }

    /// Takes `count` records from elsewhere, with room for `room` in all.
    void assign(const Record* from, std::size_t count, std::size_t room)
    {
        reserve(room);
        if (count != 0) {
            std::memcpy(static_cast<void*>(data_), from, count * sizeof(Record));
        }
        end_ = data_ + count;
    }

    /// count is at most size(). The capacity stays.
    void shrink(std::size_t count) noexcept { end_ = data_ + count; }

    /// Makes room for `count` records; throws std::bad_alloc and stays as it was where there is
    /// none.
    void reserve(std::size_t count)
    {
        if (count > capacity()) {
            reallocate(count);
        }
    }

private:
    [[gnu::noinline]] Record& appendGrown(const Record& record)
    {
        constexpr std::size_t kFirstBlock = 64;
        const Record kept = record;
        reallocate(capacity() == 0 ? kFirstBlock : 2 * capacity());
        *end_ = kept;
        return *end_++;
    }

    void reallocate(std::size_t count)
    {
        const std::size_t used = size();
        void* const block = count > static_cast<std::size_t>(-1) / sizeof(Record)
                                ? nullptr
                                : std::realloc(static_cast<void*>(data_), count * sizeof(Record));
        if (block == nullptr) {
            throw std::bad_alloc();
        }
        data_ = static_cast<Record*>(block);
        end_ = data_ + used;
        capacityEnd_ = data_ + count;
    }

    Record* data_ = nullptr;
    Record* end_ = nullptr;
    Record* capacityEnd_ = nullptr;
};

} // namespace tvw::detail

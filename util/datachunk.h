/// The tagged container of which tools build what they save.
///
/// A chunk is a named node with a payload of bytes and an ordered list of member chunks, held by
/// value. Names need not be unique: a lookup takes the first. Copying a chunk copies its tree.
///
/// Binary form, little-endian, no alignment: payload size, member count and name length as signed
/// 32-bit numbers, then the name, the payload, and the members in their own binary form.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace tvw {

class DataChunk
{
public:
    static constexpr std::size_t kMaxNameLength = 256; ///< [bytes]
    /// Levels of members below a root; a block that nests deeper is no valid block.
    static constexpr int kMaxDepth = 200;

    DataChunk() = default;
    /// Copies the bytes; null or a size of 0 gives an empty payload. A name is cut behind
    /// kMaxNameLength bytes.
    DataChunk(std::string name, const void* bytes, std::size_t size);
    /// Reads a binary form of which `size` bytes can be read; what lies behind it is ignored. A
    /// null block, and one that is not whole and sound down to its last member, gives an empty
    /// chunk, so that every reading of a member falls back to its default.
    DataChunk(const void* block, std::size_t size);

    DataChunk(const DataChunk& other);
    DataChunk(DataChunk&&) noexcept = default;
    DataChunk& operator=(const DataChunk& other);
    DataChunk& operator=(DataChunk&&) noexcept = default;
    ~DataChunk() = default;

    void addMember(DataChunk member);
    /// Adds a member whose payload is the bytes of the value; a bool is one byte, 0 or 1.
    template <class T>
    void addValue(std::string name, const T& value);

    [[nodiscard]] bool hasMember(std::string_view name) const noexcept;
    /// The first member of that name; if there is none, an empty chunk that all share.
    [[nodiscard]] const DataChunk& member(std::string_view name) const noexcept;
    [[nodiscard]] std::size_t memberCount() const noexcept { return members_.size(); }
    /// i below memberCount().
    [[nodiscard]] const DataChunk& memberAt(std::size_t i) const noexcept { return members_[i]; }

    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    /// Not aligned for anything; holds until the chunk changes.
    [[nodiscard]] const void* payload() const noexcept { return payload_.data(); }
    [[nodiscard]] std::size_t payloadSize() const noexcept { return payload_.size(); } ///< [bytes]
    /// Takes the value from the first bytes of the payload; any byte but 0 is a true bool. False,
    /// and `out` stays as it was, if the payload is too short: `chunk.member("x").readValue(x)`
    /// leaves x at its default where the member is missing.
    template <class T>
    bool readValue(T& out) const;

    /// The binary form, in a buffer of this chunk that holds until its next `serialize`, its change
    /// or its end. Null and size 0 if the form cannot say it: a payload of 2 GiB or more, or a
    /// deeper nesting than kMaxDepth. `size` may be null.
    const void* serialize(std::size_t* size);

private:
    class Reader;

    /// Bytes of the binary form; 0 if the form cannot say the tree.
    [[nodiscard]] std::size_t serializedSize(int depth) const noexcept;
    std::byte* writeTo(std::byte* at) const noexcept;

    std::string name_;
    std::vector<std::byte> payload_;
    std::vector<DataChunk> members_;
    std::vector<std::byte> scratch_; ///< the last binary form; no part of the value
};

template <class T>
void DataChunk::addValue(std::string name, const T& value)
{
    static_assert(std::is_trivially_copyable_v<T> && !std::is_pointer_v<T>);
    addMember(DataChunk(std::move(name), &value, sizeof(T)));
}

template <class T>
bool DataChunk::readValue(T& out) const
{
    static_assert(std::is_trivially_copyable_v<T> && !std::is_pointer_v<T>);
    if (payload_.size() < sizeof(T)) {
        return false;
    }
    if constexpr (std::is_same_v<T, bool>) {
        out = payload_[0] != std::byte{0};
    } else {
        std::memcpy(&out, payload_.data(), sizeof(T));
    }
    return true;
}

} // namespace tvw

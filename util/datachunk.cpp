#include "util/datachunk.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace tvw {

namespace {

struct Header
{
    std::int32_t payloadSize;
    std::int32_t memberCount;
    std::int32_t nameLength;
};
static_assert(sizeof(Header) == 12);

constexpr auto kMaxCount = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());

} // namespace

/// Walks a binary form and never reads behind its bytes.
class DataChunk::Reader
{
public:
    Reader(const void* block, std::size_t size)
        : at_(static_cast<const std::byte*>(block)), left_(size)
    {
    }

    /// False if the chunk or one below it is not whole and sound; `out` is then half filled.
    [[nodiscard]] bool read(DataChunk& out, int depth)
    {
        Header header{};
        if (depth > kMaxDepth || !takeHeader(header)) {
            return false;
        }
        out.name_.assign(reinterpret_cast<const char*>(take(header.nameLength)),
                         static_cast<std::size_t>(header.nameLength));
        const std::byte* const payload = take(header.payloadSize);
        out.payload_.assign(payload, payload + header.payloadSize);
        // Each member that any level still expects takes a header: what a block promises beyond
        // its bytes costs no memory.
        pending_ += static_cast<std::size_t>(header.memberCount);
        if (pending_ > left_ / sizeof(Header)) {
            return false;
        }
        out.members_.reserve(static_cast<std::size_t>(header.memberCount));
        for (std::int32_t i = 0; i < header.memberCount; ++i) {
            --pending_;
            if (!read(out.members_.emplace_back(), depth + 1)) {
                return false;
            }
        }
        return true;
    }

private:
    /// True if the sizes are sound and the bytes of name and payload are there.
    [[nodiscard]] bool takeHeader(Header& header)
    {
        if (left_ < sizeof(Header)) {
            return false;
        }
        std::memcpy(&header, take(sizeof(Header)), sizeof(Header));
        return header.payloadSize >= 0 && header.memberCount >= 0 && header.nameLength >= 0 &&
               static_cast<std::size_t>(header.nameLength) <= kMaxNameLength &&
               static_cast<std::size_t>(header.nameLength) +
                       static_cast<std::size_t>(header.payloadSize) <=
                   left_;
    }

    const std::byte* take(std::int32_t size)
    {
        const std::byte* const begin = at_;
        at_ += size;
        left_ -= static_cast<std::size_t>(size);
        return begin;
    }

    const std::byte* at_;
    std::size_t left_;
    std::size_t pending_ = 0; ///< members that were counted in and not yet read
};

DataChunk::DataChunk(std::string name, const void* bytes, std::size_t size) : name_(std::move(name))
{
    name_.resize(std::min(name_.size(), kMaxNameLength));
    if (bytes != nullptr) {
        const auto* const begin = static_cast<const std::byte*>(bytes);
        payload_.assign(begin, begin + size);
    }
}

DataChunk::DataChunk(const void* block, std::size_t size)
{
    if (block != nullptr && !Reader(block, size).read(*this, 0)) {
        *this = DataChunk();
    }
}

DataChunk::DataChunk(const DataChunk& other)
    : name_(other.name_), payload_(other.payload_), members_(other.members_)
{
}

DataChunk& DataChunk::operator=(const DataChunk& other)
{
    // By a copy, since `other` may be a member of this one.
    return *this = DataChunk(other);
}

void DataChunk::addMember(DataChunk member)
{
    members_.push_back(std::move(member));
}

bool DataChunk::hasMember(std::string_view name) const noexcept
{
    return std::any_of(members_.begin(), members_.end(),
                       [name](const DataChunk& member) { return member.name_ == name; });
}

const DataChunk& DataChunk::member(std::string_view name) const noexcept
{
    static const DataChunk none;
    const auto found = std::find_if(members_.begin(), members_.end(),
                                    [name](const DataChunk& m) { return m.name_ == name; });
    return found == members_.end() ? none : *found;
}

const void* DataChunk::serialize(std::size_t* size)
{
    const std::size_t needed = serializedSize(0);
    scratch_.resize(needed);
    if (size != nullptr) {
        *size = needed;
    }
    if (needed == 0) {
        return nullptr;
    }
    writeTo(scratch_.data());
    return scratch_.data();
}

std::size_t DataChunk::serializedSize(int depth) const noexcept
{
    if (depth > kMaxDepth || payload_.size() > kMaxCount || members_.size() > kMaxCount) {
        return 0;
    }
    std::size_t size = sizeof(Header) + name_.size() + payload_.size();
    for (const DataChunk& member : members_) {
        const std::size_t below = member.serializedSize(depth + 1);
        if (below == 0) {
            return 0;
        }
        size += below;
    }
    return size;
}

std::byte* DataChunk::writeTo(std::byte* at) const noexcept
{
    const auto put = [&at](const void* bytes, std::size_t size) {
        if (size != 0) {
            std::memcpy(at, bytes, size);
            at += size;
        }
    };
    const Header header{static_cast<std::int32_t>(payload_.size()),
                        static_cast<std::int32_t>(members_.size()),
                        static_cast<std::int32_t>(name_.size())};
    put(&header, sizeof(Header));
    put(name_.data(), name_.size());
    put(payload_.data(), payload_.size());
    for (const DataChunk& member : members_) {
        at = member.writeTo(at);
    }
    return at;
}

} // namespace tvw

#include "adaptor/stage/glb_writer.h"

#include <array>
#include <bit>
#include <charconv>
#include <cstring>
#include <limits>
#include <utility>

namespace tvw::rgs::stage {

static_assert(std::endian::native == std::endian::little, "the file's byte order is the machine's");

namespace {

constexpr std::size_t kHeader = 12;
constexpr std::size_t kChunkHeader = 8;
constexpr std::uint32_t kMagic = 0x46546C67;     // "glTF"
constexpr std::uint32_t kJsonChunk = 0x4E4F534A; // "JSON"
constexpr std::uint32_t kBinaryChunk = 0x004E4942;
constexpr std::size_t kAlignment = 8; ///< of views: doubles stand in them

/// Room that is kept for the JSON. A longer one costs a move of the buffer, no more.
constexpr std::size_t kJsonRoom = std::size_t{1} << 20;

void put(std::string& out, std::size_t at, std::size_t value)
{
    const auto word = static_cast<std::uint32_t>(value);
    std::memcpy(out.data() + at, &word, sizeof word);
}

} // namespace

GlbWriter::GlbWriter(std::size_t expectedBytes) : room_(kJsonRoom)
{
    file_.reserve(room_ + expectedBytes + kAlignment);
    file_.resize(room_);
}

void GlbWriter::beginView()
{
    file_.resize((file_.size() + kAlignment - 1) / kAlignment * kAlignment);
    viewBegin_ = file_.size();
}

std::size_t GlbWriter::endView(ViewTarget target)
{
    Json view = {{"buffer", 0},
                 {"byteOffset", viewBegin_ - room_},
                 {"byteLength", file_.size() - viewBegin_}};
    if (target != ViewTarget::None)
        view["target"] = static_cast<int>(target);
    views_.push_back(std::move(view));
    return views_.size() - 1;
}

std::size_t GlbWriter::addAccessor(std::size_t view, std::size_t count, ComponentType component,
                                   const char* type, Json minimum, Json maximum)
{
    Json accessor = {{"bufferView", view},
                     {"componentType", static_cast<int>(component)},
                     {"count", count},
                     {"type", type}};
    if (!minimum.is_null()) {
        accessor["min"] = std::move(minimum);
        accessor["max"] = std::move(maximum);
    }
    accessors_.push_back(std::move(accessor));
    return accessors_.size() - 1;
}

bool GlbWriter::finish(std::string_view& file)
{
    const std::size_t length = file_.size() - room_;
    file_.resize(room_ + (length + 3) / 4 * 4);
    const std::size_t chunk = file_.size() - room_;
    if (length != 0)
        root["buffers"] = Json::array({{{"byteLength", length}}});
    if (!views_.empty())
        root["bufferViews"] = std::move(views_);
    if (!accessors_.empty())
        root["accessors"] = std::move(accessors_);
    std::string text = root.dump();
    text.append((4 - text.size() % 4) % 4, ' ');

    const std::size_t front =
        kHeader + kChunkHeader + text.size() + (length != 0 ? kChunkHeader : 0);
    if (front > room_) {
        file_.insert(0, front - room_, '\0');
        room_ = front;
    }
    const std::size_t total = front + chunk;
    if (total > std::numeric_limits<std::uint32_t>::max())
        return false;
    std::size_t at = room_ - front;
    for (const std::size_t word :
         {std::size_t{kMagic}, std::size_t{2}, total, text.size(), std::size_t{kJsonChunk}}) {
        put(file_, at, word);
        at += 4;
    }
    std::memcpy(file_.data() + at, text.data(), text.size());
    if (length != 0) {
        put(file_, room_ - kChunkHeader, chunk);
        put(file_, room_ - kChunkHeader + 4, kBinaryChunk);
    }
    file = std::string_view(file_).substr(room_ - front);
    return true;
}

std::uint64_t fingerprintOf(std::string_view bytes) noexcept
{
    // Four chains, so that the multiplications overlap. The factor is 2^64 / golden ratio, odd.
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15;
    std::array<std::uint64_t, 4> chain{1, 2, 3, 4};
    const auto add = [&](std::size_t i, std::uint64_t word) {
        chain[i] = std::rotl((chain[i] ^ word) * kFactor, 29);
    };
    std::size_t at = 0;
    for (; at + 32 <= bytes.size(); at += 32) {
        for (std::size_t i = 0; i < 4; ++i) {
            std::uint64_t word = 0;
            std::memcpy(&word, bytes.data() + at + 8 * i, sizeof word);
            add(i, word);
        }
    }
    for (; at < bytes.size(); ++at)
        add(at % 4, static_cast<unsigned char>(bytes[at]));
    add(0, bytes.size());
    for (std::size_t i = 1; i < 4; ++i)
        add(0, chain[i]);
    return chain[0];
}

std::string hexOf(std::uint64_t value)
{
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, 16);
    return {digits.data(), end.ptr};
}

bool isUtf8(std::string_view text) noexcept
{
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const std::size_t more = lead < 0x80   ? 0
                                 : lead < 0xC2 ? 4
                                 : lead < 0xE0 ? 1
                                 : lead < 0xF0 ? 2
                                 : lead < 0xF5 ? 3
                                               : 4;
        if (more > 3 || text.size() - i <= more)
            return false;
        for (std::size_t k = 1; k <= more; ++k) {
            if ((static_cast<unsigned char>(text[i + k]) & 0xC0U) != 0x80U)
                return false;
        }
        const auto second = more > 0 ? static_cast<unsigned char>(text[i + 1]) : 0U;
        const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
        const bool beyond = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
        if (overlong || beyond)
            return false;
        i += more + 1;
    }
    return true;
}

std::string asUtf8(std::string_view text)
{
    const std::string quoted =
        Json(std::string(text)).dump(-1, ' ', false, Json::error_handler_t::replace);
    return Json::parse(quoted).get<std::string>();
}

} // namespace tvw::rgs::stage

/// The file of a take's journal: blocks, one behind the other, each with its own checksum.
///
/// Numbers are little-endian; a text is its length (32 bits) and its bytes. A block is its kind,
/// the length of its content and the checksum of the content (64-bit FNV-1a), then the content. A
/// block that was torn by a crash fails its checksum: reading ends before it.
///
///     header  version 1, what the take was made with (TakeOrigin), tools with their inputs
///     frames  for each frame its time [s] and the raw values of all inputs of all tools, in the
///     order
///             of the header. The first frame of the file is that of the start: its values are
///             those with which the tools began.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace tvw::rgs::stage::journalformat {

inline constexpr char kMagic[8] = {'R', 'G', 'S', 'T', 'A', 'K', 'E', '\n'};
inline constexpr std::uint32_t kVersion = 1;
inline constexpr std::uint32_t kHeaderBlock = 1;
inline constexpr std::uint32_t kFramesBlock = 2;
inline constexpr std::size_t kBlockHead = 4 + 4 + 8;
inline constexpr const char* kEnding = ".rgj";
inline constexpr const char* kSnapshotEnding = ".glb";

/// What a take was made with.
struct TakeOrigin
{
    double framesPerSecond = 0.0;
    double step = 0.0;                       ///< [s]
    double start = 0.0;                      ///< [s]
    double rangeStart = 0.0, rangeEnd = 0.0; ///< [s]
    std::int32_t timeScale = 1;              ///< slow-motion factor
    std::string build;                       ///< name and version of the program
    std::string scene;                       ///< path of the scene's file; empty: never saved
};

struct ToolInputs
{
    std::string tool;
    std::vector<std::string> inputs;
};

[[nodiscard]] inline std::uint64_t checksum(std::string_view bytes) noexcept
{
    std::uint64_t hash = 14695981039346656037ULL;
    for (const char byte : bytes)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211ULL;
    return hash;
}

template <class T>
void put(std::string& out, T value)
{
    out.append(reinterpret_cast<const char*>(&value), sizeof(T));
}

inline void putText(std::string& out, std::string_view text)
{
    put(out, static_cast<std::uint32_t>(text.size()));
    out.append(text);
}

/// Reads what is left of some bytes; past their end every answer is false.
class Cursor
{
public:
    explicit Cursor(std::string_view bytes) : left_(bytes) {}

    template <class T>
    [[nodiscard]] bool get(T& out) noexcept
    {
        if (left_.size() < sizeof(T))
            return false;
        std::memcpy(&out, left_.data(), sizeof(T));
        left_.remove_prefix(sizeof(T));
        return true;
    }
    [[nodiscard]] bool getBytes(std::size_t size, std::string_view& out) noexcept
    {
        if (left_.size() < size)
            return false;
        out = left_.substr(0, size);
        left_.remove_prefix(size);
        return true;
    }
    [[nodiscard]] bool getText(std::string& out)
    {
        std::uint32_t size = 0;
        std::string_view bytes;
        if (!get(size) || !getBytes(size, bytes))
            return false;
        out = bytes;
        return true;
    }
    [[nodiscard]] std::size_t left() const noexcept { return left_.size(); }

private:
    std::string_view left_;
};

} // namespace tvw::rgs::stage::journalformat

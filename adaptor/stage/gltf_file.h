/// A glTF 2.0 file, .glb or .gltf, as JSON and checked bytes.
///
/// Whatever stands in the file: no read leaves its buffers, and what is decoded from it stays
/// within a multiple of its size, however often parts of it refer to the same bytes.
#pragma once

#include "util/result.h"

#include <nlohmann/json.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvw::rgs::stage {

using Json = nlohmann::json;

/// Why a file is no scene; thrown by the readers and caught where their work began.
struct FileFault
{
    std::string reason;
};

class GltfFile
{
public:
    /// Takes the content of a file. folder: where the files that a .gltf names are, with its "/".
    /// Throws FileFault.
    GltfFile(std::string bytes, const std::string& folder);

    [[nodiscard]] const Json& root() const { return root_; }

    /// The first buffer, which of a .glb is the one inside it.
    [[nodiscard]] std::string_view buffer() const;

    [[nodiscard]] std::string_view view(std::size_t index) const; ///< throws FileFault

    /// The elements of an accessor, as many numbers each as its type has, which must be `width`;
    /// integers that count as fractions are converted. Every number is finite. Throws FileFault.
    [[nodiscard]] std::vector<double> numbers(std::size_t accessor, std::size_t width) const;

    /// The same for whole numbers.
    [[nodiscard]] std::vector<std::uint32_t> indices(std::size_t accessor) const;

    /// Called before something of that size is made. Throws FileFault when the file's share is used
    /// up.
    void spend(std::size_t count, std::size_t size) const;

    /// What holds the buffers' bytes, for those who keep views into them. The file is used up.
    [[nodiscard]] std::vector<std::string> takeBytes() { return std::move(bytes_); }

private:
    struct Accessor
    {
        const char* data;
        std::size_t count, width, stride;
        int component;
        bool normalized;
    };

    void readBinary();
    void readText(std::string_view text);
    void readBuffers(std::string_view binary, const std::string& folder);
    std::string readUri(const std::string& uri, const std::string& folder) const;
    [[nodiscard]] Accessor accessor(std::size_t index) const;

    std::vector<std::string> bytes_; ///< the file, then buffers that stand elsewhere
    std::vector<std::string_view> buffers_;
    Json root_;
    std::string_view binary_;
    mutable std::size_t left_ = 0; ///< [bytes] that may still be decoded
};

// Members of JSON that may be missing. A member of another kind than wanted throws FileFault.

/// An array; an empty one when it is missing.
[[nodiscard]] const Json& listIn(const Json& object, const char* key);
/// An object; an empty one when it is missing.
[[nodiscard]] const Json& objectIn(const Json& object, const char* key);
[[nodiscard]] std::size_t indexIn(const Json& object, const char* key,
                                  std::size_t limit); ///< kNone: missing
[[nodiscard]] double numberIn(const Json& object, const char* key, double missing);
[[nodiscard]] bool flagIn(const Json& object, const char* key, bool missing);
[[nodiscard]] std::string textIn(const Json& object, const char* key);
/// Exactly N finite numbers; `missing` when there is no such member.
template <std::size_t N>
[[nodiscard]] std::array<double, N> numbersIn(const Json& object, const char* key,
                                              const std::array<double, N>& missing);
/// A value that counts something or points at one of `limit` things.
[[nodiscard]] std::size_t indexOf(const Json& value, const char* what, std::size_t limit);
[[nodiscard]] double finiteNumber(const Json& value, const char* what);

template <std::size_t N>
std::array<double, N> numbersIn(const Json& object, const char* key,
                                const std::array<double, N>& missing)
{
    const Json& list = listIn(object, key);
    if (list.empty())
        return missing;
    if (list.size() != N)
        throw FileFault{std::string(key) + " has " + std::to_string(list.size()) + " numbers"};
    std::array<double, N> out;
    for (std::size_t i = 0; i < N; ++i)
        out[i] = finiteNumber(list[i], key);
    return out;
}

} // namespace tvw::rgs::stage

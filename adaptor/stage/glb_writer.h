/// Composes a glTF 2.0 binary: one buffer, its views and accessors, and the JSON in front.
///
/// Format: Khronos glTF 2.0, sections 4.4 (GLB) and 5 (properties). Little endian.
#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvw::rgs::stage {

using Json = nlohmann::json;

enum class ComponentType : int { Float = 5126, UnsignedInt = 5125 };
enum class ViewTarget : int { None = 0, Vertices = 34962, Indices = 34963 };

class GlbWriter
{
public:
    /// expectedBytes: about how long the buffer will be; only a matter of speed.
    explicit GlbWriter(std::size_t expectedBytes);

    Json root = Json::object(); ///< all of the JSON but what the writer itself keeps

    // A view is begun, gets its bytes, and is ended.

    void beginView();
    void append(const void* bytes, std::size_t size)
    {
        file_.append(static_cast<const char*>(bytes), size);
    }
    template <class T>
    void append(const std::vector<T>& values)
    {
        append(values.data(), values.size() * sizeof(T));
    }
    std::size_t endView(ViewTarget target = ViewTarget::None); ///< its index

    /// One accessor over the whole of a view; its index. type: "SCALAR", "VEC3" and so on.
    std::size_t addAccessor(std::size_t view, std::size_t count, ComponentType component,
                            const char* type, Json minimum = {}, Json maximum = {});

    /// What was written to the buffer so far.
    [[nodiscard]] std::string_view buffer() const { return std::string_view(file_).substr(room_); }

    /// The file. Good until the writer ends; nothing may be added afterwards. Fails when it would
    /// be longer than the format allows, which is 4 GiB.
    [[nodiscard]] bool finish(std::string_view& file);

private:
    std::string file_; ///< room for header and JSON, then the buffer
    std::size_t room_;
    std::size_t viewBegin_ = 0;
    Json views_ = Json::array();
    Json accessors_ = Json::array();
};

/// Changes whenever a byte changes; no defence against forgers.
[[nodiscard]] std::uint64_t fingerprintOf(std::string_view bytes) noexcept;
[[nodiscard]] std::string hexOf(std::uint64_t value);

/// A text as JSON takes it: what is no UTF-8 is replaced by U+FFFD.
[[nodiscard]] bool isUtf8(std::string_view text) noexcept;
[[nodiscard]] std::string asUtf8(std::string_view text);

} // namespace tvw::rgs::stage

#include "adaptor/stage/gltf_file.h"

#include "adaptor/stage/scene_data.h"
#include "util/base64.h"
#include "util/file.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <map>
#include <utility>

namespace tvw::rgs::stage {

namespace {

constexpr std::size_t kHeader = 12;
constexpr std::size_t kChunkHeader = 8;
constexpr std::string_view kMagic = "glTF";
constexpr std::string_view kJsonChunk = "JSON";
constexpr std::string_view kBinaryChunk{"BIN\0", 4};

std::uint32_t wordAt(std::string_view bytes, std::size_t at)
{
    std::uint32_t word = 0;
    std::memcpy(&word, bytes.data() + at, sizeof word);
    return word;
}

std::size_t sizeOfComponent(int component)
{
    switch (component) {
    case 5120: // signed and unsigned bytes
    case 5121:
        return 1;
    case 5122: // shorts
    case 5123:
        return 2;
    case 5125: // unsigned ints, floats
    case 5126:
        return 4;
    default:
        throw FileFault{"an accessor has an unknown component type"};
    }
}

std::size_t widthOf(const std::string& type)
{
    constexpr std::pair<const char*, std::size_t> kTypes[] = {
        {"SCALAR", 1}, {"VEC2", 2}, {"VEC3", 3}, {"VEC4", 4},
        {"MAT2", 4},   {"MAT3", 9}, {"MAT4", 16}};
    for (const auto& [name, width] : kTypes) {
        if (type == name)
            return width;
    }
    throw FileFault{"an accessor has an unknown type"};
}

template <class T>
double componentAt(const char* data, bool normalized)
{
    T value;
    std::memcpy(&value, data, sizeof value);
    if constexpr (std::is_integral_v<T>) {
        if (normalized)
            return std::max(static_cast<double>(value) / std::numeric_limits<T>::max(), -1.0);
    }
    return static_cast<double>(value);
}

double componentAt(const char* data, int component, bool normalized)
{
    switch (component) {
    case 5120:
        return componentAt<std::int8_t>(data, normalized);
    case 5121:
        return componentAt<std::uint8_t>(data, normalized);
    case 5122:
        return componentAt<std::int16_t>(data, normalized);
    case 5123:
        return componentAt<std::uint16_t>(data, normalized);
    case 5125:
        return componentAt<std::uint32_t>(data, normalized);
    default:
        return componentAt<float>(data, normalized);
    }
}

std::string withoutPercents(const std::string& uri)
{
    const auto digit = [](char c) {
        return c >= '0' && c <= '9'   ? c - '0'
               : c >= 'a' && c <= 'f' ? c - 'a' + 10
               : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                      : -1;
    };
    std::string out;
    for (std::size_t i = 0; i < uri.size(); ++i) {
        const bool isCode =
            uri[i] == '%' && uri.size() - i > 2 && digit(uri[i + 1]) >= 0 && digit(uri[i + 2]) >= 0;
        out += isCode ? static_cast<char>(16 * digit(uri[i + 1]) + digit(uri[i + 2])) : uri[i];
        i += isCode ? 2 : 0;
    }
    return out;
}

} // namespace

GltfFile::GltfFile(std::string bytes, const std::string& folder)
{
    if (bytes.empty())
        throw FileFault{"it is empty"};
    bytes_.push_back(std::move(bytes));
    if (std::string_view(bytes_[0]).substr(0, 4) == kMagic)
        readBinary();
    else
        readText(bytes_[0]);
    if (!root_.is_object() || !objectIn(root_, "asset").contains("version"))
        throw FileFault{"it is no glTF"};
    if (const std::string version = textIn(root_["asset"], "version"); version.substr(0, 2) != "2.")
        throw FileFault{"it is glTF of version " + version + "; only 2.0 can be read"};
    readBuffers(binary_, folder);
    std::size_t total = 0;
    for (const std::string& part : bytes_)
        total += part.size();
    constexpr std::size_t kShare = 64;
    constexpr std::size_t kLeast = std::size_t{1} << 20;
    left_ = kShare * total + kLeast;
}

void GltfFile::readBinary()
{
    std::string_view file = bytes_[0];
    if (file.size() < kHeader + kChunkHeader)
        throw FileFault{"it ends within its header"};
    if (wordAt(file, 4) != 2)
        throw FileFault{"it is a glTF binary of an unknown version"};
    if (wordAt(file, 8) > file.size())
        throw FileFault{"it is cut off: " + std::to_string(file.size()) + " of " +
                        std::to_string(wordAt(file, 8)) + " bytes are there"};
    file = file.substr(0, wordAt(file, 8));
    bool isFirst = true;
    for (std::size_t at = kHeader; at < file.size();) {
        if (file.size() - at < kChunkHeader || wordAt(file, at) > file.size() - at - kChunkHeader)
            throw FileFault{"a chunk of it is cut off"};
        const std::string_view chunk = file.substr(at + kChunkHeader, wordAt(file, at));
        const std::string_view type = file.substr(at + 4, 4);
        if (isFirst && type != kJsonChunk)
            throw FileFault{"its first chunk is no JSON"};
        if (isFirst)
            readText(chunk);
        else if (type == kBinaryChunk && binary_.data() == nullptr)
            binary_ = chunk;
        isFirst = false;
        at += kChunkHeader + chunk.size();
    }
    if (isFirst)
        throw FileFault{"it holds no JSON"};
}

void GltfFile::readText(std::string_view text)
{
    root_ = Json::parse(text.begin(), text.end(), nullptr, false);
    if (root_.is_discarded())
        throw FileFault{"it is no glTF: its JSON is broken"};
}

void GltfFile::readBuffers(std::string_view binary, const std::string& folder)
{
    const Json& list = listIn(root_, "buffers");
    bytes_.reserve(1 + list.size()); // the first one's heap block stays; short texts would not
    std::map<std::string, std::size_t> byUri;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const double length = numberIn(list[i], "byteLength", 0.0);
        if (const std::string uri = textIn(list[i], "uri"); uri.empty()) {
            buffers_.push_back(i == 0 ? binary : std::string_view());
        } else {
            const auto [known, isNew] = byUri.try_emplace(uri, bytes_.size());
            if (isNew)
                bytes_.push_back(readUri(uri, folder));
            buffers_.push_back(bytes_[known->second]);
        }
        if (!(length >= 0.0) || length > static_cast<double>(buffers_.back().size()))
            throw FileFault{"buffer " + std::to_string(i) + " is shorter than it should be"};
        buffers_.back() = buffers_.back().substr(0, static_cast<std::size_t>(length));
    }
}

std::string GltfFile::readUri(const std::string& uri, const std::string& folder) const
{
    if (uri.compare(0, 5, "data:") == 0) {
        const std::size_t comma = uri.find(";base64,");
        std::string bytes = comma == std::string::npos
                                ? std::string()
                                : base64Decode(std::string_view(uri).substr(comma + 8));
        if (bytes.empty())
            throw FileFault{"a buffer's data is no Base64"};
        return bytes;
    }
    const std::string name = withoutPercents(uri);
    if (name.find("://") != std::string::npos || std::filesystem::path(name).is_absolute())
        throw FileFault{"a buffer stands elsewhere: " + name};
    const std::string path = folder + name;
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        throw FileFault{"there is no file " + path};
    Result<std::string> bytes = readFile(path);
    if (!bytes)
        throw FileFault{bytes.reason()};
    return *std::move(bytes);
}

std::string_view GltfFile::buffer() const
{
    return buffers_.empty() ? std::string_view() : buffers_[0];
}

std::string_view GltfFile::view(std::size_t index) const
{
    const Json& list = listIn(root_, "bufferViews");
    if (index >= list.size())
        throw FileFault{"there is no buffer view " + std::to_string(index)};
    const std::size_t owner = indexIn(list[index], "buffer", buffers_.size());
    const std::size_t everything = std::numeric_limits<std::uint32_t>::max();
    const std::size_t offset = indexIn(list[index], "byteOffset", everything);
    const std::size_t length = indexIn(list[index], "byteLength", everything);
    if (owner == kNone || length == kNone)
        throw FileFault{"a buffer view lacks its buffer or length"};
    const std::size_t begin = offset == kNone ? 0 : offset;
    if (begin > buffers_[owner].size() || length > buffers_[owner].size() - begin)
        throw FileFault{"buffer view " + std::to_string(index) + " leaves its buffer"};
    return buffers_[owner].substr(begin, length);
}

GltfFile::Accessor GltfFile::accessor(std::size_t index) const
{
    const Json& list = listIn(root_, "accessors");
    if (index >= list.size())
        throw FileFault{"there is no accessor " + std::to_string(index)};
    const Json& json = list[index];
    constexpr std::size_t kMost = std::numeric_limits<std::uint32_t>::max();
    if (json.contains("sparse"))
        throw FileFault{"it has sparse accessors, which can't be read"};
    const std::size_t owner = indexIn(json, "bufferView", kMost);
    const std::size_t count = indexIn(json, "count", kMost);
    const std::size_t offset = indexIn(json, "byteOffset", kMost);
    if (owner == kNone || count == kNone)
        throw FileFault{"accessor " + std::to_string(index) + " has no data"};
    std::string_view bytes = view(owner);
    bytes.remove_prefix(std::min(offset == kNone ? 0 : offset, bytes.size()));

    Accessor out{bytes.data(),
                 count,
                 widthOf(textIn(json, "type")),
                 0,
                 static_cast<int>(indexIn(json, "componentType", 1U << 16U)),
                 flagIn(json, "normalized", false)};
    const std::size_t element = out.width * sizeOfComponent(out.component);
    const std::size_t stride =
        indexIn(listIn(root_, "bufferViews")[owner], "byteStride", std::size_t{1} << 16);
    out.stride = stride == kNone ? element : stride;
    if (out.stride < element ||
        (count != 0 &&
         (bytes.size() < element || (count - 1) > (bytes.size() - element) / out.stride)))
        throw FileFault{"accessor " + std::to_string(index) + " leaves its buffer view"};
    return out;
}

std::vector<double> GltfFile::numbers(std::size_t index, std::size_t width) const
{
    const Accessor from = accessor(index);
    if (from.width != width)
        throw FileFault{"accessor " + std::to_string(index) + " has another type than its use"};
    spend(from.count, width * sizeof(double));
    std::vector<double> out;
    out.reserve(from.count * width);
    const std::size_t size = sizeOfComponent(from.component);
    for (std::size_t i = 0; i < from.count; ++i) {
        for (std::size_t k = 0; k < width; ++k) {
            const double value = componentAt(from.data + i * from.stride + k * size, from.component,
                                             from.normalized);
            if (!std::isfinite(value))
                throw FileFault{"accessor " + std::to_string(index) + " holds what is no number"};
            out.push_back(value);
        }
    }
    return out;
}

std::vector<std::uint32_t> GltfFile::indices(std::size_t index) const
{
    const Accessor from = accessor(index);
    const bool isWhole = from.component == 5121 || from.component == 5123 || from.component == 5125;
    if (from.width != 1 || !isWhole)
        throw FileFault{"accessor " + std::to_string(index) + " has another type than its use"};
    spend(from.count, sizeof(std::uint32_t));
    std::vector<std::uint32_t> out;
    out.reserve(from.count);
    for (std::size_t i = 0; i < from.count; ++i)
        out.push_back(static_cast<std::uint32_t>(
            componentAt(from.data + i * from.stride, from.component, false)));
    return out;
}

void GltfFile::spend(std::size_t count, std::size_t size) const
{
    if (count > left_ / size)
        throw FileFault{"its parts refer to the same bytes too many times"};
    left_ -= count * size;
}

const Json& listIn(const Json& object, const char* key)
{
    static const Json kNothing = Json::array();
    const auto found = object.is_object() ? object.find(key) : object.end();
    if (!object.is_object() || found == object.end())
        return kNothing;
    if (!found->is_array())
        throw FileFault{std::string(key) + " is no list"};
    return *found;
}

const Json& objectIn(const Json& object, const char* key)
{
    static const Json kNothing = Json::object();
    const auto found = object.is_object() ? object.find(key) : object.end();
    if (!object.is_object() || found == object.end())
        return kNothing;
    if (!found->is_object())
        throw FileFault{std::string(key) + " is no object"};
    return *found;
}

std::size_t indexOf(const Json& value, const char* what, std::size_t limit)
{
    if (!value.is_number_unsigned() || value.get<std::uint64_t>() >= limit)
        throw FileFault{std::string(what) + " is out of range"};
    return value.get<std::size_t>();
}

std::size_t indexIn(const Json& object, const char* key, std::size_t limit)
{
    if (!object.is_object() || !object.contains(key))
        return kNone;
    return indexOf(object[key], key, limit);
}

double finiteNumber(const Json& value, const char* what)
{
    if (!value.is_number() || !std::isfinite(value.get<double>()))
        throw FileFault{std::string(what) + " is no number"};
    return value.get<double>();
}

double numberIn(const Json& object, const char* key, double missing)
{
    return object.is_object() && object.contains(key) ? finiteNumber(object[key], key) : missing;
}

bool flagIn(const Json& object, const char* key, bool missing)
{
    if (!object.is_object() || !object.contains(key))
        return missing;
    const Json& value = object[key];
    if (value.is_number()) // some programs know no truth values
        return value.get<double>() != 0.0;
    if (!value.is_boolean())
        throw FileFault{std::string(key) + " is neither true nor false"};
    return value.get<bool>();
}

std::string textIn(const Json& object, const char* key)
{
    if (!object.is_object() || !object.contains(key))
        return {};
    if (!object[key].is_string())
        throw FileFault{std::string(key) + " is no text"};
    return object[key].get<std::string>();
}

} // namespace tvw::rgs::stage

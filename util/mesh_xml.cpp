/// The two XML forms of a mesh.

#include "util/base64.h"
#include "util/datachunk.h"
#include "util/mesh.h"
#include "util/xml/element.h"
#include "util/xml/number.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <optional>
#include <utility>

namespace tvw {

namespace {

using util::xml::Element;
using util::xml::Tag;
using util::xml::Text;

constexpr char kName[] = "CMesh";

/// What the two forms call the four arrays: the count and the bytes of a chunk, the list and one
/// item of it among the children.
struct ArrayNames
{
    const char* count;
    const char* array;
    const char* list;
    const char* item;
};
constexpr ArrayNames kVertex{"numVertexes", "vertex", "vertexdata", "vertex"};
constexpr ArrayNames kTexCoord{"numTexCoords", "texcoord", "texcoorddata", "texcoord"};
constexpr ArrayNames kFace{"numFaces", "face", "facedata", "face"};
constexpr ArrayNames kTFace{"numTFaces", "tface", "tfacedata", "tface"};

/// The largest count that a 32-bit entry says.
constexpr std::size_t kMaxCount = std::numeric_limits<std::int32_t>::max();

template <class T>
void addCount(DataChunk& chunk, const ArrayNames& names, const std::vector<T>& items)
{
    chunk.addValue(names.count, static_cast<std::int32_t>(std::min(items.size(), kMaxCount)));
}

template <class T>
void addArray(DataChunk& chunk, const ArrayNames& names, const std::vector<T>& items)
{
    chunk.addMember(DataChunk(names.array, items.data(), items.size() * sizeof(T)));
}

/// A count that says more than the bytes of its array hold is cut to these: so a wrong file costs
/// no memory. False if either entry is missing.
template <class T>
[[nodiscard]] bool readArray(const DataChunk& chunk, const ArrayNames& names, std::vector<T>& items)
{
    std::int32_t count = 0;
    if (!chunk.member(names.count).readValue(count) || !chunk.hasMember(names.array)) {
        return false;
    }
    const DataChunk& array = chunk.member(names.array);
    const std::size_t held = array.payloadSize() / sizeof(T);
    items.resize(std::min(static_cast<std::size_t>(std::max(count, 0)), held));
    if (!items.empty()) {
        std::memcpy(items.data(), array.payload(), items.size() * sizeof(T));
    }
    return true;
}

std::string chunkText(const CMesh& mesh)
{
    DataChunk chunk(kName, nullptr, 0);
    addCount(chunk, kVertex, mesh.vertex);
    addCount(chunk, kTexCoord, mesh.texcoord);
    addCount(chunk, kFace, mesh.face);
    addCount(chunk, kTFace, mesh.tface);
    addArray(chunk, kVertex, mesh.vertex);
    addArray(chunk, kTexCoord, mesh.texcoord);
    addArray(chunk, kFace, mesh.face);
    addArray(chunk, kTFace, mesh.tface);
    std::size_t size = 0;
    const void* const bytes = chunk.serialize(&size);
    return base64Encode(bytes, size);
}

void readChunk(std::string_view text, CMesh& mesh)
{
    const std::string bytes = base64Decode(text);
    const DataChunk chunk(bytes.data(), bytes.size());
    // A missing entry ends the reading, and what stands behind it stays empty.
    (void)(readArray(chunk, kVertex, mesh.vertex) && readArray(chunk, kTexCoord, mesh.texcoord) &&
           readArray(chunk, kFace, mesh.face) && readArray(chunk, kTFace, mesh.tface));
}

template <class T>
void appendNumber(std::string& text, T value)
{
    char digits[32]; // the longest: -2.2250738585072014e-308
    const auto end = std::to_chars(digits, digits + sizeof digits, value);
    text.append(text.empty() ? "" : " ").append(digits, end.ptr);
}

template <class T>
std::string itemText(T a, T b, T c)
{
    std::string text;
    appendNumber(text, a);
    appendNumber(text, b);
    appendNumber(text, c);
    return text;
}

void addItem(Element& list, const char* item, const std::string& text)
{
    list.addChild(Tag(item)).addChild(Text(text));
}

void addPoints(Element& element, const ArrayNames& names, const std::vector<Vector3d>& points)
{
    Element& list = element.addChild(Tag(names.list));
    for (const Vector3d& p : points) {
        addItem(list, names.item, itemText(p.x, p.y, p.z));
    }
}

void addTriangles(Element& element, const ArrayNames& names, const std::vector<std::int32_t>& all)
{
    Element& list = element.addChild(Tag(names.list));
    for (std::size_t i = 0; i + 2 < all.size(); i += 3) {
        addItem(list, names.item, itemText(all[i], all[i + 1], all[i + 2]));
    }
}

/// Cuts the next word off the text.
std::string_view takeWord(std::string_view& text)
{
    constexpr std::string_view kBlanks = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    const std::string_view word = text.substr(0, text.find_first_of(kBlanks));
    text.remove_prefix(word.size());
    return word;
}

/// A coordinate that is no finite number is 0.
double takeNumber(std::string_view& text)
{
    return util::xml::number(takeWord(text)).value_or(0.0);
}

/// An index that is no 32-bit number is -1, which CMesh::isSound refuses.
std::int32_t takeIndex(std::string_view& text)
{
    const std::optional<long> index = util::xml::integer(takeWord(text));
    return index && std::in_range<std::int32_t>(*index) ? static_cast<std::int32_t>(*index) : -1;
}

/// Calls take(text) for each item of the list; false if the element has no such list.
template <class Take>
[[nodiscard]] bool readItems(const Element& element, const ArrayNames& names, Take take)
{
    for (const Element& item : element.child(names.list).children()) {
        if (item.kind() == util::xml::Kind::Tag && item.name() == names.item) {
            take(item.text());
        }
    }
    return element.childCount(names.list) != 0;
}

void readPoints(const Element& element, const ArrayNames& names, std::vector<Vector3d>& points)
{
    std::vector<Vector3d> read;
    const bool found = readItems(element, names, [&read](std::string_view text) {
        const double x = takeNumber(text);
        const double y = takeNumber(text);
        read.push_back({x, y, takeNumber(text)});
    });
    if (found) {
        points = std::move(read);
    }
}

void readTriangles(const Element& element, const ArrayNames& names, std::vector<std::int32_t>& all)
{
    std::vector<std::int32_t> read;
    const bool found = readItems(element, names, [&read](std::string_view text) {
        for (int corner = 0; corner < 3; ++corner) {
            read.push_back(takeIndex(text));
        }
    });
    if (found) {
        all = std::move(read);
    }
}

} // namespace

void CMesh::write(Element& element, bool asElements) const
{
    element.assign(Tag(kName));
    if (!asElements) {
        element.addChild(Text(chunkText(*this)));
        return;
    }
    addPoints(element, kVertex, vertex);
    addPoints(element, kTexCoord, texcoord);
    addTriangles(element, kFace, face);
    addTriangles(element, kTFace, tface);
}

void CMesh::read(const Element& element)
{
    if (element.name() != kName) {
        return;
    }
    CMesh mesh;
    if (const std::string_view text = element.text(); !text.empty()) {
        readChunk(text, mesh);
    }
    readPoints(element, kVertex, mesh.vertex);
    readPoints(element, kTexCoord, mesh.texcoord);
    readTriangles(element, kFace, mesh.face);
    readTriangles(element, kTFace, mesh.tface);
    *this = std::move(mesh);
}

} // namespace tvw

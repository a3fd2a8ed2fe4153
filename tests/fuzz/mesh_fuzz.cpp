#include "tests/fuzz/check.h"
#include "util/base64.h"
#include "util/mesh.h"
#include "util/xml/element.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

namespace {

using tvw::CMesh;
using tvw::Vector3d;
using tvw::util::xml::Element;

template <class T>
bool equalBits(const std::vector<T>& a, const std::vector<T>& b)
{
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0);
}

bool equalBits(const CMesh& a, const CMesh& b)
{
    return equalBits(a.vertex, b.vertex) && equalBits(a.texcoord, b.texcoord) &&
           equalBits(a.face, b.face) && equalBits(a.tface, b.tface);
}

bool isFinite(const std::vector<Vector3d>& points)
{
    return std::all_of(points.begin(), points.end(), [](const Vector3d& p) {
        return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
    });
}

/// Lists know finite numbers and whole triangles only.
bool isTellableInLists(const CMesh& mesh)
{
    return isFinite(mesh.vertex) && isFinite(mesh.texcoord) && mesh.face.size() % 3 == 0 &&
           mesh.tface.size() % 3 == 0;
}

/// The mesh after a way through a file's text.
CMesh throughText(const CMesh& mesh, bool asElements)
{
    Element written;
    mesh.write(written, asElements);
    Element parsed;
    RIGSTAGE_FUZZ_CHECK(parsed.parse(written.toString()) == tvw::util::xml::code::ok);
    CMesh read;
    read.read(parsed);
    return read;
}

/// What could be read is no more than the input can say, and the same after a way through either
/// form.
void tryElement(const Element& element, std::size_t inputSize)
{
    CMesh mesh;
    mesh.read(element);
    const std::size_t items =
        mesh.numVertexes() + mesh.numTexCoords() + mesh.face.size() / 3 + mesh.tface.size() / 3;
    RIGSTAGE_FUZZ_CHECK(items <= inputSize);
    RIGSTAGE_FUZZ_CHECK(equalBits(throughText(mesh, false), mesh));
    RIGSTAGE_FUZZ_CHECK(!isTellableInLists(mesh) || equalBits(throughText(mesh, true), mesh));
    if (mesh.isSound()) {
        for (const std::int32_t index : mesh.face) {
            (void)mesh.vertex.at(static_cast<std::size_t>(index));
        }
    }
}

} // namespace

/// The input as an XML text, and as the chunk inside of one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Element element;
    if (element.parse({reinterpret_cast<const char*>(data), size}) == tvw::util::xml::code::ok) {
        tryElement(element, size);
    }
    tryElement(tvw::util::xml::TagWithData("CMesh", tvw::base64Encode(data, size)), size);
    return 0;
}

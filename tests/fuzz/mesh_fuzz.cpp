/// Any bytes as a mesh: as the XML text of one, and as the data chunk within it.
#include "tests/fuzz/fuzz.h"
#include "util/base64.h"
#include "util/mesh.h"
#include "util/xml/element.h"

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

namespace {

using tvw::CMesh;
using tvw::Vector3d;
using tvw::fuzz::require;
using tvw::util::xml::Element;

template <class T>
bool sameBits(const std::vector<T>& a, const std::vector<T>& b)
{
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0);
}

bool sameBits(const CMesh& a, const CMesh& b)
{
    return sameBits(a.vertex, b.vertex) && sameBits(a.texcoord, b.texcoord) &&
           sameBits(a.face, b.face) && sameBits(a.tface, b.tface);
}

bool isFinite(const std::vector<Vector3d>& points)
{
    for (const Vector3d& p : points) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z)) {
            return false;
        }
    }
    return true;
}

/// Whether lists of numbers can say the mesh: they know finite numbers and whole triangles.
bool isTellable(const CMesh& mesh)
{
    return isFinite(mesh.vertex) && isFinite(mesh.texcoord) && mesh.face.size() % 3 == 0 &&
           mesh.tface.size() % 3 == 0;
}

CMesh writtenAndRead(const CMesh& mesh, bool asElements)
{
    Element written;
    mesh.write(written, asElements);
    Element parsed;
    require(parsed.parse(written.toString()) == 0, "the text of a mesh is refused");
    CMesh read;
    read.read(parsed);
    return read;
}

void check(const Element& element, std::size_t inputSize)
{
    CMesh mesh;
    mesh.read(element);
    const std::size_t held = (mesh.vertex.size() + mesh.texcoord.size()) * sizeof(Vector3d) +
                             (mesh.face.size() + mesh.tface.size()) * sizeof(std::int32_t);
    require(held <= 24 * inputSize, "a mesh holds more than its text can say");
    if (mesh.isSound()) {
        for (const std::int32_t index : mesh.face) {
            require(index >= 0 && static_cast<std::size_t>(index) < mesh.vertex.size(),
                    "a sound mesh has an index outside of its points");
        }
    }
    require(sameBits(writtenAndRead(mesh, false), mesh), "a mesh changes as a chunk");
    if (isTellable(mesh)) {
        require(sameBits(writtenAndRead(mesh, true), mesh), "a mesh changes as lists");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using tvw::util::xml::TagWithData;
    Element root;
    if (root.parse(tvw::fuzz::asText(data, size)) == 0) {
        check(root, size);
    }
    check(TagWithData("CMesh", tvw::base64Encode(data, size)), size);
    return 0;
}

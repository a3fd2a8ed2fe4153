#include "tests/fuzz/check.h"
#include "util/base64.h"
#include "util/mesh.h"
#include "util/xml/element.h"

#include <cstdint>

namespace {

/// What could be read stays the same through both forms.
void tryElement(const tvw::util::xml::Element& element)
{
    tvw::CMesh mesh;
    mesh.read(element);
    (void)mesh.isSound();
    tvw::util::xml::Element written;
    mesh.write(written, false);
    tvw::CMesh again;
    again.read(written);
    RIGSTAGE_FUZZ_CHECK(again.face == mesh.face && again.tface == mesh.tface);
    RIGSTAGE_FUZZ_CHECK(again.numVertexes() == mesh.numVertexes());
    mesh.write(written, true);
    again.read(written);
    RIGSTAGE_FUZZ_CHECK(again.numFaces() == mesh.numFaces());
    RIGSTAGE_FUZZ_CHECK(again.numTexCoords() == mesh.numTexCoords());
}

} // namespace

/// The input as an XML text, and as the chunk inside of one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    tvw::util::xml::Element element;
    if (element.parse({reinterpret_cast<const char*>(data), size}) == tvw::util::xml::code::ok) {
        tryElement(element);
    }
    tryElement(tvw::util::xml::TagWithData("CMesh", tvw::base64Encode(data, size)));
    return 0;
}

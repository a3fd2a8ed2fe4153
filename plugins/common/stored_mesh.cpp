#include "plugins/common/stored_mesh.h"

#include "util/xml/element.h"

namespace tvw::rgs {

void StoredMesh::save(DataChunk& parent) const
{
    util::xml::Element element;
    mesh_.write(element, false);
    const std::string text = element.fragment();
    parent.addMember(DataChunk(name(), text.data(), text.size()));
}

bool StoredMesh::load(const DataChunk& parent)
{
    const DataChunk* const member = find(parent);
    if (!member)
        return !isRequired();
    util::xml::Element element;
    const std::string_view text(static_cast<const char*>(member->payload()), member->payloadSize());
    CMesh mesh;
    if (element.parse(text) == util::xml::code::ok)
        mesh.read(element);
    if (!mesh.isSound())
        return false;
    mesh_ = std::move(mesh);
    return true;
}

} // namespace tvw::rgs

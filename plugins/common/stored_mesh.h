/// A mesh in a tool's saved chunk, as the text of its XML form.
#pragma once

#include "plugins/common/state_store.h"
#include "util/mesh.h"

namespace tvw::rgs {

class StoredMesh final : public StateEntry
{
public:
    StoredMesh(std::string name, CMesh& mesh) : StateEntry(std::move(name)), mesh_(mesh) {}

    void pushUndo(CInterface&) override {} // set by the user between runs, never by one
    void save(DataChunk& parent) const override;
    bool load(const DataChunk& parent) override;

private:
    CMesh& mesh_;
};

} // namespace tvw::rgs

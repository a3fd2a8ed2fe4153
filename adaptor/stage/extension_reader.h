/// Our extension in a glTF file: exact poses, keys and meshes.
#pragma once

#include "adaptor/stage/gltf_file.h"
#include "adaptor/stage/scene_data.h"

#include <vector>

namespace tvw::rgs::stage {

class ExtensionReader
{
public:
    /// Throws FileFault when the extension is damaged or from a later version of ours.
    explicit ExtensionReader(const GltfFile& file);

    /// The buffer is the one beside which the extension was written: its values may be used. False
    /// without an extension, and when another program has packed the file anew.
    [[nodiscard]] bool isUsable() const { return usable_; }

    // The rest is for a usable one. node: of the file, whose exact values are asked for.

    /// The pose without keys; false when the file has none for the node.
    bool readMatrix(const Json& node, Matrix4& out) const;

    /// The keys, if they were written with these channels (ChannelReader::accessorsOf).
    bool readPose(const Json& node, const std::vector<std::size_t>& channels,
                  KeyData<Matrix4>& out) const;
    void readLens(const Json& node, KeyData<double>& fov, KeyData<double>& targetDistance) const;

    /// The mesh's index among the exact ones, if it stands for the node's glTF mesh; else kNone.
    [[nodiscard]] std::size_t meshOf(const Json& node) const;
    /// False when the glTF mesh itself is exact.
    bool readMesh(std::size_t index, CMesh& out) const;

private:
    template <class T>
    void readKeys(const Json& json, KeyData<T>& out) const;
    template <class T>
    void readList(const Json& views, const char* name, std::vector<T>& out) const;
    static const Json& exactOf(const Json& node);

    const GltfFile& file_;
    const Json& json_;
    bool usable_ = false;
};

} // namespace tvw::rgs::stage

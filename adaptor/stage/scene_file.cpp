#include "adaptor/stage/scene_file.h"

#include "adaptor/stage/mesh_import.h"
#include "adaptor/stage/scene_build.h"
#include "adaptor/stage/scene_reader.h"
#include "adaptor/stage/scene_writer.h"
#include "adaptor/stage/session.h"
#include "core/core_implementation.h"
#include "core/instance_reference.h"
#include "util/file.h"

#include <algorithm>
#include <cctype>

namespace tvw::rgs::stage {

namespace {

namespace xml = util::xml;
using core::InstanceReference;

/// Tags stand on the nodes from here on until the block is left, by whatever way.
class TagsWritten
{
public:
    explicit TagsWritten(Stage& stage) : stage_(stage) { stage_.tellBeforeSave(); }
    ~TagsWritten() { stage_.tellAfterSave(); }
    TagsWritten(const TagsWritten&) = delete;
    TagsWritten& operator=(const TagsWritten&) = delete;

private:
    Stage& stage_;
};

Status writeTo(const std::string& path, SceneWriter& writer)
{
    const Result<std::string_view> file = writer.write();
    if (!file)
        return Status::failure("cannot write " + path + ": " + file.reason());
    return writeFileAtomically(path, *file);
}

bool hasEnding(const std::string& path, std::string_view ending)
{
    return path.size() >= ending.size() &&
           std::equal(ending.rbegin(), ending.rend(), path.rbegin(), [](char a, char b) {
               return a == std::tolower(static_cast<unsigned char>(b));
           });
}

} // namespace

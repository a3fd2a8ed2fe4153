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

// Tools without nodes.

namespace {

/// The living tool of a record's name; null: none.
InstanceReference* toolOf(Session& session, const xml::Element& record)
{
    return session.tool(std::string(record.child("name").text()));
}

UnboundTools unboundToolsOf(Session& session)
{
    UnboundTools out;
    xml::Element holder = xml::Tag("rgs");
    session.core().saveUnboundTools(holder);
    const xml::Element& tools = holder.child("RGT");
    if (tools.childCount() == 0)
        return out;
    out.record = tools.fragment();
    for (const xml::Element& tool : tools.children()) {
        const InstanceReference* const entry = toolOf(session, tool);
        out.places.push_back(entry ? entry->indexInParent() : -1);
    }
    return out;
}

/// A tool that holds one with nodes came with its tag already; then only what is missing below it is
/// made.
void makeUnboundTool(Session& session, const xml::Element& record, InstanceReference* parent, int place)
{
    if (InstanceReference* const present = toolOf(session, record)) {
        for (const xml::Element& child : record.children()) {
            if (child.name() == "RGT_Plugin")
                makeUnboundTool(session, child, present, -1);
        }
        return;
    }
    InstanceReference* const made = session.core().instances().createFromXml(record, parent);
    if (made && place >= 0)
        parent->attach(made, place);
}

/// From the first to the last, so that each finds those before it in their places.
void makeUnboundTools(Session& session, const xml::Element& tools, const std::vector<int>& places)
{
    std::size_t i = 0;
    for (const xml::Element& tool : tools.children()) {
        makeUnboundTool(session, tool, &session.root(), i < places.size() ? places[i] : -1);
        ++i;
    }
}

} // namespace

// The operations.

Status saveScene(Session& session, const std::string& path)
{
    const TagsWritten tags(session.stage());
    const UnboundTools tools = unboundToolsOf(session);
    SceneWriter writer(session.stage(), tools);
    return writeTo(path, writer);
}

Status openScene(Session& session, const std::string& path)
{
    Result<SceneData> scene = readScene(path);
    if (!scene)
        return Status::failure(scene.reason());
    xml::Element tools;
    if (!scene->tools.empty() && tools.parse(scene->tools) != xml::code::ok)
        return Status::failure("cannot read " + path + ": its record of tools is broken");
    Stage& stage = session.stage();
    stage.clear();
    applySettings(stage, scene->settings);
    buildNodes(stage, *scene, true);
    stage.tellSceneOpened();
    makeUnboundTools(session, tools, scene->toolPlaces);
    core::InstanceManager::announceComplete(session.root()); // they refer to each other
    stage.undoStack().clear();
    return {};
}

Status exportScene(Stage& stage, const std::string& path, const ExportOptions& options)
{
    if (!hasEnding(path, ".glb")) // another program would go by the name and fail
        return Status::failure("cannot write " + path + ": an export is glTF, a .glb file");
    SceneWriter writer(stage, options);
    return writeTo(path, writer);
}

Result<std::vector<StageNode*>> importFile(Stage& stage, const std::string& path)
{
    const bool isGltf = hasEnding(path, ".glb") || hasEnding(path, ".gltf");
    Result<SceneData> scene = isGltf ? readScene(path) : readWithAssimp(path);
    if (!scene)
        return Result<std::vector<StageNode*>>::failure(scene.reason());
    stage.beginUndo("Import");
    std::vector<StageNode*> made = buildNodes(stage, *scene, false);
    stage.endUndo();
    return made;
}

} // namespace tvw::rgs::stage

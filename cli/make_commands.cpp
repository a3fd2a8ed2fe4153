/// From nothing to a scene, and from a scene to other programs.
#include "adaptor/stage/scene_file.h"
#include "cli/commands.h"
#include "cli/scene.h"
#include "core/contract/codes.h"
#include "core/instance.h"
#include "plugins/tool_table.h"

#include <cmath>
#include <cstdio>

namespace tvw::rgs::cli {

namespace {

struct Make
{
    std::string file, output, type, name, parent;
    std::string import; ///< the other file
    std::string node;   ///< to be linked
    double framesPerSecond = 25.0;
    double end = 10.0;
    stage::ExportOptions tolerances;
    bool json = false;
};

void makeScene(const Make& make)
{
    if (!std::isfinite(make.framesPerSecond) || make.framesPerSecond <= 0.0)
        throw Failure("the frame rate must be a number above 0", kUsage);
    if (!std::isfinite(make.end) || make.end <= 0.0)
        throw Failure("the end of the range must be a number of seconds above 0", kUsage);
    const SessionPointer session = startSession(
        {.framesPerSecond = make.framesPerSecond, .range = {0.0, make.end}, .isolated = true});
    saveFile(*session, make.output);
}

void addTool(const Make& make)
{
    const SessionPointer session = openFile(make.file);
    core::InstanceReference* const parent =
        make.parent.empty() ? nullptr
                            : (toolNamed(*session, make.parent), session->tool(make.parent));
    const auto made = session->create(make.type, make.name, parent);
    if (!made)
        throw Failure(made.reason() + ": \"rigstage tools\" lists them");
    saveFile(*session, make.output);
}

void importFiles(const Make& make)
{
    const SessionPointer session = openFile(make.file);
    const std::vector<stage::StageNode*> made =
        valueOf(stage::importFile(session->stage(), make.import));
    saveFile(*session, make.output);
    for (const stage::StageNode* const node : made)
        std::printf("%s\n", node->name().c_str());
}

/// "Tool/Node" by the node's name inside the tool, else a node of the scene.
stage::StageNode& nodeNamed(stage::Session& session, const std::string& name)
{
    if (stage::StageNode* const node = session.stage().find(name))
        return *node;
    if (name.find('/') == std::string::npos)
        throw Failure("there is no node named \"" + name + "\"");
    const ToolPath path = splitToolPath(session, name);
    auto* const handle = static_cast<stage::NodeHandle*>(path.tool->getNode(path.rest));
    if (!handle || handle->isDeleted())
        throw Failure("the tool \"" + path.tool->name() + "\" has no node named \"" + path.rest +
                      "\"");
    return handle->node();
}

void linkNode(const Make& make)
{
    const SessionPointer session = openFile(make.file);
    stage::StageNode& node = nodeNamed(*session, make.node);
    stage::StageNode* const parent =
        make.parent.empty() ? nullptr : &nodeNamed(*session, make.parent);
    if (!node.setParent(parent))
        throw Failure("\"" + make.node + "\" can't hang on itself or on a node below it");
    saveFile(*session, make.output);
}

void exportFile(const Make& make)
{
    const stage::ExportOptions& limits = make.tolerances;
    if (!(limits.positionTolerance >= 0.0) || !(limits.angleTolerance >= 0.0))
        throw Failure("a tolerance must be a number of 0 or more", kUsage);
    const SessionPointer session = openFile(make.file);
    check(stage::exportScene(session->stage(), make.output, limits));
}

void listTools(bool asJson)
{
    Json all = Json::array();
    for (CCameraPlugin* (*const maker)() : toolTable()) {
        CCameraPlugin* const plugin = maker();
        std::vector<std::string> olderIds;
        if (plugin->isSupported(code::olderIds))
            plugin->call(code::olderIds, &olderIds);
        if (asJson) {
            all.push_back({{"id", plugin->getId()},
                           {"display_name", plugin->getDisplayName()},
                           {"category", plugin->getCategory()},
                           {"description", plugin->getDescription()},
                           {"old_ids", olderIds}});
        } else {
            std::printf("%-24s %-12s %s\n", plugin->getId().c_str(), plugin->getCategory().c_str(),
                        plugin->getDisplayName().c_str());
        }
        plugin->destroy();
    }
    if (asJson)
        print(all);
}

} // namespace

void addTools(CLI::App& program)
{
    auto* const command = program.add_subcommand("tools", "List the types of tool");
    const auto make = std::make_shared<Make>();
    addJson(*command, make->json);
    command->callback([make] { listTools(make->json); });
}

void addNew(CLI::App& program)
{
    auto* const command = program.add_subcommand("new", "Make an empty scene");
    const auto make = std::make_shared<Make>();
    command->add_option("--fps", make->framesPerSecond, "Frames per second")->capture_default_str();
    command->add_option("--end", make->end, "End of the range in seconds")->capture_default_str();
    addOutput(*command, make->output);
    command->callback([make] { makeScene(*make); });
}

void addAdd(CLI::App& program)
{
    auto* const command = program.add_subcommand("add", "Add a tool to a scene");
    const auto make = std::make_shared<Make>();
    addFile(*command, make->file);
    command->add_option("--type", make->type, "Type of tool, as \"rigstage tools\" lists it")
        ->required();
    command->add_option("--name", make->name, "Name of the tool; else one of its type");
    command->add_option("--parent", make->parent, "Name of the tool to put it below");
    addOutput(*command, make->output);
    command->callback([make] { addTool(*make); });
}

void addImport(CLI::App& program)
{
    auto* const command = program.add_subcommand(
        "import", "Add the meshes and nodes of another file, and print the names of its top nodes");
    const auto make = std::make_shared<Make>();
    addFile(*command, make->file);
    command->add_option("IMPORT", make->import, "A mesh or scene file (.obj, .fbx, .glb, ...)")
        ->required();
    addOutput(*command, make->output);
    command->callback([make] { importFiles(*make); });
}

void addLink(CLI::App& program)
{
    auto* const command = program.add_subcommand("link", "Hang a node on another; its place stays");
    const auto make = std::make_shared<Make>();
    addFile(*command, make->file);
    command->add_option("--node", make->node, "\"Tool/Node\", or the name of a node of the scene")
        ->required();
    command->add_option("--to", make->parent,
                        "The node to hang it on, named alike; the top if left out");
    addOutput(*command, make->output);
    command->callback([make] { linkNode(*make); });
}

void addExport(CLI::App& program)
{
    auto* const command =
        program.add_subcommand("export", "Write the animation for other programs");
    const auto make = std::make_shared<Make>();
    addFile(*command, make->file);
    addOutput(*command, make->output, "The file to write (.glb)");
    command
        ->add_option("--tolerance", make->tolerances.positionTolerance,
                     "Leave out keys within this many metres of the curve")
        ->capture_default_str();
    command
        ->add_option("--angle-tolerance", make->tolerances.angleTolerance,
                     "... and within this many degrees")
        ->capture_default_str();
    command->callback([make] { exportFile(*make); });
}

} // namespace tvw::rgs::cli

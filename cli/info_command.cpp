/// What a scene holds.
#include "adaptor/stage/take_verify.h"
#include "adaptor/stage/tool_items.h"
#include "cli/commands.h"
#include "cli/scene.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "core/tool.h"

#include <cstdio>

namespace tvw::rgs::cli {

using core::Instance;
using stage::Session;
using stage::StageNode;

namespace {

Json keysOf(const StageNode& node)
{
    const auto& keys = node.poseKeys();
    Json out = {{"pose", keys.size()}, {"fov", node.fovKeys().size()}};
    if (!keys.empty()) {
        out["first"] = stage::toSeconds(keys.key(0).time);
        out["last"] = stage::toSeconds(keys.lastTime());
    }
    return out;
}

Json nodeOf(Session& session, const StageNode& node)
{
    CInterface* const owner = session.stage().ownerOf(node);
    return {{"name", node.name()},
            {"kind", stage::nameOf(node.kind())},
            {"parent", node.parent() ? Json(node.parent()->name()) : Json(nullptr)},
            {"owner", owner ? Json(static_cast<Instance*>(owner)->name()) : Json(nullptr)},
            {"visible", node.state().visible},
            {"keys", keysOf(node)}};
}

Json itemsOf(Instance& tool)
{
    using core::configadaptor::NodeKind;
    Json items = Json::array();
    for (const stage::ToolItem& item : stage::toolItems(tool)) {
        const NodeKind kind = item.node->kind();
        Json value = nullptr;
        if (kind == NodeKind::Spinner || kind == NodeKind::IntSpinner)
            value = item.node->value();
        else if (kind == NodeKind::CheckBox)
            value = item.node->value() != 0.0;
        else if (kind == NodeKind::TextBox || kind == NodeKind::ComboBox)
            value = item.node->text();
        items.push_back({{"group", item.group},
                         {"label", item.label()},
                         {"kind", stage::kindName(kind)},
                         {"value", std::move(value)}});
    }
    return items;
}

Json inputsOf(Instance& tool)
{
    Json inputs = Json::array();
    for (int i = 0; i < tool.properties().count(); ++i)
        inputs.push_back(tool.properties().propertyAt(i)->name());
    return inputs;
}

Json toolOf(Session& session, Instance& tool)
{
    const std::string parent = core::parentToolName(tool.reference());
    Json take = nullptr;
    if (const auto extent = stage::takeExtent(session, tool))
        take = {{"start", extent->start}, {"end", extent->end}};
    return {{"name", tool.name()},
            {"type", tool.type()->name()},
            {"parent", parent.empty() ? Json(nullptr) : Json(parent)},
            {"checked", tool.reference()->takesPart()},
            {"take", std::move(take)},
            {"inputs", inputsOf(tool)},
            {"items", itemsOf(tool)}};
}

Json describe(Session& session, const std::string& file)
{
    const core::TimeRange range = session.stage().range();
    Json out = {{"file", file},
                {"fps", session.stage().getFramesPerSecond()},
                {"range", {range.start, range.end}},
                {"take", nullptr},
                {"tools", Json::array()},
                {"nodes", Json::array()}};
    if (const auto extent = stage::takeExtent(session))
        out["take"] = {{"start", extent->start}, {"end", extent->end}};
    for (Instance* const tool : session.core().instances().collect(false))
        out["tools"].push_back(toolOf(session, *tool));
    session.stage().forEachNode(
        [&](const StageNode& node) { out["nodes"].push_back(nodeOf(session, node)); });
    return out;
}

// For people.

std::string plain(const Json& value)
{
    return value.is_string() ? value.get<std::string>() : value.dump();
}

void printTool(const Json& tool)
{
    std::printf("  %s (%s)%s\n", plain(tool["name"]).c_str(), plain(tool["type"]).c_str(),
                tool["checked"].get<bool>() ? "" : ", switched off");
    if (!tool["take"].is_null())
        std::printf("    take from %s to %s s\n", tool["take"]["start"].dump().c_str(),
                    tool["take"]["end"].dump().c_str());
    for (const Json& input : tool["inputs"])
        std::printf("    input %s\n", plain(input).c_str());
    for (const Json& item : tool["items"]) {
        const std::string group = plain(item["group"]);
        if (!item["value"].is_null())
            std::printf("    %s%s%s = %s\n", group.c_str(), group.empty() ? "" : "/",
                        plain(item["label"]).c_str(), plain(item["value"]).c_str());
    }
}

void printScene(const Json& scene)
{
    std::printf("%s: %s frames per second, range from %s to %s s\n", plain(scene["file"]).c_str(),
                scene["fps"].dump().c_str(), scene["range"][0].dump().c_str(),
                scene["range"][1].dump().c_str());
    std::printf("tools:\n");
    for (const Json& tool : scene["tools"])
        printTool(tool);
    std::printf("nodes:\n");
    for (const Json& node : scene["nodes"])
        std::printf("  %s (%s), %s pose keys\n", plain(node["name"]).c_str(),
                    plain(node["kind"]).c_str(), node["keys"]["pose"].dump().c_str());
}

} // namespace

void addInfo(CLI::App& program)
{
    struct Options
    {
        std::string file;
        bool json = false;
    };
    auto* const command = program.add_subcommand("info", "Tell what a scene holds");
    const auto options = std::make_shared<Options>();
    addFile(*command, options->file);
    addJson(*command, options->json);
    command->callback([options] {
        const SessionPointer session = openFile(options->file);
        const Json scene = describe(*session, options->file);
        options->json ? print(scene) : printScene(scene);
    });
}

} // namespace tvw::rgs::cli

#include "cli/scene.h"

#include "adaptor/stage/scene_file.h"
#include "adaptor/stage/tool_items.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/instance_reference.h"

#include <charconv>
#include <cmath>
#include <utility>

namespace tvw::rgs::cli {

using core::Instance;
using stage::Session;

void check(const Status& status)
{
    if (!status)
        throw Failure(status.reason());
}

SessionPointer startSession(stage::SessionOptions options)
{
    SessionPointer session = valueOf(Session::start(options));
    session->onMessage = [](const Session::Message& message) { note(message.text); };
    return session;
}

SessionPointer openFile(const std::string& path)
{
    SessionPointer session = startSession();
    check(stage::openScene(*session, path));
    session->setScenePath(path);
    return session;
}

void saveFile(Session& session, const std::string& path)
{
    check(stage::saveScene(session, path));
}

// Tools by their names.

namespace {

std::string toolNames(Session& session)
{
    std::string names;
    for (const Instance* const tool : session.core().instances().collect(false))
        names += (names.empty() ? "\"" : ", \"") + tool->name() + "\"";
    return names.empty() ? "the scene has no tools" : "the scene has " + names;
}

} // namespace

Instance& toolNamed(Session& session, const std::string& name)
{
    core::InstanceReference* const reference = session.tool(name);
    if (!reference)
        throw Failure("there is no tool \"" + name + "\": " + toolNames(session));
    return reference->instance();
}

ToolPath splitToolPath(Session& session, const std::string& path)
{
    Instance* best = nullptr;
    for (Instance* const tool : session.core().instances().collect(false)) {
        const bool longer = !best || tool->name().size() > best->name().size();
        if (longer && path.starts_with(tool->name() + "/"))
            best = tool;
    }
    if (!best)
        throw Failure("\"" + path + "\" begins with the name of no tool: " + toolNames(session));
    return {best, path.substr(best->name().size() + 1)};
}

// Settings.

Setting parseSetting(const std::string& text)
{
    const std::size_t equals = text.find('=');
    const std::size_t slash = text.find('/');
    if (equals == std::string::npos || slash > equals)
        throw Failure("\"" + text + "\" is no setting: write it as \"Tool/Item=value\"", kUsage);
    return {text.substr(0, equals), text.substr(equals + 1)};
}

std::vector<Setting> parseSettings(const std::vector<std::string>& texts)
{
    std::vector<Setting> settings;
    for (const std::string& text : texts)
        settings.push_back(parseSetting(text));
    return settings;
}

std::optional<double> numberOf(const std::string& text)
{
    double value = 0.0;
    const char* const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, value);
    const bool whole = error == std::errc() && stopped == end;
    return whole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

void apply(Session& session, const Setting& setting)
{
    using core::configadaptor::NodeKind;
    const ToolPath path = splitToolPath(session, setting.item);
    const stage::ToolItem item = valueOf(stage::findToolItem(*path.tool, path.rest));
    const NodeKind kind = item.node->kind();
    const auto number = numberOf(setting.value);
    const bool isSpinner = kind == NodeKind::Spinner || kind == NodeKind::IntSpinner;
    if (isSpinner && !number)
        throw Failure("\"" + setting.item + "\" takes a number, not \"" + setting.value + "\"");
    check(isSpinner ? stage::setToolItem(item, *number) : stage::setToolItem(item, setting.value));
    if (kind == NodeKind::Spinner &&
        (*number < item.node->minimum() || *number > item.node->maximum()))
        note("\"" + setting.item + "\" is held to " + textOf(item.node->value()));
}

} // namespace tvw::rgs::cli

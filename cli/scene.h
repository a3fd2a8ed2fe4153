/// A scene file in a session of its own, and what the commands do with one. All of it throws
/// `Failure`.
///
/// The sessions are isolated: what a command does depends on the files that it was given, and on
/// nothing else of the machine.
#pragma once

#include "adaptor/stage/session.h"
#include "cli/terminal.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tvw::rgs::core {
class Instance;
}

namespace tvw::rgs::cli {

using SessionPointer = std::unique_ptr<stage::Session>;

SessionPointer startSession(stage::SessionOptions options = {.isolated = true});
SessionPointer openFile(const std::string& path);
void saveFile(stage::Session& session, const std::string& path);

/// The value of a result, or a `Failure` with its reason.
template <class T>
T valueOf(Result<T> result)
{
    if (!result)
        throw Failure(result.reason());
    return *std::move(result);
}
void check(const Status& status);

/// The tool of that name; the failure lists those that there are.
core::Instance& toolNamed(stage::Session& session, const std::string& name);

/// "Tool/Rest" cut at the longest name of a tool that it begins with, since names may hold a "/".
struct ToolPath
{
    core::Instance* tool;
    std::string rest;
};
ToolPath splitToolPath(stage::Session& session, const std::string& path);

/// "Tool/Item=value". The failure of one without "/" and "=" is one of usage.
struct Setting
{
    std::string item; ///< "Tool/Item"
    std::string value;
};
Setting parseSetting(const std::string& text);
std::vector<Setting> parseSettings(const std::vector<std::string>& texts);

/// As the tool's window does it. A number outside of the item's bounds is held to them, with a
/// note.
void apply(stage::Session& session, const Setting& setting);

/// The whole text as a finite number.
std::optional<double> numberOf(const std::string& text);

} // namespace tvw::rgs::cli

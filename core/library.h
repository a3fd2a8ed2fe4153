/// A group of tool types that came together: the program's own, those of a tool file, a saved tool.
#pragma once

#include "core/platform/platform.h"
#include "util/dynamicobject.h"

#include <string>
#include <vector>

namespace tvw::rgs::core {

class Tool;

/// Owned by the `LibraryManager`, which it enters at construction. Owns its tools.
class Library : public DynamicObject
{
public:
    /// path: of the file, or a name for the program's own. module: unloaded behind the tools.
    explicit Library(std::string path, platform::Module module = {});
    ~Library() override;

    Tool* findTool(const std::string& id) const; ///< by any of its ids; null when none has it
    void addTool(Tool* tool) { tools_.push_back(tool); }

    const std::string& path() const { return path_; }
    const std::string& name() const { return name_; } ///< the file's, without folders and ending
    const std::vector<Tool*>& tools() const { return tools_; }

private:
    platform::Module module_; // first, so that it goes last
    std::string path_;
    std::string name_;
    std::vector<Tool*> tools_;
};

} // namespace tvw::rgs::core

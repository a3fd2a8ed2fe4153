#include "core/library.h"

#include "core/library_manager.h"
#include "core/paths.h"
#include "core/tool.h"

#include <utility>

namespace tvw::rgs::core {

Library::Library(std::string path, platform::Module module)
    : module_(std::move(module)), path_(std::move(path)), name_(fileName(path_))
{
    if (const std::size_t dot = name_.rfind('.'); dot != std::string::npos)
        name_.resize(dot);
    LibraryManager::instance().add(this);
}

Library::~Library()
{
    while (!tools_.empty()) {
        tools_.back()->destroy();
        tools_.pop_back();
    }
    LibraryManager::instance().remove(this);
}

Tool* Library::findTool(const std::string& id) const
{
    for (Tool* const tool : tools_) {
        if (tool->hasId(id))
            return tool;
    }
    return nullptr;
}

} // namespace tvw::rgs::core

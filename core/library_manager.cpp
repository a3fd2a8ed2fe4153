#include "core/library_manager.h"

#include "core/contract/plugin.h"
#include "core/instance.h"
#include "core/library.h"
#include "core/log.h"
#include "core/paths.h"
#include "core/platform/platform.h"
#include "core/plugin_tool.h"
#include "core/saved_tool_file.h"
#include "core/template.h"
#include "util/xml/element.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace tvw::rgs::core {

namespace {

constexpr const char* kSavedToolPattern = "*.prm";
constexpr const char* kCoreLibraryPath = "Core";

using GetVersion = std::int32_t();
using GetPlugin = CCameraPlugin*(std::int32_t);

Library* coreLibrary()
{
    for (Library* const library : LibraryManager::instance().libraries()) {
        if (library->path() == kCoreLibraryPath)
            return library;
    }
    return new Library(kCoreLibraryPath);
}

} // namespace

void makeCoreLibrary(std::span<CCameraPlugin* (*const)()> makers)
{
    Library* const library = coreLibrary();
    for (CCameraPlugin* (*const make)() : makers)
        new Plugin(library, make());
}

void addCorePlugin(CCameraPlugin* factory)
{
    new Plugin(coreLibrary(), factory);
}

LibraryManager::~LibraryManager()
{
    unloadAll();
}

void LibraryManager::scan()
{
    for (const std::string& path : listFiles(getPath("plugin"), platform::kToolFilePattern, false))
        load(path);
    if (const std::string user = getUserPath(); !user.empty()) {
        for (const std::string& path : listFiles(user + "/prm", kSavedToolPattern, true))
            load(path);
    }
    for (const std::string& path : listFiles(getPath("prm"), kSavedToolPattern, true))
        load(path);
}

LoadStatus LibraryManager::load(const std::string& path)
{
    if (isLoaded(path))
        return LoadStatus::AlreadyLoaded;
    return path.ends_with("prm") ? loadSavedTool(path) : loadToolFile(path);
}

LoadStatus LibraryManager::loadSavedTool(const std::string& path)
{
    const Result<util::xml::Element> record = readSavedTools(path);
    if (!record) {
        log(LogKind::General, LogSeverity::Warning, record.reason());
        return LoadStatus::NotLoadable;
    }
    auto* const library = new Library(path);
    const std::string folder = path.substr(0, path.size() - fileName(path).size());
    if (!makeTemplate(library, *record, folder).release()) {
        library->destroy();
        return LoadStatus::NothingNew;
    }
    return LoadStatus::Loaded;
}

LoadStatus LibraryManager::loadToolFile(const std::string& path)
{
    std::string reason;
    platform::Module module = platform::Module::load(path, reason);
    if (!module) {
        log(LogKind::General, LogSeverity::Warning, path + ": " + reason);
        return LoadStatus::NotLoadable;
    }
    auto* const getVersion = reinterpret_cast<GetVersion*>(module.symbol("getVersion"));
    if (!getVersion)
        return LoadStatus::NoVersion;
    if (getVersion() != kToolFileVersion)
        return LoadStatus::OtherVersion;
    auto* const getPlugin = reinterpret_cast<GetPlugin*>(module.symbol("getPlugin"));
    if (!getPlugin)
        return LoadStatus::NoPlugins;

    Library* library = nullptr;
    std::int32_t index = 0;
    while (CCameraPlugin* const factory = getPlugin(index++)) {
        if (findTool(factory->getId())) {
            factory->destroy();
            continue;
        }
        if (!library)
            library = new Library(path, std::move(module));
        new Plugin(library, factory);
    }
    return library ? LoadStatus::Loaded : LoadStatus::NothingNew;
}

bool LibraryManager::isLoaded(const std::string& path) const
{
    return std::any_of(libraries_.begin(), libraries_.end(),
                       [&](const Library* library) { return library->path() == path; });
}

Tool* LibraryManager::findTool(const std::string& id) const
{
    for (const Library* const library : libraries_) {
        if (Tool* const tool = library->findTool(id))
            return tool;
    }
    return nullptr;
}

std::vector<Tool*> LibraryManager::listTools(bool sorted) const
{
    std::vector<Tool*> all;
    for (const Library* const library : libraries_)
        all.insert(all.end(), library->tools().begin(), library->tools().end());
    if (sorted)
        std::stable_sort(all.begin(), all.end(),
                         [](const Tool* a, const Tool* b) { return a->name() < b->name(); });
    return all;
}

int LibraryManager::toolCount() const
{
    std::size_t count = 0;
    for (const Library* const library : libraries_)
        count += library->tools().size();
    return static_cast<int>(count);
}

Tool* LibraryManager::toolAt(int index) const
{
    for (const Library* const library : libraries_) {
        const int count = static_cast<int>(library->tools().size());
        if (index >= 0 && index < count)
            return library->tools()[static_cast<std::size_t>(index)];
        index -= count;
    }
    return nullptr;
}

LoadStatus LibraryManager::add(Library* library)
{
    if (std::find(libraries_.begin(), libraries_.end(), library) != libraries_.end())
        return LoadStatus::AlreadyLoaded;
    libraries_.push_back(library);
    return LoadStatus::Loaded;
}

void LibraryManager::remove(Library* library)
{
    std::erase(libraries_, library);
}

void LibraryManager::destroyAllInstances()
{
    for (Tool* const tool : listTools(false)) {
        while (!tool->instances().empty())
            tool->instances().back()->destroy();
    }
}

void LibraryManager::unloadAll()
{
    destroyAllInstances();
    while (!libraries_.empty())
        libraries_.back()->destroy();
}

} // namespace tvw::rgs::core

/// All tool types that there are.
#pragma once

#include "util/singleton.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace tvw::rgs {
class CCameraPlugin;
}

namespace tvw::rgs::core {

class Library;
class Tool;

/// Why a tool file brought nothing. Kept, not shown; the log has the loader's words.
enum class LoadStatus : int {
    Loaded = 0,
    NotLoadable = 30,   ///< the file could not be loaded
    NoVersion = 31,     ///< it does not export getVersion
    OtherVersion = 32,  ///< its version is not kToolFileVersion
    NoPlugins = 33,     ///< it does not export getPlugin
    NothingNew = 34,    ///< all that it offers is known already
    AlreadyLoaded = 35,
};

class LibraryManager : public Singleton<LibraryManager>
{
public:
    /// Loads the tool files and saved tools of the installation and of the user.
    void scan();

    /// Loads one file: a saved tool (".prm"), else a tool file.
    LoadStatus load(const std::string& path);

    Tool* findTool(const std::string& id) const; ///< the first, in the order of the libraries

    /// All tools; sorted: by name, as bytes.
    std::vector<Tool*> listTools(bool sorted) const;
    int toolCount() const;
    Tool* toolAt(int index) const; ///< null out of range

    const std::vector<Library*>& libraries() const { return libraries_; }

    /// LoadStatus::AlreadyLoaded when it is listed already.
    LoadStatus add(Library* library);
    void remove(Library* library);

    void destroyAllInstances();
    void unloadAll();

private:
    friend class Singleton<LibraryManager>;
    LibraryManager() = default;
    ~LibraryManager();

    bool isLoaded(const std::string& path) const;
    LoadStatus loadToolFile(const std::string& path);
    LoadStatus loadSavedTool(const std::string& path);

    std::vector<Library*> libraries_;
};

/// The tools that are compiled into the program: the given makers', in their order.
void makeCoreLibrary(std::span<CCameraPlugin* (*const)()> makers);

/// Adds a factory of the core's own to the program's library.
void addCorePlugin(CCameraPlugin* factory);

} // namespace tvw::rgs::core

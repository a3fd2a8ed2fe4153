/// The little that the core takes from the operating system.
#pragma once

#include <string>

namespace tvw::rgs::core::platform {

/// The folder that holds the program's own files, without a trailing separator: `RIGSTAGE_ROOT`, else
/// the folder above the running program's. Empty when neither is known.
std::string installRoot();

/// The folder that holds the user's files of this program: `RIGSTAGE_USER`, else "rigstage" below the
/// desktop's data folder (XDG_DATA_HOME, else ~/.local/share). Empty when there is no home.
std::string userFolder();

/// The file name pattern of external tool files.
inline constexpr const char* kToolFilePattern = "*.so";

/// A module that was loaded at run time; unloaded with the object.
class Module
{
public:
    Module() = default;
    ~Module();
    Module(Module&& other) noexcept;
    Module& operator=(Module&& other) noexcept;

    /// Loads the file, from within its folder so that it finds its own dependencies. Empty on failure,
    /// with the loader's words in `reason`.
    static Module load(const std::string& path, std::string& reason);

    void* symbol(const char* name) const; ///< null when it has none of that name
    explicit operator bool() const { return handle_ != nullptr; }

private:
    void* handle_ = nullptr;
};

} // namespace tvw::rgs::core::platform

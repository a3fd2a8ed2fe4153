#include "core/platform/platform.h"

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <utility>

namespace tvw::rgs::core::platform {

namespace fs = std::filesystem;

namespace {

std::string environment(const char* name)
{
    const char* const value = std::getenv(name);
    return value ? value : "";
}

} // namespace

std::string installRoot()
{
    if (std::string root = environment("RIGSTAGE_ROOT"); !root.empty())
        return root;
    std::error_code failed;
    const fs::path program = fs::read_symlink("/proc/self/exe", failed);
    return failed ? std::string() : program.parent_path().parent_path().string();
}

std::string userFolder()
{
    if (std::string folder = environment("RIGSTAGE_USER"); !folder.empty())
        return folder;
    if (const std::string data = environment("XDG_DATA_HOME"); !data.empty())
        return data + "/rigstage";
    if (const std::string home = environment("HOME"); !home.empty())
        return home + "/.local/share/rigstage";
    return {};
}

Module::~Module()
{
    if (handle_)
        dlclose(handle_);
}

Module::Module(Module&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}

Module& Module::operator=(Module&& other) noexcept
{
    std::swap(handle_, other.handle_);
    return *this;
}

Module Module::load(const std::string& path, std::string& reason)
{
    std::error_code ignored;
    const fs::path before = fs::current_path(ignored);
    const fs::path file = fs::absolute(path, ignored);
    fs::current_path(file.parent_path(), ignored);
    Module module;
    module.handle_ = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module.handle_)
        reason = dlerror();
    fs::current_path(before, ignored);
    return module;
}

void* Module::symbol(const char* name) const { return handle_ ? dlsym(handle_, name) : nullptr; }

} // namespace tvw::rgs::core::platform

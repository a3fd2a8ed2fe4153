#include "core/settings.h"

#include "core/paths.h"
#include "util/file.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <utility>
#include <variant>

namespace tvw::rgs::core {

using nlohmann::json;

namespace {

constexpr int kVersion = 1;

struct Key
{
    const char* name;
    std::variant<bool Settings::*, std::int32_t Settings::*> member;
};

constexpr Key kKeys[] = {
    {"startcountdown", &Settings::startCountdown},
    {"silentmode", &Settings::silentMode},
    {"alwaysontop", &Settings::alwaysOnTop},
    {"checkforupdates", &Settings::checkForUpdates},
    {"showpromotional", &Settings::showPromotional},
    {"dynamicmeshes", &Settings::dynamicMeshes},
    {"optimizedtransform", &Settings::optimizedTransform},
    {"updateviewport", &Settings::updateViewport},
};

const Key* findKey(const std::string& name)
{
    for (const Key& key : kKeys) {
        if (name == key.name)
            return &key;
    }
    return nullptr;
}

/// Takes a value of the member's own type; false and no change for another.
bool take(Settings& settings, const Key& key, const json& value)
{
    if (const auto* flag = std::get_if<bool Settings::*>(&key.member)) {
        if (value.is_boolean())
            settings.**flag = value.get<bool>();
        return value.is_boolean();
    }
    if (value.is_number_integer())
        settings.*std::get<std::int32_t Settings::*>(key.member) = value.get<std::int32_t>();
    return value.is_number_integer();
}

json give(const Settings& settings, const Key& key)
{
    return std::visit([&](auto member) { return json(settings.*member); }, key.member);
}

} // namespace

SettingsStore::SettingsStore(std::string path) : path_(std::move(path)) {}

void SettingsStore::load()
{
    loaded_ = true;
    if (const Result<std::string> text = readFile(path_)) {
        const json file = json::parse(*text, nullptr, false);
        if (file.is_object() && file.value("version", json()) == kVersion) {
            for (const Key& key : kKeys)
                take(settings_, key, file.value(key.name, json()));
        }
    }
    saved_ = settings_;
}

const Settings& SettingsStore::get()
{
    if (!loaded_)
        load();
    return settings_;
}

Status SettingsStore::set(const Settings& settings)
{
    get();
    settings_ = settings;
    if (settings_ == saved_)
        return {};
    json file = {{"version", kVersion}};
    for (const Key& key : kKeys)
        file[key.name] = give(settings_, key);
    makeDirectories(std::filesystem::path(path_).parent_path().string());
    Status written = writeFileAtomically(path_, file.dump(2));
    if (written)
        saved_ = settings_;
    return written;
}

std::string SettingsStore::value(const std::string& key)
{
    const Key* const found = findKey(key);
    return found ? give(get(), *found).dump() : std::string();
}

Status SettingsStore::setValue(const std::string& key, const std::string& text)
{
    const Key* const found = findKey(key);
    if (!found)
        return Status::failure("there is no setting \"" + key + "\"");
    Settings changed = get();
    if (!take(changed, *found, json::parse(text, nullptr, false)))
        return Status::failure("the setting \"" + key + "\" does not take the value " + text);
    return set(changed);
}

const std::vector<std::string>& SettingsStore::keys()
{
    static const std::vector<std::string> names = [] {
        std::vector<std::string> all;
        for (const Key& key : kKeys)
            all.emplace_back(key.name);
        return all;
    }();
    return names;
}

} // namespace tvw::rgs::core

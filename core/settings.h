/// `settings.json`: the few choices of the user that hold for every scene.
#pragma once

#include "util/result.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tvw::rgs::core {

struct Settings
{
    std::int32_t startCountdown = 2; ///< [s], 0 to 9: before a recording starts
    bool silentMode = false;         ///< message boxes are not shown
    bool alwaysOnTop = true;
    bool checkForUpdates = true;
    bool showPromotional = true;
    bool dynamicMeshes = false; ///< a mesh is taken anew at each time, not once
    bool optimizedTransform = true;
    bool updateViewport = false; ///< views redraw while a resimulation runs

    bool operator==(const Settings&) const = default;
};

/// Holds the settings of a file and writes them back when they have changed.
class SettingsStore
{
public:
    /// path: of `settings.json`. Reads it on the first `get`.
    explicit SettingsStore(std::string path);

    /// A file that is absent, no JSON object, or of another version gives the defaults; a key that is
    /// missing or of another type its default.
    const Settings& get();

    /// Takes the settings and, when they differ from those last saved, replaces the file. The reason
    /// when it could not be written; the settings hold all the same.
    Status set(const Settings& settings);

    /// One setting by its key in the file, as JSON text. Empty for an unknown key.
    std::string value(const std::string& key);
    /// The reason for an unknown key or a value of another type.
    Status setValue(const std::string& key, const std::string& json);
    static const std::vector<std::string>& keys();

private:
    void load();

    std::string path_;
    Settings settings_;
    Settings saved_;
    bool loaded_ = false;
};

} // namespace tvw::rgs::core

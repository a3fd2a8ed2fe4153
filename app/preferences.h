/// The settings of the program.
#pragma once

#include <memory>

namespace tvw::rgs::app {

/// Opens and keeps the form `RGSPreferences`.
class PreferencesWindow
{
public:
    PreferencesWindow();
    ~PreferencesWindow();

    void open();

private:
    class RGSPreferences;
    std::unique_ptr<RGSPreferences> form_;
};

} // namespace tvw::rgs::app

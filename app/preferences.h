/// The settings of the program.
#pragma once

#include <functional>
#include <memory>

namespace tvw::rgs::app {

/// Opens and keeps the form `RGSPreferences`.
class PreferencesWindow
{
public:
    PreferencesWindow();
    ~PreferencesWindow();

    void open();

    /// What turns all of the host's controllers that are the system's own into its default ones; it
    /// runs as one undo step. Without it the button is greyed.
    void setControllerConversion(std::function<void()> convert);

private:
    class RGSPreferences;
    std::function<void()> convert_; ///< the form refers to it
    std::unique_ptr<RGSPreferences> form_;
};

} // namespace tvw::rgs::app

/// The whole program: core, host, windows and hands, in one object.
#pragma once

#include "app/app_windows.h"
#include "app/qt_clock.h"
#include "studio/live_input.h"
#include "studio/studio_window.h"
#include "util/result.h"

#include <memory>
#include <string>

namespace tvw::rgs::studio {

/// Before the QApplication is made.
void setUpApplication();

/// Needs a running QApplication whose GUI has been started (`gui::startGui`). One at a time.
class Studio
{
public:
    /// userFolder: of profiles, settings and lost takes; empty: the user's own. The reason of a
    /// failure is fit for a user.
    static Result<std::unique_ptr<Studio>> start(const std::string& userFolder);
    ~Studio();

    /// Studio window and, beside it, the system's main window.
    void show();

    stage::Session& session() { return *session_; }
    StudioWindow& window() { return *window_; }
    app::AppWindows& windows() { return windows_; }

private:
    Studio() = default;
    Status begin(const std::string& userFolder);
    void placeMainWindow();

    app::QtClock clock_;
    app::AppWindows windows_;
    std::unique_ptr<stage::Session> session_;
    std::unique_ptr<LiveInput> input_; // ends before the hub, which the session holds
    std::unique_ptr<StudioWindow> window_;
};

} // namespace tvw::rgs::studio

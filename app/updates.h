/// Whether there is a newer version, and the window that tells it.
#pragma once

#include "gui/component.h"

#include <functional>
#include <memory>

namespace tvw::rgs::app {

class UpdateWindow
{
public:
    UpdateWindow();
    ~UpdateWindow();

    /// Hears of the bar for the main window when a quiet check finds a newer version.
    void setBarReceiver(std::function<void(gui::Component* bar)> receiver);

    void checkQuietly(); ///< in a thread of its own; a failure shows nothing
    void open();         ///< checks, and shows what came of it

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace tvw::rgs::app

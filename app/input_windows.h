/// The input windows: one for each tool that is asked for.
#pragma once

#include <map>
#include <memory>

namespace tvw::rgs::core {
class Instance;
}

namespace tvw::rgs::app {

class InputConfigDlg;

class InputWindows
{
public:
    InputWindows();
    ~InputWindows();

    void open(core::Instance& instance); ///< one that is open comes to the front
    void closeOf(core::Instance& instance);

private:
    std::map<core::Instance*, std::unique_ptr<InputConfigDlg>> windows_;
};

} // namespace tvw::rgs::app

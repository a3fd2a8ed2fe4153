/// The documentation's pages, to read and to leaf through.
#pragma once

#include <memory>
#include <string>

namespace tvw::rgs::app {

class HelpWindow
{
public:
    HelpWindow();
    ~HelpWindow();

    void open(const std::string& page); ///< whole path of a Markdown file

private:
    class Browser;

    std::unique_ptr<Browser> browser_;
};

} // namespace tvw::rgs::app

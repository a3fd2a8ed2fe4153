/// What the program is and what it stands on.
#pragma once

#include <memory>

namespace tvw::rgs::app {

class AboutRGS
{
public:
    AboutRGS();
    ~AboutRGS();

    void open();

private:
    class Form;
    std::unique_ptr<Form> form_;
};

} // namespace tvw::rgs::app

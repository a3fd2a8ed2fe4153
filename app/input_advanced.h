/// How an input shapes what its control says, with the curve of it.
#pragma once

#include "app/window_base.h"

namespace tvw::unidevice {
class Property;
}

namespace tvw::rgs::app {

class AdvancedInput final : public WindowBase
{
public:
    explicit AdvancedInput(unidevice::Property& property);

    void open(gui::Component& over); ///< modally
    void showNumbers();              ///< a profile has brought others
    void showLive();                 ///< where the control stands on the curve
    void close();

private:
    void handle(gui::Component& component, Message& message) override;
    void drawCurve();

    unidevice::Property& property_;
    bool isFilling_ = false; ///< what the spinners say then are no changes of the user's
};

} // namespace tvw::rgs::app

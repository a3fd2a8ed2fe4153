/// A level camera that is flown by hand, without anything to set.
#pragma once

#include "plugins/release/observercamfree/observercamfree_items.h"

namespace tvw::rgs::addon {

class CObserverCamFreeObject final
    : public FlyingCamera<observercamfree::Settings, observercamfree::kInputs>
{
public:
    explicit CObserverCamFreeObject(const CreateParam& param);

private:
    void takesOff(double h) override;
    void fly(const SubSteps& steps) override;
    FlightInputs flight();
};

} // namespace tvw::rgs::addon

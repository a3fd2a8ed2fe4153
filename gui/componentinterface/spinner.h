/// A number with arrows.
#pragma once

#include "gui/componentinterface/interface.h"

namespace tvw::gui {

namespace componentinterface {

class Spinner : public Interface
{
public:
    static constexpr const char* kTag = "spinner";

    [[nodiscard]] virtual double value() const = 0;
    [[nodiscard]] virtual int valueInt() const = 0; ///< rounded, halves down
    virtual void setValue(double value) = 0;        ///< held to the bounds; tells listeners
    [[nodiscard]] virtual double min() const = 0;
    [[nodiscard]] virtual double max() const = 0;
    virtual void setMin(double value) = 0;
    virtual void setMax(double value) = 0;
    [[nodiscard]] virtual double step() const = 0;
    virtual void setStep(double value) = 0;
    /// Pixels of a vertical drag for one step; at least 1.
    [[nodiscard]] virtual int triggerLength() const = 0;
    virtual void setTriggerLength(int pixels) = 0;
    [[nodiscard]] virtual int decimals() const = 0;
    virtual void setDecimals(int count) = 0;
    virtual void setDefault(double value) = 0; ///< what a right click goes back to
    [[nodiscard]] virtual double defaultValue() const = 0;
};

} // namespace componentinterface

[[nodiscard]] inline componentinterface::Spinner* toSpinner(Component* component)
{
    return toKind<componentinterface::Spinner>(component);
}

} // namespace tvw::gui

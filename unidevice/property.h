/// One named input of a tool: at most one control behind a small pipeline.
#pragma once

#include "unidevice/control.h"

#include <memory>
#include <string>

namespace tvw::unidevice {

class alignas(64) Property : public ControlTarget
{
    // What a tick looks at stands first, in one line of the caches.
    std::uint32_t kindMask_;
    Control* control_ = nullptr;
    double lost_ = 0.0; ///< a pad unplugged in the middle of a take must not slam its levers to 0

public:
    double multiplier = 1.0;
    double exponent = 1.0;
    double deadzone = 0.1; ///< of full deflection, 0 to below 1
    double offset = 0.0;

    class Factory;

    /// kindMask: the kinds of control that the input takes.
    Property(std::string name, std::uint32_t kindMask);

    void controlDeleted(Control* control) override;

    /// The shaped value: the dead zone is taken off the magnitude and the rest stretched back to
    /// full deflection, then exponent, sign, multiplier and offset in this order. 0 stands for an
    /// unbound control. Takes no lock, allocates nothing. Not a number at a dead zone of exactly 1.
    virtual double value();

    virtual void destroy() { delete this; }

    /// Binds a control (null: unbinds). Answers kindMask AND the control's, `kind::any` for null; 0
    /// says that the kinds don't fit, but the binding stands.
    std::uint32_t bind(Control* control);

    Control* control() const { return control_; }
    /// After `lose` the last value, until `forgetLost`; of any other unbound one 0.
    double raw() const { return control_ ? control_->value() : lost_; }

    /// Cut from a control whose device goes: `raw` stays where it was.
    void lose();

    /// A take begins or ends: what a device that is gone said last no longer counts.
    void forgetLost() { lost_ = 0.0; }

    const std::string& name() const { return name_; }
    std::uint32_t kindMask() const { return kindMask_; }

    /// A stored binding that no present device could meet; kept so that it survives a save. Never
    /// null.
    util::xml::Element& pendingControl() { return *pending_; }
    const util::xml::Element& pendingControl() const { return *pending_; }

    /// A `property` element: the name and the four numbers, without the binding.
    void writeXml(util::xml::Element& element) const;

    /// Takes what numbers the element has; the others stay.
    void readXml(const util::xml::Element& element);

    virtual ~Property();

    Property(const Property&) = delete;
    Property& operator=(const Property&) = delete;

private:
    std::string name_;
    std::unique_ptr<util::xml::Element> pending_;
};

/// Makes a tool's properties; a tool that wants a class of its own passes one.
class Property::Factory
{
public:
    virtual Property* create(std::string name, std::uint32_t kindMask);

protected:
    ~Factory() = default;
};

} // namespace tvw::unidevice

/// What an input is bound to, as its panel shows it.
#pragma once

#include "unidevice/control.h"

#include <string>
#include <vector>

namespace tvw::unidevice {
class Device;
class Property;
} // namespace tvw::unidevice

namespace tvw::rgs::app {

/// A device and one of its controls, by their texts; both empty: nothing chosen.
struct ControlChoice
{
    std::string device;
    std::string control;
    unidevice::Control* present = nullptr; ///< null too while the device is not connected

    [[nodiscard]] bool isNone() const { return device.empty(); }
};

/// One control, or the two of an emulated one: the first moves towards 1, the second towards -1.
struct Binding
{
    ControlChoice first;
    ControlChoice second;
    bool isPair = false;
};

/// A binding that waits for its device is told from what is stored of it.
[[nodiscard]] Binding bindingOf(const unidevice::Property& property);

/// The devices that a user can choose among, in the hub's order: those that have controls. What
/// emulates an axis by two keys is none of them; its parts are chosen.
[[nodiscard]] std::vector<unidevice::Device*> choosableDevices();
[[nodiscard]] unidevice::Device* deviceLabelled(const std::string& label); ///< null: none

/// The name, and which one it is of several of that name.
[[nodiscard]] std::string labelOf(const unidevice::Device& device);
[[nodiscard]] std::string labelOf(const unidevice::Control& control);

/// The path of a device's picture; empty: none.
[[nodiscard]] std::string iconOf(const std::string& deviceLabel);

/// A key or button on an input that wants an axis: a second one is needed for the other direction.
[[nodiscard]] bool isHalfAnAxis(const unidevice::Property& property,
                                const unidevice::Control* control);

/// What kinds of control the input takes, as a sentence.
[[nodiscard]] std::string kindsText(const unidevice::Property& property);

/// Binds, or unbinds by null, and forgets a binding that waited.
void bindByHand(unidevice::Property& property, unidevice::Control* control);

/// Both as one control, where that is possible; else the one that there is.
[[nodiscard]] unidevice::Control* joined(unidevice::Control* positive,
                                         unidevice::Control* negative);

/// Controls that are remembered for as long as they live.
class HeldControls final : public unidevice::ControlTarget
{
public:
    HeldControls() = default;
    ~HeldControls() { clear(); }
    HeldControls(const HeldControls&) = delete;
    HeldControls& operator=(const HeldControls&) = delete;

    void add(unidevice::Control* control); ///< null: nothing
    void add(const HeldControls& others);
    void clear();
    [[nodiscard]] unidevice::Control* first() const; ///< null: none
    [[nodiscard]] const std::vector<unidevice::Control*>& all() const { return controls_; }

    void controlDeleted(unidevice::Control* control) override;

private:
    std::vector<unidevice::Control*> controls_;
};

} // namespace tvw::rgs::app

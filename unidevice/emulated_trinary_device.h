/// Two controls as one of three states, such as two keys that steer left and right.
#pragma once

#include "unidevice/device.h"

#include <memory>
#include <vector>

namespace tvw::unidevice {

/// The difference of its two parts, which it does not own: it outlives them and then stays at 0.
class EmulatedTControl final : public Control, public ControlTarget
{
public:
    EmulatedTControl(Device* owner, Control* positive, Control* negative);
    ~EmulatedTControl() override;

    /// With a `control` child for each part that is left, its `te_direction` "positive" or
    /// "negative".
    util::xml::Element& writeXml(util::xml::Element& element) const override;
    bool matches(const util::xml::Element& element) const override;
    double value() override;
    bool dependsOn(const Device& other) const override;

    void controlDeleted(Control* control) override;

private:
    Control* positive_;
    Control* negative_;
};

/// "TrinaryEmulator": holds what was put together, for as long as the device lives. It never counts
/// as usable by itself and nothing of it is ever detected.
class EmulatedTrinaryDevice final : public Device, DynamicCreator<EmulatedTrinaryDevice>
{
public:
    EmulatedTrinaryDevice();
    ~EmulatedTrinaryDevice() override;

    /// The control of these two parts, made if it isn't there yet; null when a part is null.
    Control* createEmulated(Control* positive, Control* negative);

    int controlCount() const override { return static_cast<int>(controls_.size()); }
    Control* controlAt(int index) const override;
    bool update(void*) override { return true; }

    /// Makes a stored control whose two parts can be found.
    Control* findControl(const util::xml::Element& element) override;
    bool prepare(void* window) override;
    Control* detectControl(const ExcludeList*) override { return nullptr; }
    void resetControls() override;

private:
    std::vector<std::unique_ptr<EmulatedTControl>> controls_;
};

} // namespace tvw::unidevice

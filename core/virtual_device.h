/// A tool's outputs as controls of a device, so that they can be bound like any axis.
#pragma once

#include "unidevice/device.h"

#include <memory>
#include <string>
#include <vector>

namespace tvw::rgs::core {

class VirtualControl final : public unidevice::Control
{
public:
    VirtualControl(unidevice::Device* device, const std::string& name, std::int32_t id, std::uint32_t kind);
};

/// Enters the hub with its first control; its name is the tool's.
class InstanceVirtualDevice : public unidevice::Device
{
public:
    InstanceVirtualDevice();
    ~InstanceVirtualDevice() override;

    int controlCount() const override { return static_cast<int>(outputs_.size()); }
    unidevice::Control* controlAt(int index) const override;
    bool prepare(void* window) override;
    unidevice::Control* detectControl(const unidevice::ExcludeList* exclude) override;
    void resetControls() override;

    /// Takes the device out of the hub and its driver, so that nothing polls or detects it, and notes
    /// its places; puts it back there, in the hub if it ever was listed.
    void leaveHub();
    void enterHub();

protected:
    unidevice::Control* addOutput(const std::string& name, std::int32_t id, std::uint32_t kind);

private:
    bool registered_ = false;
    int place_ = -1; ///< in the hub's list; -1 until first listed
    unidevice::Driver* left_ = nullptr; ///< the driver to come back to; null: not away
    int polledPlace_ = -1;              ///< in that driver's list
    std::vector<std::unique_ptr<VirtualControl>> outputs_;
};

} // namespace tvw::rgs::core

/// A pad without hardware: a script or a test says what it reads.
#pragma once

#include "unidevice/device.h"

#include <memory>
#include <string_view>
#include <vector>

namespace tvw::unidevice {

/// How many controls of each type the pad has. Two controls of type "Hat" are one hat, X then Y.
struct ScriptedLayout
{
    int axes = 0;    ///< "Axis", -1 to 1
    int sliders = 0; ///< "Slider", -1 to 1
    int hats = 0;    ///< "Hat", -1, 0 or 1; counts the controls
    int buttons = 0; ///< "Button", 0 or 1
};

/// Lists itself in the hub with the first free index of its name, polled by "dummydriver".
class ScriptedDevice final : public Device, DynamicCreator<ScriptedDevice>
{
public:
    ScriptedDevice(std::string name, const ScriptedLayout& layout);
    ~ScriptedDevice() override;

    /// What the next update reads. False, and nothing changes, when there is no such control or the
    /// value is no finite number.
    bool set(std::string_view type, int index, double value);

    int controlCount() const override { return static_cast<int>(controls_.size()); }
    Control* controlAt(int index) const override;
    bool update(void* window) override;
    bool prepare(void* window) override;
    Control* detectControl(const ExcludeList* exclude) override;
    void resetControls() override;

private:
    void addControls(const char* type, int count, std::uint32_t kindMask);

    std::vector<std::unique_ptr<Control>> controls_;
    std::vector<double> raw_; ///< of each control
};

} // namespace tvw::unidevice

/// A pen on a tablet. It reads no hardware: whoever has the window's pen events passes them on.
#pragma once

#include "unidevice/device.h"

#include <memory>
#include <vector>

namespace tvw::unidevice {

/// What a pen says at once.
struct PenPacket
{
    double x = 0.5, y = 0.5; ///< on the tablet, from 0 to the extent
    double xExtent = 1.0, yExtent = 1.0;
    double azimuth = 0.0;                 ///< of the pen's upper end, clockwise from ahead [rad]
    double altitude = 1.5707963267948966; ///< over the tablet [rad]
    double pressure = 0.0;                ///< 0 to 1000
    unsigned buttons = 0;                 ///< bits
};

/// Lists itself in the hub, polled by "dummydriver". Pens count while the device is acquired.
class TabletDevice final : public Device, DynamicCreator<TabletDevice>
{
public:
    static constexpr int kButtons = 8;

    explicit TabletDevice(std::string name);
    ~TabletDevice() override;

    void packet(const PenPacket& pen); ///< what the next update reads

    int controlCount() const override { return static_cast<int>(controls_.size()); }
    Control* controlAt(int index) const override;
    bool update(void* window) override;
    bool prepare(void* window) override;
    Control* detectControl(const ExcludeList* exclude) override;
    void resetControls() override;
    bool acquire(void* window) override;
    bool release(void* window) override;

private:
    void add(const char* type, int index, std::uint32_t kindMask, double threshold,
             std::string description);

    PenPacket pen_;
    bool isAcquired_ = false;
    std::vector<std::unique_ptr<Control>> controls_;
};

} // namespace tvw::unidevice

/// A camera that follows another through two cascaded filters of the first order: it never
/// overshoots, and the slope of its motion is smooth too.
#pragma once

#include "plugins/release/steadycam/steadycam_items.h"

namespace tvw::rgs::addon {

class CSteadyCamObject final : public Tool<steadycam::Settings>
{
public:
    explicit CSteadyCamObject(const CreateParam& param);

private:
    void runStarts(double time) override;
    void step(double time) override;
    void itemActed(std::string_view label) override;

    QTransformd attached(double time) const;

    bool bFirstTime_ = true;
    QTransformd memory_; ///< the first filter
};

} // namespace tvw::rgs::addon

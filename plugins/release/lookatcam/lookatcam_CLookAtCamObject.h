/// A camera that looks at a target, focused on it.
#pragma once

#include "plugins/release/lookatcam/lookatcam_items.h"

namespace tvw::rgs::addon {

class CLookAtCamObject final : public Tool<lookatcam::Settings>
{
public:
    explicit CLookAtCamObject(const CreateParam& param);

private:
    void runStarts(double time) override { look(time); }
    void step(double time) override { look(time); }
    void itemActed(std::string_view label) override;
    void look(double time);
};

} // namespace tvw::rgs::addon

/// A slider that is loose in a cone: it keeps its direction until the cone's wall takes it along.
#pragma once

#include "plugins/release/angularplay/angularplay_items.h"

namespace tvw::rgs::addon {

class CAngularPlayObject final : public Tool<angularplay::Settings>
{
public:
    explicit CAngularPlayObject(const CreateParam& param);

    std::vector<std::int32_t> supportedCodes() override;
    std::intptr_t call(std::int32_t code, void* argument) override;

private:
    void runStarts(double time) override;
    void step(double time) override;
    void itemActed(std::string_view label) override;

    /// The slider belongs where it is now, and points to the middle of the cone.
    void initialize(double time);

    void writeCustom(util::xml::Element& custom) const;
    bool readCustom(const util::xml::Element& custom);

    bool initialized_ = false;
    Vector3d position_;            ///< of the slider in the outer node
    Vector3d direction_{0, 0, -1}; ///< the cone's axis in the outer node, of unit length there
};

} // namespace tvw::rgs::addon

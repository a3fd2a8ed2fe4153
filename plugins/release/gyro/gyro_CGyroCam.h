/// A steady platform: takes of an eye's pose, seen from a pivot, only the parts that are wanted.
#pragma once

#include "plugins/release/gyro/gyro_items.h"
#include "util/transform.h"

namespace tvw::rgs::addon {

class CGyroCam final : public Tool<gyro::Settings>
{
public:
    explicit CGyroCam(const CreateParam& param);

private:
    void runStarts(double time) override { hold(time); }
    void step(double time) override { hold(time); }

    void readRestriction();
    void hold(double time);
    Quatd heldRotation(const Matrix4& seen) const;
};

} // namespace tvw::rgs::addon

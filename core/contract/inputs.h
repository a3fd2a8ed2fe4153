/// What a tool sees of the input system: a `Property` is one named input, a `Control` one output.
#pragma once

#include "unidevice/control.h"
#include "unidevice/property.h"

namespace tvw::rgs {
using unidevice::Control;
using unidevice::Property;
} // namespace tvw::rgs

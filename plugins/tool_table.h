/// The tool types that are built into the program.
#pragma once

#include "core/contract/plugin.h"

#include <span>

namespace tvw::rgs {

using MakePlugin = CCameraPlugin* (*)();

/// One maker a type, in the order in which the types are listed. The caller owns what they make.
std::span<const MakePlugin> toolTable();

} // namespace tvw::rgs

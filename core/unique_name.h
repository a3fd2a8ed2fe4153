/// Names that no other tool bears.
#pragma once

#include <functional>
#include <string>

namespace tvw::rgs::core {

class Instance;

/// The wanted name while no living tool other than `except` bears it, else with the next number that is
/// free: the last run of digits is counted up in its width ("Car_09", "Car_10"), and a name without one
/// gets "_01".
std::string uniqueName(const std::string& wanted, const Instance* except);

/// The same against any set of names.
std::string uniqueName(const std::string& wanted, const std::function<bool(const std::string&)>& isTaken);

} // namespace tvw::rgs::core

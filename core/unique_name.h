/// Names that no other tool bears.
#pragma once

#include <functional>
#include <string>

namespace tvw::rgs::core {

class Instance;

/// The wanted name while it is free, else with the next number that is: the last run of digits is
/// counted up in its width ("Car_09", "Car_10"), and a name without one gets "_01".
std::string uniqueName(const std::string& wanted, const std::function<bool(const std::string&)>& isTaken);

/// Whether a living tool other than `except` bears the name.
bool isNameTaken(const std::string& name, const Instance* except);

} // namespace tvw::rgs::core

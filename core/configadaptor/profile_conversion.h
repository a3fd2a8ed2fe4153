/// Configuration profiles of older versions as present ones.
#pragma once

#include "util/xml/element.h"

namespace tvw::rgs::core::configadaptor {

inline constexpr const char* kProfileVersion = "2.0";

/// Whether it is a `configprofile` of the present version.
bool isPresentProfile(const util::xml::Element& element);

/// A present profile is answered as it stands. Of anything else a profile with the attribute
/// `converted` is made, which holds the items that can be read: it may be empty. Items that bore no
/// number get the one of their place, where buttons count too.
util::xml::Element convertProfile(const util::xml::Element& element);

} // namespace tvw::rgs::core::configadaptor

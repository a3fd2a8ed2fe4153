/// What the layouts of the items have in common.
#pragma once

#include "core/configadaptor/node.h"

namespace tvw::rgs::core::configadaptor {

/// The shortest text that reads back as the same number.
std::string numberText(double value);

/// A component of a leaf, with the node's id and tooltip and the height of a row.
util::xml::Element makeComponent(const char* tag, const Node& node);

/// A row of the node's label and the component.
util::xml::Element makeRow(const Node& node, const util::xml::Element& component);

} // namespace tvw::rgs::core::configadaptor

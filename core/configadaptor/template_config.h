/// The items of a template: a layout of its own, whose spinners and check boxes hold their values
/// here.
#pragma once

#include "core/configadaptor/node.h"

#include <string>

namespace tvw::rgs::core::configadaptor {

/// config: the template's `config` element. dataPath: what stands for "[datapath]" in its layout.
Node* makeTemplateConfig(const util::xml::Element& config, const std::string& dataPath);

} // namespace tvw::rgs::core::configadaptor

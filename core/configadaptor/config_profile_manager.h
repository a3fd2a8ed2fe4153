/// The configuration profiles of a tool type: ".tvc" files.
#pragma once

#include "unidevice/xml_file_manager.h"

namespace tvw::rgs::core {

/// A file is a `configprofiles` with any number of `configprofile` elements, or one bare
/// `configprofile`. Files of older versions are read as present ones.
class ConfigProfileManager final : public unidevice::XMLFileManager
{
public:
    ConfigProfileManager();
    std::vector<util::xml::Element> loadFromFile(const std::string& path) override;
    std::string profileName(const util::xml::Element& element) override;
    std::string pattern() override { return "*.tvc"; }
};

} // namespace tvw::rgs::core

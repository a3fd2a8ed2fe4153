/// The input profiles of a tool type: ".tvi" files.
#pragma once

#include "unidevice/xml_file_manager.h"

namespace tvw::unidevice {

/// A file is a `unidevice` with any number of `profile` elements, or one bare `profile`.
class InputProfileManager final : public XMLFileManager
{
public:
    InputProfileManager();
    std::vector<util::xml::Element> loadFromFile(const std::string& path) override;
    std::string profileName(const util::xml::Element& element) override;
    std::string pattern() override { return "*.tvi"; }
};

} // namespace tvw::unidevice

#include "unidevice/input_profile_manager.h"

namespace tvw::unidevice {

using util::xml::Element;

InputProfileManager::InputProfileManager() : XMLFileManager(util::xml::Tag("unidevice")) {}

std::vector<Element> InputProfileManager::loadFromFile(const std::string& path)
{
    Element root;
    if (root.loadFile(path) != util::xml::code::ok)
        return {};
    if (root.name() == "profile")
        return {root};
    std::vector<Element> profiles;
    if (root.name() == "unidevice") {
        for (const Element& child : root.children()) {
            if (child.name() == "profile")
                profiles.push_back(child);
        }
    }
    return profiles;
}

std::string InputProfileManager::profileName(const Element& element)
{
    const Element& profile = element.name() == "unidevice" ? element.child("profile") : element;
    return profile.name() == "profile" ? profile.attributeValue("name") : std::string();
}

} // namespace tvw::unidevice

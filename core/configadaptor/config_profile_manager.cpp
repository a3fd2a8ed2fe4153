#include "core/configadaptor/config_profile_manager.h"

#include "core/configadaptor/profile_conversion.h"

namespace tvw::rgs::core {

using util::xml::Element;

namespace {

Element fileRoot()
{
    util::xml::Tag root("configprofiles");
    root.setAttribute("version", configadaptor::kProfileVersion);
    return root;
}

bool isOlderRoot(const Element& root)
{
    return root.name() == "ConfigProfile" || root.name() == "rgs_config" ||
           root.name() == "CameraConfig";
}

} // namespace

ConfigProfileManager::ConfigProfileManager() : XMLFileManager(fileRoot()) {}

std::vector<Element> ConfigProfileManager::loadFromFile(const std::string& path)
{
    Element root;
    if (root.loadFile(path) != util::xml::code::ok)
        return {};
    if (configadaptor::isPresentProfile(root))
        return {root};
    const bool isPresent = root.name() == "configprofiles" &&
                           root.attributeValue("version") == configadaptor::kProfileVersion;
    std::vector<Element> profiles;
    for (const Element& child : root.children()) {
        if (isPresent && child.name() == "configprofile")
            profiles.push_back(child);
        else if (isOlderRoot(root) && child.name() == "profile")
            profiles.push_back(configadaptor::convertProfile(child));
    }
    return profiles;
}

std::string ConfigProfileManager::profileName(const Element& element)
{
    const Element& profile =
        element.name() == "configprofiles" ? element.child("configprofile") : element;
    return profile.name() == "configprofile" ? profile.attributeValue("name") : std::string();
}

} // namespace tvw::rgs::core

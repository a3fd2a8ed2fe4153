#include "app/config_profiles.h"

#include "core/configadaptor/profile_conversion.h"
#include "core/configadaptor/stored_number.h"
#include "core/instance.h"
#include "core/tool.h"

#include <map>
#include <optional>

namespace tvw::rgs::app {

using util::xml::Element;

namespace {

bool isSameValue(const Element& a, const Element& b)
{
    const std::optional<double> number = core::configadaptor::storedNumber(a);
    return a.text() == b.text() || (number && number == core::configadaptor::storedNumber(b));
}

using ItemsById = std::multimap<std::string, const Element*>;

void collect(const Element& element, ItemsById& items)
{
    for (const Element& child : element.children()) {
        if (child.name() == "item")
            items.emplace(child.attributeValue("id"), &child);
        else
            collect(child, items);
    }
}

} // namespace

unidevice::XMLFileManager& ConfigProfiles::store()
{
    return type_.configProfiles();
}

Element ConfigProfiles::present(const std::string& name)
{
    Element profile;
    tool_.writeConfigProfile(profile, name);
    return profile;
}

void ConfigProfiles::load(const Element& profile)
{
    tool_.loadConfigProfile(profile);
}

std::string ConfigProfiles::current()
{
    return tool_.configProfileName();
}

void ConfigProfiles::setCurrent(const std::string& name)
{
    tool_.setConfigProfileName(name);
}

bool ConfigProfiles::differsFrom(const Element& profile)
{
    const Element now = present(current());
    ItemsById ours, stored;
    collect(now, ours);
    collect(profile, stored);
    for (const auto& [id, item] : ours) {
        const auto [first, last] = stored.equal_range(id);
        for (auto at = first; at != last; ++at) {
            const Element& other = *at->second;
            const bool isMeant = !other.hasAttribute("label") ||
                                 other.attributeValue("label") == item->attributeValue("label");
            if (isMeant && !isSameValue(*item, other))
                return true;
        }
    }
    return false;
}

void ConfigProfiles::deleted(const std::string&, const std::string& neighbour)
{
    if (const Element wanted = store().profile(neighbour); !wanted.isEmpty())
        load(wanted);
}

const ProfileTexts& ConfigProfiles::texts() const
{
    static constexpr ProfileTexts kTexts{
        .filter = "Tarvo Config Profiles (*.tvc)",
        .newTitle = "New profile...",
        .saveAsTitle = "Save profile as...",
        .importRefused = "The profile already exists and cannot be overwritten.",
        .importFailed = "The profile could not be imported. ",
    };
    return kTexts;
}

Element ConfigProfiles::fileOf(const Element& profile)
{
    util::xml::Tag file("configprofiles");
    file.setAttribute("version", core::configadaptor::kProfileVersion);
    file.addChild(profile);
    return file;
}

} // namespace tvw::rgs::app

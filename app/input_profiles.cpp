#include "app/input_profiles.h"

#include "app/profile_prompts.h"
#include "core/instance.h"
#include "core/tool.h"

#include <utility>

namespace tvw::rgs::app {

using util::xml::Element;

namespace {

std::string countText(int missing)
{
    if (missing == 1)
        return "1 control is not connected; its binding waits for it.";
    return std::to_string(missing) + " controls are not connected; their bindings wait for them.";
}

} // namespace

InputProfiles::InputProfiles(core::Instance& tool, std::function<void(const std::string&)> say)
    : ProfileSubject(tool), say_(std::move(say))
{
}

unidevice::XMLFileManager& InputProfiles::store()
{
    return type_.inputProfiles();
}

Element InputProfiles::present(const std::string& name)
{
    Element profile;
    tool_.writeInputProfile(profile, name);
    return profile;
}

void InputProfiles::load(const Element& profile)
{
    const int missing = tool_.loadInputProfile(profile);
    if (missing == unidevice::PropertyHandler::kNoProfile)
        tell("The profile could not be loaded.");
    else
        say_(missing == 0 ? "Loaded: " + current() : countText(missing));
}

std::string InputProfiles::current()
{
    return tool_.inputProfileName();
}

void InputProfiles::setCurrent(const std::string& name)
{
    tool_.setInputProfileName(name);
}

void InputProfiles::deleted(const std::string& name, const std::string&)
{
    if (current() == name)
        setCurrent({});
}

const ProfileTexts& InputProfiles::texts() const
{
    static constexpr ProfileTexts kTexts{
        .filter = "Tarvo Input Profiles (*.tvi);;All files (*.*)",
        .newTitle = "New profile",
        .saveAsTitle = "New profile",
        .importRefused = "The specified profile already exists and cannot be overwritten.",
        .importFailed = "The profile could not be imported.",
    };
    return kTexts;
}

Element InputProfiles::fileOf(const Element& profile)
{
    Element file = util::xml::Tag("unidevice");
    file.addChild(profile);
    return file;
}

} // namespace tvw::rgs::app

/// The configuration of a tool, as what its profiles are of.
#pragma once

#include "app/profile_actions.h"

namespace tvw::rgs::app {

class ConfigProfiles final : public ProfileSubject
{
public:
    using ProfileSubject::ProfileSubject;

    unidevice::XMLFileManager& store() override;
    util::xml::Element present(const std::string& name) override;
    void load(const util::xml::Element& profile) override;
    std::string current() override;
    void setCurrent(const std::string& name) override;
    bool differsFrom(const util::xml::Element& profile) override;
    void deleted(const std::string& name, const std::string& neighbour) override; ///< loads that
    util::xml::Element fileOf(const util::xml::Element& profile) override;
    const ProfileTexts& texts() const override;
};

} // namespace tvw::rgs::app

/// The configuration of a tool, as what its profiles are of.
#pragma once

#include "app/profile_actions.h"

namespace tvw::rgs::core {
class Instance;
}

namespace tvw::rgs::app {

class ConfigProfiles final : public ProfileSubject
{
public:
    explicit ConfigProfiles(core::Instance& tool) : tool_(tool) {}

    unidevice::XMLFileManager& store() override;
    util::xml::Element present(const std::string& name) override;
    void load(const util::xml::Element& profile) override;
    std::string current() override;
    void setCurrent(const std::string& name) override;
    bool differsFrom(const util::xml::Element& profile) override;
    util::xml::Element fileOf(const util::xml::Element& profile) override;
    const char* filter() const override { return "Tarvo Config Profiles (*.tvc)"; }

private:
    core::Instance& tool_;
};

} // namespace tvw::rgs::app

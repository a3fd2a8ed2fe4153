/// The configuration of a tool, as what its profiles are of.
#pragma once

#include "app/profile_actions.h"
#include "core/instance_reference.h"

namespace tvw::rgs::core {
class Instance;
class Tool;
} // namespace tvw::rgs::core

namespace tvw::rgs::app {

class ConfigProfiles final : public ProfileSubject
{
public:
    /// tool: in the tree.
    explicit ConfigProfiles(core::Instance& tool);

    bool isThere() override;
    unidevice::XMLFileManager& store() override;
    util::xml::Element present(const std::string& name) override;
    void load(const util::xml::Element& profile) override;
    std::string current() override;
    void setCurrent(const std::string& name) override;
    bool differsFrom(const util::xml::Element& profile) override;
    void deleted(const std::string& name, const std::string& neighbour) override; ///< loads that
    util::xml::Element fileOf(const util::xml::Element& profile) override;
    const ProfileTexts& texts() const override;

private:
    core::Instance& tool_;
    core::Tool& type_; ///< outlives the tool
    core::InstanceReference::Watch entry_;
};

} // namespace tvw::rgs::app

/// The inputs of a tool, as what its profiles are of.
#pragma once

#include "app/profile_actions.h"
#include "core/instance_reference.h"

#include <functional>

namespace tvw::rgs::core {
class Instance;
class Tool;
} // namespace tvw::rgs::core

namespace tvw::rgs::app {

/// A load asks nothing: bindings that differ from their profile are no loss worth a question.
class InputProfiles final : public ProfileSubject
{
public:
    /// tool: in the tree. say: hears what a load has come to.
    InputProfiles(core::Instance& tool, std::function<void(const std::string&)> say);

    bool isThere() override;
    unidevice::XMLFileManager& store() override;
    util::xml::Element present(const std::string& name) override;
    void load(const util::xml::Element& profile) override;
    std::string current() override;
    void setCurrent(const std::string& name) override;
    void deleted(const std::string& name, const std::string& neighbour) override;
    util::xml::Element fileOf(const util::xml::Element& profile) override;
    const ProfileTexts& texts() const override;

private:
    core::Instance& tool_;
    core::Tool& type_; ///< outlives the tool
    core::InstanceReference::Watch entry_;
    std::function<void(const std::string&)> say_;
};

} // namespace tvw::rgs::app

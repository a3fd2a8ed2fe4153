/// The inputs of a tool, as what its profiles are of.
#pragma once

#include "app/profile_actions.h"

#include <functional>

namespace tvw::rgs::app {

/// A load asks nothing: bindings that differ from their profile are no loss worth a question.
class InputProfiles final : public ProfileSubject
{
public:
    /// tool: in the tree. say: hears what a load has come to.
    InputProfiles(core::Instance& tool, std::function<void(const std::string&)> say);

    unidevice::XMLFileManager& store() override;
    util::xml::Element present(const std::string& name) override;
    void load(const util::xml::Element& profile) override;
    std::string current() override;
    void setCurrent(const std::string& name) override;
    void deleted(const std::string& name, const std::string& neighbour) override;
    util::xml::Element fileOf(const util::xml::Element& profile) override;
    const ProfileTexts& texts() const override;

private:
    std::function<void(const std::string&)> say_;
};

} // namespace tvw::rgs::app

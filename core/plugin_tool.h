/// A tool type that a factory makes.
#pragma once

#include "core/contract/plugin.h"
#include "core/tool.h"

namespace tvw::rgs::core {

class Plugin final : public Tool
{
public:
    /// Takes the factory.
    Plugin(Library* library, CCameraPlugin* factory);
    ~Plugin() override;

    CCameraPlugin& factory() const { return *factory_; }

    std::string getDescription() const override;
    bool isListed() const override;
    ToolKind getKind() const override { return ToolKind::Plugin; }
    std::string getDataFolder() const override;
    std::vector<std::string> getIds() const override;
    std::vector<std::string> getCategories() const override;
    std::string getUserFolder() const override;
    std::string getDataPath() const override;
    std::string getHelpPath() const override;
    InstanceReference* createInstance(const std::string& name) override;
    Instance* createRaw(const std::string& name) override;
    void makeElement(util::xml::Element& out, const std::string& name) const override;
    std::string getDisplayName() const override;

private:
    CCameraPlugin* factory_;
};

} // namespace tvw::rgs::core

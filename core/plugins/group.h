/// An entry that only holds others: the root of the tree, and the user's groups.
#pragma once

#include "core/contract/plugin.h"

namespace tvw::rgs::core::plugins {

class Group final : public CCameraPlugin
{
public:
    std::vector<std::int32_t> supportedCodes() override;
    std::intptr_t call(std::int32_t code, void* argument) override;
    CCamera* createObject(const CCamera::CreateParam& param) override;
    std::string getId() override { return "Group"; }
    std::string getDataFolder() override { return "core/emptyplugin"; }
    std::string getDisplayName() override { return "Group"; }
    std::string getCategory() override { return "Accessory"; }
    std::string getDescription() override { return "Is used to group various tools together"; }
    std::int32_t getVersion() override { return 8101; }
};

} // namespace tvw::rgs::core::plugins

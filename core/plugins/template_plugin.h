/// A tool without program code of its own: its inputs, outputs and logic stand in its record.
#pragma once

#include "core/contract/plugin.h"

#include <string>
#include <utility>

namespace tvw::rgs::core::plugins {

class TemplatePlugin final : public CCameraPlugin
{
public:
    TemplatePlugin(std::string id, std::string folder) : id_(std::move(id)), folder_(std::move(folder)) {}

    std::vector<std::int32_t> supportedCodes() override;
    CCamera* createObject(const CCamera::CreateParam& param) override;
    std::string getId() override { return id_; }
    std::string getDataFolder() override { return folder_; }
    std::string getDisplayName() override { return getDescription(); }
    std::string getCategory() override { return "PRS"; }
    std::string getDescription() override;
    std::int32_t getVersion() override { return 8101; }

private:
    std::string id_;
    std::string folder_;
};

} // namespace tvw::rgs::core::plugins

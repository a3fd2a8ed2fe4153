/// What the library shows of a tool type, from one row of texts.
#pragma once

#include "core/contract/codes.h"
#include "core/contract/plugin.h"

#include <span>
#include <string_view>

namespace tvw::rgs {

struct PluginInfo
{
    std::string_view id;
    std::string_view dataFolder;
    std::string_view displayName;
    std::string_view category;
    std::string_view description;
    std::span<const std::string_view> olderIds{};
};

/// A factory of `Object`s, which are made from a `CCamera::CreateParam`.
template <class Object>
class ToolPlugin : public CCameraPlugin
{
public:
    explicit ToolPlugin(const PluginInfo& info) : info_(info) {}

    CCamera* createObject(const CCamera::CreateParam& param) override { return new Object(param); }
    std::string getId() override { return std::string(info_.id); }
    std::string getDataFolder() override { return std::string(info_.dataFolder); }
    std::string getDisplayName() override { return std::string(info_.displayName); }
    std::string getCategory() override { return std::string(info_.category); }
    std::string getDescription() override { return std::string(info_.description); }

    std::vector<std::int32_t> supportedCodes() override
    {
        if (info_.olderIds.empty())
            return {};
        return {code::olderIds};
    }

    std::intptr_t call(std::int32_t code, void* argument) override
    {
        if (code != code::olderIds || !argument)
            return 0;
        static_cast<std::vector<std::string>*>(argument)->assign(info_.olderIds.begin(),
                                                                  info_.olderIds.end());
        return 1;
    }

private:
    PluginInfo info_;
};

} // namespace tvw::rgs

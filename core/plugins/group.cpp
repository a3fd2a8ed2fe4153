#include "core/plugins/group.h"

#include "core/contract/codes.h"
#include "core/instance.h"

namespace tvw::rgs::core::plugins {

namespace {

class GroupCode final : public CCamera
{
public:
    using CCamera::CCamera;

    int declareConfiguration() override
    {
        static_cast<Instance*>(interface())->setIconPath("/core/images/treeicons/group.png");
        interface()->beginConfiguration();
        interface()->endConfiguration();
        return 0;
    }
    std::intptr_t call(std::int32_t operation, void*) override
    {
        return operation == code::ticksAlone ? 1 : 0;
    }
    int createNodes() override { return 0; }
    int load() override { return 0; }

    /// A record with state is one whose nodes stand in the scene already; a group has neither.
    int save() override { return 1; }
};

} // namespace

std::vector<std::int32_t> Group::supportedCodes() { return {code::olderIds}; }

std::intptr_t Group::call(std::int32_t operation, void* argument)
{
    if (operation != code::olderIds || !argument)
        return 0;
    *static_cast<std::vector<std::string>*>(argument) = {"Empty Plugin", "Empty plugin"};
    return 1;
}

CCamera* Group::createObject(const CCamera::CreateParam& param) { return new GroupCode(param); }

} // namespace tvw::rgs::core::plugins

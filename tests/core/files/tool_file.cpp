// A tool file, built several times with other exports: VERSION is what it says that it is, PLUGIN
// the id of its one tool; either may be missing.
#include "core/contract/interface.h"
#include "core/contract/plugin.h"

namespace {

using namespace tvw::rgs;

class ForeignTool final : public CCamera
{
public:
    using CCamera::CCamera;
    int declareConfiguration() override
    {
        interface()->beginConfiguration();
        interface()->addSpinner("Speed", "", &speed_, 0, 10, 1, 10, false, 0, nullptr);
        interface()->endConfiguration();
        return 0;
    }
    int createNodes() override { return interface()->createHelperNode("Mark", nullptr, 0) ? 0 : 1; }
    int load() override { return 0; }
    int save() override { return 0; }

private:
    double speed_ = 7.0;
};

#ifdef PLUGIN
class ForeignPlugin final : public CCameraPlugin
{
public:
    CCamera* createObject(const CCamera::CreateParam& param) override
    {
        return new ForeignTool(param);
    }
    std::string getId() override { return PLUGIN; }
    std::string getDisplayName() override { return "Foreign"; }
    std::string getCategory() override { return "Vehicle"; }
    std::string getDescription() override { return "Comes from a file."; }
};
#endif

} // namespace

extern "C" {

#ifdef VERSION
std::int32_t getVersion()
{
    return VERSION;
}
#endif

#ifdef PLUGIN
tvw::rgs::CCameraPlugin* getPlugin(std::int32_t index)
{
    return index == 0 ? new ForeignPlugin : nullptr;
}
#endif

} // extern "C"

// A tool file as a third party would build it: against the contract's headers alone, linked with
// nothing of ours. Its tool notes each call that it gets.
#include "core/contract/interface.h"
#include "core/contract/plugin.h"

#include <string>

namespace {

using namespace tvw::rgs;

std::string notes;

class NotingTool final : public CCamera
{
public:
    using CCamera::CCamera;
    std::intptr_t call(std::int32_t, void*) override { return note("call"); }
    bool isSupported(std::int32_t) override { return note("isSupported"); }
    void startRun(double) override { note("startRun"); }
    void stopRun() override { note("stopRun"); }
    void tick(double) override { note("tick"); }
    void timeChanged(double) override { note("timeChanged"); }
    int declareConfiguration() override { return note("declareConfiguration"); }
    int createNodes() override { return note("createNodes"); }
    int load() override { return note("load"); }
    int save() override { return note("save"); }
    void destroy() override { note("destroy"); }

private:
    int note(const char* name)
    {
        notes.append(name).append(" ");
        return 0;
    }
};

class NotingPlugin final : public CCameraPlugin
{
public:
    CCamera* createObject(const CCamera::CreateParam& param) override { return new NotingTool(param); }
    std::string getId() override { return "NotingTool"; }
    std::string getDisplayName() override { return "Noting tool"; }
    std::string getCategory() override { return "Utility"; }
    std::string getDescription() override { return "Notes the calls that it gets."; }
};

} // namespace

extern "C" {

std::int32_t getVersion() { return tvw::rgs::kToolFileVersion; }

tvw::rgs::CCameraPlugin* getPlugin(std::int32_t index)
{
    return index == 0 ? new NotingPlugin : nullptr;
}

const char* noted() { return notes.c_str(); }

/// Calls every operation of the interface once, in the contract's order.
void callAll(CInterface* runtime)
{
    runtime->call(1, nullptr);
    (void)runtime->supportedCodes();
    runtime->isSupported(1);
    runtime->pushUndo(nullptr);
    runtime->addProperty("input", 7, nullptr);
    runtime->addProperty("input", 7);
    runtime->findProperty("input");
    runtime->beginConfiguration();
    runtime->endConfiguration();
    runtime->beginGroup("group", "");
    runtime->endGroup();
    runtime->addIntSpinner("i", "", nullptr, 0, 1, 1, 10, false, nullptr);
    runtime->addSpinner("d", "", nullptr, 0, 1, 1, 10, false, 0, nullptr);
    runtime->addCheckBox("b", "", nullptr, nullptr);
    runtime->addTextBox("t", "", nullptr, nullptr);
    runtime->addComboBox("c", "", {}, nullptr, nullptr);
    runtime->addButton("p", "", nullptr);
    runtime->reservedOne();
    runtime->updateConfiguration();
    runtime->showInputDialog();
    std::string folder;
    tvw::ReturnValue<std::string> out(folder);
    runtime->getDataFolder(out);
    runtime->setSaveData(nullptr, 0);
    runtime->getSaveData(nullptr);
    runtime->clearSaveData();
    runtime->deleteNode(nullptr);
    runtime->getNode("node");
    runtime->createHelperNode("node", nullptr, 0);
    runtime->createMeshNode("node", nullptr, nullptr, 0);
    runtime->reservedTwo("", tvw::CMesh());
    runtime->getSnapshot(nullptr, 0);
    runtime->getHelperSnapshot(nullptr);
    runtime->getMeshSnapshot(nullptr, 0);
    runtime->getLensSnapshot(nullptr, 0);
    runtime->releaseNode(nullptr);
    runtime->releaseLensSnapshot(nullptr);
    runtime->releaseMeshSnapshot(nullptr);
    runtime->releaseHelperSnapshot(nullptr);
    runtime->releaseSnapshot(nullptr);
    runtime->getTime();
    runtime->getFramesPerSecond();
    runtime->getFrameDuration();
    runtime->redrawViews();
    runtime->messageBox("", "", 0);
}

} // extern "C"

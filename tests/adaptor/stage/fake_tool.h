/// A tool's side of the runtime for tests of the host: it is somebody to own nodes, and answers
/// with its record when it is asked for it.
#pragma once

#include "adaptor/stage/stage.h"
#include "core/contract/interface.h"
#include "tests/support/ground_meshes.h"

#include <string>

namespace tvw::rgs::stage {

class FakeTool final : public CInterface
{
public:
    explicit FakeTool(std::string toolName) : name(std::move(toolName)) {}

    std::string name;
    std::function<void(XmlSink&)> record; ///< answers code 56

    std::intptr_t call(std::int32_t code, void* argument) override
    {
        if (code == code::masterNode && record)
            record(*static_cast<XmlSink*>(argument));
        return 0;
    }
    void pushUndo(CUndo*) override {}
    Property* addProperty(std::string, std::uint32_t, Property::Factory*) override
    {
        return nullptr;
    }
    Property* addProperty(std::string, std::uint32_t) override { return nullptr; }
    Property* findProperty(std::string) override { return nullptr; }
    void beginConfiguration() override {}
    void endConfiguration() override {}
    void beginGroup(std::string, std::string) override {}
    core::configadaptor::Node* endGroup() override { return nullptr; }
    void addIntSpinner(std::string, std::string, std::int32_t*, std::int32_t, std::int32_t,
                       std::int32_t, std::int32_t, bool, Callback*) override
    {
    }
    void addSpinner(std::string, std::string, double*, double, double, double, std::int32_t, bool,
                    std::int32_t, Callback*) override
    {
    }
    void addCheckBox(std::string, std::string, bool*, Callback*) override {}
    void addTextBox(std::string, std::string, std::string*, Callback*) override {}
    ComboUpdater* addComboBox(std::string, std::string, std::vector<std::string>, std::int32_t*,
                              Callback*) override
    {
        return nullptr;
    }
    void addButton(std::string, std::string, Callback*) override {}
    void updateConfiguration() override {}
    void showInputDialog() override {}
    void getDataFolder(ReturnValue<std::string>&) override {}
    void setSaveData(const void*, std::int32_t) override {}
    const void* getSaveData(std::int32_t*) override { return nullptr; }
    void clearSaveData() override {}
    void deleteNode(CNode*) override {}
    CNode* getNode(std::string) override { return nullptr; }
    CNode* createHelperNode(std::string, CNode*, std::int64_t) override { return nullptr; }
    CNode* createMeshNode(std::string, CNode*, const CMesh*, std::int64_t) override
    {
        return nullptr;
    }
    CSnapshot* getSnapshot(CNode*, double) override { return nullptr; }
    CSnapshot_Helper* getHelperSnapshot(CNode*) override { return nullptr; }
    CSnapshot_Mesh* getMeshSnapshot(CNode*, double) override { return nullptr; }
    CSnapshot_Lens* getLensSnapshot(CNode*, double) override { return nullptr; }
    void releaseNode(CNode*) override {}
    void releaseLensSnapshot(CSnapshot_Lens*) override {}
    void releaseMeshSnapshot(CSnapshot_Mesh*) override {}
    void releaseHelperSnapshot(CSnapshot_Helper*) override {}
    void releaseSnapshot(CSnapshot*) override {}
    double getTime() override { return 0.0; }
    double getFramesPerSecond() override { return 25.0; }
    double getFrameDuration() override { return 0.04; }
    void redrawViews() override {}
    std::int32_t messageBox(std::string, std::string, std::int32_t) override { return 0; }
};

/// A stage that asks fake tools for their names.
class ToolStage
{
public:
    ToolStage()
    {
        stage.hooks.ownerName = [](CInterface* owner) {
            return static_cast<FakeTool*>(owner)->name;
        };
    }

    NodeHandle& helper(FakeTool& tool, const std::string& name, CNode* parent = nullptr)
    {
        return *static_cast<NodeHandle*>(stage.createHelperNode(&tool, name, parent, 0));
    }

    std::vector<core::CoreNode*> nodesOf(CInterface* owner)
    {
        std::vector<core::CoreNode*> nodes;
        ReturnValue<std::vector<core::CoreNode*>> out(nodes);
        stage.getNodes(owner, out);
        return nodes;
    }

    std::vector<core::CoreNode*> all()
    {
        std::vector<core::CoreNode*> nodes;
        ReturnValue<std::vector<core::CoreNode*>> out(nodes);
        stage.getAllNodes(out);
        return nodes;
    }

    Stage stage;
};

using tests::at;

} // namespace tvw::rgs::stage

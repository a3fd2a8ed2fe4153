/// A tool that lives in a scene.
///
/// Towards the tool object it is the runtime (`CInterface`), towards the input system a device whose
/// controls are the tool's outputs, towards the tree it has an `InstanceReference`, which owns it.
#pragma once

#include "core/configadaptor/node.h"
#include "core/contract/camera.h"
#include "core/contract/interface.h"
#include "core/live_spinners.h"
#include "core/recorded_inputs.h"
#include "core/virtual_device.h"
#include "unidevice/property_handler.h"
#include "util/messagenode.h"
#include "util/xml/element.h"

#include <memory>
#include <string>
#include <vector>

namespace tvw::rgs::core {

class AdaptorInterface;
class CoreNode;
class InstanceReference;
class Tool;

/// Times are seconds. Ended by its reference, or by whoever made it before it had one.
class Instance final : public InstanceVirtualDevice, public CInterface, public MessageNode
{
public:
    /// Takes the tool object. An empty name becomes the tool type's id with "_01"; the name is made
    /// unique. tool: the type, which lists the instance as long as it lives.
    Instance(Tool* type, CCamera* tool, const std::string& name);
    ~Instance() override;

    // Name.

    const std::string& name() const override { return name_; }

    /// Takes the name, made unique over all tools, and renames the nodes after it.
    void setName(const std::string& wanted) override;

    /// The name that the tool bore in the file it came from; references between the tools of a file
    /// use it.
    const std::string& savedName() const { return hasSavedName_ ? savedName_ : name_; }
    void setSavedName(const std::string& name);

    // Life in a run.

    void startRun(double time);
    void tick(double time);
    void stopRun();
    void timeChanged(double time);

    const RecordedInputs& recordedInputs() const { return recorded_; }
    RecordedInputs& recordedInputs() { return recorded_; }
    LiveSpinners& liveSpinners() { return liveSpinners_; }

    // Life in the tree.

    InstanceReference* reference() const { return reference_; }
    void setReference(InstanceReference* reference) { reference_ = reference; }
    bool isAlive() const; ///< in the tree: not held by an undo record alone
    Tool* type() const { return type_; }
    CCamera* tool() const { return tool_; }
    const std::string& iconPath() const { return iconPath_; }
    void setIconPath(std::string path) { iconPath_ = std::move(path); }

    /// Deletes the tool and, when asked, its scene nodes, in undo "Delete plugin instance".
    void requestDelete(bool deleteNodes);

    /// Leaves the hub and closes the tool's windows; goes back to its place in the hub.
    void leaveTree();
    void enterTree();

    // Items and inputs.

    configadaptor::Node* configuration() const { return configuration_.get(); }
    void adoptConfiguration(std::unique_ptr<configadaptor::Node, Destroyer> root);
    unidevice::PropertyHandler& properties() { return properties_; }

    void writeConfigProfile(util::xml::Element& out, const std::string& name = {});
    void loadConfigProfile(const util::xml::Element& element);
    const std::string& configProfileName() const { return configProfileName_; }
    void setConfigProfileName(std::string name) { configProfileName_ = std::move(name); }

    void writeInputProfile(util::xml::Element& out, const std::string& name = {});
    int loadInputProfile(const util::xml::Element& element); ///< missing controls, or kNoProfile
    const std::string& inputProfileName() const { return inputProfileName_; }
    void setInputProfileName(std::string name) { inputProfileName_ = std::move(name); }

    /// Whether the profile applied at load equals its source.
    bool isProfileEqual() const { return profileEqual_; }
    void setProfileEqual(bool equal) { profileEqual_ = equal; }

    // Nodes.

    std::vector<CoreNode*> nodes(); ///< in creation order, deleted ones too
    CoreNode* findNode(const std::string& shortName);

    // Save data, as the runtime sees it.
    const std::vector<std::byte>& saveData() const { return saveData_; }

    // CInterface.
    std::intptr_t call(std::int32_t code, void* argument) override;
    std::vector<std::int32_t> supportedCodes() override;
    void pushUndo(CUndo* record) override;
    Property* addProperty(std::string name, std::uint32_t kindMask, Property::Factory* factory) override;
    Property* addProperty(std::string name, std::uint32_t kindMask) override;
    Property* findProperty(std::string name) override;
    void beginConfiguration() override;
    void endConfiguration() override;
    void beginGroup(std::string label, std::string tooltip) override;
    configadaptor::Node* endGroup() override;
    void addIntSpinner(std::string label, std::string tooltip, std::int32_t* value,
                       std::int32_t minimum, std::int32_t maximum, std::int32_t step,
                       std::int32_t triggerLength, bool withInput, Callback* callback) override;
    void addSpinner(std::string label, std::string tooltip, double* value, double minimum,
                    double maximum, double step, std::int32_t triggerLength, bool withInput,
                    std::int32_t reserved, Callback* callback) override;
    void addCheckBox(std::string label, std::string tooltip, bool* value, Callback* callback) override;
    void addTextBox(std::string label, std::string tooltip, std::string* value,
                    Callback* callback) override;
    ComboUpdater* addComboBox(std::string label, std::string tooltip, std::vector<std::string> items,
                              std::int32_t* index, Callback* callback) override;
    void addButton(std::string label, std::string tooltip, Callback* callback) override;
    void updateConfiguration() override;
    void showInputDialog() override;
    void getDataFolder(ReturnValue<std::string>& out) override;
    void setSaveData(const void* bytes, std::int32_t size) override;
    const void* getSaveData(std::int32_t* size) override;
    void clearSaveData() override;
    void deleteNode(CNode* node) override;
    CNode* getNode(std::string name) override;
    CNode* createHelperNode(std::string name, CNode* parent, std::int64_t userValue) override;
    CNode* createMeshNode(std::string name, CNode* parent, const CMesh* mesh,
                          std::int64_t userValue) override;
    CSnapshot* getSnapshot(CNode* node, double time) override;
    CSnapshot_Helper* getHelperSnapshot(CNode* node) override;
    CSnapshot_Mesh* getMeshSnapshot(CNode* node, double time) override;
    CSnapshot_Lens* getLensSnapshot(CNode* node, double time) override;
    void releaseNode(CNode* node) override;
    void releaseLensSnapshot(CSnapshot_Lens* snapshot) override;
    void releaseMeshSnapshot(CSnapshot_Mesh* snapshot) override;
    void releaseHelperSnapshot(CSnapshot_Helper* snapshot) override;
    void releaseSnapshot(CSnapshot* snapshot) override;
    double getTime() override;
    double getFramesPerSecond() override;
    double getFrameDuration() override;
    void redrawViews() override;
    std::int32_t messageBox(std::string text, std::string title, std::int32_t style) override;

    // Device.
    bool update(void* window) override;
    void destroy() override;

private:
    void chooseIcon();
    void add(configadaptor::Node* item);
    void addLabelItem(const std::string& text, std::int32_t style);
    void addLiveInput(const std::string& label, std::uint32_t itemId);
    unidevice::Control* makeOutput(const OutputRequest& request);
    void handMasterNode(XmlSink& sink);
    void deleteSceneNodes(bool deleteNodes);

    Tool* type_;
    CCamera* tool_;
    std::string name_;
    std::string savedName_;
    bool hasSavedName_ = false;
    InstanceReference* reference_ = nullptr;
    bool deleting_ = false;

    std::unique_ptr<configadaptor::Node, Destroyer> configuration_;
    configadaptor::Node* currentGroup_ = nullptr;
    std::uint32_t nextItemId_ = 0;
    std::string configProfileName_ = "Factory Settings";
    std::string inputProfileName_ = "Factory Settings";
    bool profileEqual_ = true;

    unidevice::PropertyHandler properties_;
    LiveSpinners liveSpinners_;
    RecordedInputs recorded_;

    std::vector<std::byte> saveData_;
    std::string iconPath_;
};

} // namespace tvw::rgs::core

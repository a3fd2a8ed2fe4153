#include "core/instance.h"

#include "core/adaptor.h"
#include "core/core_implementation.h"
#include "core/instance_manager.h"
#include "core/instance_reference.h"
#include "core/record_manager.h"
#include "core/tool.h"
#include "core/tool_record.h"
#include "core/unique_name.h"

#include <cmath>
#include <utility>

namespace tvw::rgs::core {

namespace {

constexpr const char* kIconFolder = "/core/images/treeicons/";
const char* const kConvertedNotice =
    "This profile has been saved in an older version of Rigstage. Some old settings might not work "
    "well in the current version. Use it with caution.";

CoreNode* asCore(CNode* node)
{
    return static_cast<CoreNode*>(node);
}

} // namespace

Instance::Instance(Tool* type, CCamera* tool, const std::string& name)
    : MessageNode("Instance"), type_(type), tool_(tool)
{
    tool_->setInterface(this);
    type_->addInstance(this);
    setName(name.empty() ? type_->name() + "_01" : name);
    chooseIcon();
}

Instance::~Instance()
{
    type_->removeInstance(this);
    leaveHub();
    configuration_.reset();
    if (tool_)
        std::exchange(tool_, nullptr)->destroy();
    if (AdaptorInterface* const host = adaptor())
        releaseNodesOf(*host, this);
}

void Instance::destroy()
{
    if (!deleting_)
        delete this;
}

void Instance::chooseIcon()
{
    const std::vector<std::string> categories = type_->getCategories();
    std::string file = "tarvo_accessory_tools.png";
    for (const std::string& category : categories) {
        if (category == "Vehicle")
            file = "tarvo_vehicle_tools.png";
        else if (category == "Camera")
            file = "tarvo_camera_tools.png";
    }
    iconPath_ = kIconFolder + file;
}

void Instance::setName(const std::string& wanted)
{
    name_ = uniqueName(wanted, this);
    setDeviceName(name_);
    MessageNode::setName(name_);
    tool_->setName(name_);
    for (CoreNode* const node : nodes()) {
        if (!node->isDeleted())
            node->setName(name_ + "_" + node->shortName());
    }
}

void Instance::setSavedName(const std::string& name)
{
    savedName_ = name;
    hasSavedName_ = true;
}

bool Instance::isAlive() const
{
    return reference_ && reference_->isAlive();
}

// Runs.

void Instance::startRun(double time)
{
    const bool replays = CoreImplementation::instance().isResimulating();
    properties_.holdLost(true);
    if (replays)
        recorded_.startReplay(time, getFrameDuration(), properties_);
    else
        recorded_.startRecording(time, properties_, *this);
    tool_->call(code::settleItems, nullptr);
    liveSpinners_.begin(time, configuration_.get(), replays, *this);
    tool_->startRun(time); // reads the parameters that the run begins with
    for (CoreNode* const node : nodes())
        node->deleteKeysFrom(time);
}

void Instance::tick(double time)
{
    if (CoreImplementation::instance().isResimulating())
        recorded_.replay(time);
    else
        recorded_.record(time, properties_);
    liveSpinners_.turn(time);
    tool_->tick(time);
}

void Instance::stopRun()
{
    tool_->stopRun();
    liveSpinners_.end();
    properties_.holdLost(false);
    if (CoreImplementation::instance().isResimulating())
        recorded_.endReplay(properties_);
    else
        recorded_.endRecording();
}

void Instance::timeChanged(double time)
{
    tool_->timeChanged(time);
}

// Tree.

void Instance::requestDelete(bool deleteNodes)
{
    if (deleting_)
        return;
    deleting_ = true;
    AdaptorInterface& host = *adaptor();
    host.beginUndo("Delete plugin instance");
    if (reference_)
        InstanceManager::deleteReference(reference_, deleteNodes);
    deleteSceneNodes(deleteNodes);
    host.redrawViews();
    host.endUndo();
    deleting_ = false;
}

/// What hangs on a node and belongs to no tool goes with it; what belongs to another tool stays.
void Instance::deleteSceneNodes(bool deleteNodes)
{
    const std::vector<CoreNode*> own = nodes();
    for (std::size_t i = own.size(); i-- > 0;) {
        CoreNode* const node = own[i];
        if (node->isDeleted())
            continue;
        if (deleteNodes)
            deleteUnownedChildren(*adaptor(), node, this);
        node->deleteNode(deleteNodes);
    }
}

void Instance::leaveTree()
{
    leaveHub();
    CoreImplementation::instance().windows().closeWindowsOf(this);
}

void Instance::enterTree()
{
    enterHub();
}

// Profiles.

void Instance::adoptConfiguration(std::unique_ptr<configadaptor::Node, Destroyer> root)
{
    configuration_ = std::move(root);
    currentGroup_ = configuration_.get();
}

void Instance::writeConfigProfile(util::xml::Element& out, const std::string& profileName)
{
    out = util::xml::Tag("configprofile");
    out.setAttribute("version", "2.0");
    if (configuration_)
        configuration_->writeProfile(out);
    out.setAttribute("name", profileName.empty() ? configProfileName_ : profileName);
}

void Instance::loadConfigProfile(const util::xml::Element& element)
{
    if (!configuration_)
        return;
    configuration_->readProfile(element);
    if (element.hasAttribute("name"))
        configProfileName_ = element.attributeValue("name");
    if (element.hasAttribute("converted"))
        CoreImplementation::instance().messageBox(nullptr, kConvertedNotice, "Rigstage",
                                                  box::ok | box::information, false);
}

void Instance::writeInputProfile(util::xml::Element& out, const std::string& profileName)
{
    properties_.writeProfile(out, profileName.empty() ? inputProfileName_ : profileName);
}

int Instance::loadInputProfile(const util::xml::Element& element)
{
    constexpr std::uint32_t kInputProfileLoaded = 154;
    const int missing = properties_.readProfile(element, inputProfileName_);
    if (missing != unidevice::PropertyHandler::kNoProfile) {
        Message loaded(kInputProfileLoaded, 0, 0);
        originate(loaded);
    }
    return missing;
}

// Nodes.

std::vector<CoreNode*> Instance::nodes()
{
    std::vector<CoreNode*> all;
    ReturnValue<std::vector<CoreNode*>> out(all);
    if (AdaptorInterface* const host = adaptor())
        host->getNodes(this, out);
    return all;
}

CoreNode* Instance::findNode(const std::string& shortName)
{
    return adaptor()->findNode(this, shortName);
}

CNode* Instance::getNode(std::string shortName)
{
    CoreNode* const node = findNode(shortName);
    return node && !node->isDeleted() ? node : nullptr;
}

CNode* Instance::createHelperNode(std::string shortName, CNode* parent, std::int64_t userValue)
{
    return adaptor()->createHelperNode(this, std::move(shortName), parent, userValue);
}

CNode* Instance::createMeshNode(std::string shortName, CNode* parent, const CMesh* mesh,
                                std::int64_t userValue)
{
    return adaptor()->createMeshNode(this, std::move(shortName), parent, mesh, userValue);
}

void Instance::deleteNode(CNode* node)
{
    if (node)
        asCore(node)->deleteNode(true);
}

void Instance::releaseNode(CNode* node)
{
    if (node)
        asCore(node)->destroy();
}

CSnapshot* Instance::getSnapshot(CNode* node, double time)
{
    return node ? asCore(node)->getSnapshot(time) : nullptr;
}

CSnapshot_Helper* Instance::getHelperSnapshot(CNode* node)
{
    return node ? asCore(node)->getHelperSnapshot() : nullptr;
}

CSnapshot_Mesh* Instance::getMeshSnapshot(CNode* node, double time)
{
    return node ? asCore(node)->getMeshSnapshot(time) : nullptr;
}

CSnapshot_Lens* Instance::getLensSnapshot(CNode* node, double time)
{
    return node ? asCore(node)->getLensSnapshot(time) : nullptr;
}

namespace {

template <class Contract>
void giveBack(Contract* snapshot)
{
    if (snapshot)
        static_cast<HostSnapshot<Contract>*>(snapshot)->giveBack();
}

} // namespace

void Instance::releaseSnapshot(CSnapshot* snapshot)
{
    giveBack(snapshot);
}
void Instance::releaseHelperSnapshot(CSnapshot_Helper* snapshot)
{
    giveBack(snapshot);
}
void Instance::releaseMeshSnapshot(CSnapshot_Mesh* snapshot)
{
    giveBack(snapshot);
}
void Instance::releaseLensSnapshot(CSnapshot_Lens* snapshot)
{
    giveBack(snapshot);
}

// Undo, time, the user.

void Instance::pushUndo(CUndo* record)
{
    adaptor()->pushUndo(record);
}

double Instance::getTime()
{
    return adaptor()->getTime();
}

double Instance::getFramesPerSecond()
{
    return adaptor()->getFramesPerSecond();
}

double Instance::getFrameDuration()
{
    return adaptor()->getFrameDuration();
}

void Instance::redrawViews()
{
    if (!CoreImplementation::instance().isResimulating())
        adaptor()->redrawViews();
}

std::int32_t Instance::messageBox(std::string text, std::string title, std::int32_t style)
{
    static constexpr std::uint32_t kButtons[] = {
        box::ok, box::yes | box::no, box::yes | box::no | box::cancel, box::ok | box::cancel};
    const int choice = style & 0xF;
    std::uint32_t flags = kButtons[choice <= 3 ? choice : 0];
    const int icon = style & ~0xF;
    flags |= icon == 16   ? box::question
             : icon == 32 ? box::critical
             : icon == 48 ? box::warning
                          : 0;
    switch (CoreImplementation::instance().messageBox(nullptr, text, title, flags, false)) {
    case box::ok:
        return 0;
    case box::yes:
        return 2;
    case box::no:
        return 3;
    default:
        return 1;
    }
}

// Save data.

void Instance::setSaveData(const void* bytes, std::int32_t size)
{
    const auto* const begin = static_cast<const std::byte*>(bytes);
    saveData_.assign(begin, begin + (bytes && size > 0 ? size : 0));
}

const void* Instance::getSaveData(std::int32_t* size)
{
    if (size)
        *size = static_cast<std::int32_t>(saveData_.size());
    return saveData_.empty() ? nullptr : saveData_.data();
}

void Instance::clearSaveData()
{
    saveData_.clear();
}

void Instance::getDataFolder(ReturnValue<std::string>& out)
{
    out.assign(type_->getDataPath());
}

// Outputs and codes.

bool Instance::update(void*)
{
    for (int i = 0; i < controlCount(); ++i)
        tool_->call(code::updateOutput, controlAt(i));
    return true;
}

unidevice::Control* Instance::makeOutput(const OutputRequest& request)
{
    return addOutput(request.name, request.id, static_cast<std::uint32_t>(request.kind));
}

std::vector<std::int32_t> Instance::supportedCodes()
{
    return {code::makeOutput,           code::deleteTool, code::destroyTool, code::shapeSnapshot,
            code::releaseShapeSnapshot, code::parentName, code::masterNode,  code::addLabel};
}

std::intptr_t Instance::call(std::int32_t operation, void* argument)
{
    switch (operation) {
    case code::shapeSnapshot: {
        const auto& request = *static_cast<ShapeSnapshotRequest*>(argument);
        return reinterpret_cast<std::intptr_t>(
            request.node ? asCore(request.node)->getShapeSnapshot(request.time) : nullptr);
    }
    case code::releaseShapeSnapshot: {
        const auto& request = *static_cast<ShapeSnapshotRelease*>(argument);
        if (request.node)
            asCore(request.node)->releaseShapeSnapshot(request.snapshot);
        return 0;
    }
    case code::makeOutput:
        return reinterpret_cast<std::intptr_t>(makeOutput(*static_cast<OutputRequest*>(argument)));
    case code::deleteTool:
        if (CoreImplementation::instance().isRunning())
            return kAlreadyRunning;
        requestDelete(true);
        return 0;
    case code::parentName:
        *static_cast<std::string*>(argument) = parentToolName(reference_);
        return 0;
    case code::masterNode:
        handMasterNode(*static_cast<XmlSink*>(argument));
        return 0;
    case code::destroyTool:
        destroy();
        return 0;
    case code::addLabel: {
        const auto& request = *static_cast<LabelRequest*>(argument);
        addLabelItem(request.text, request.style);
        return 0;
    }
    default:
        return 0;
    }
}

void Instance::handMasterNode(XmlSink& sink)
{
    writeMasterNode(*this, sink);
}

} // namespace tvw::rgs::core

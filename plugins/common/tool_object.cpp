#include "plugins/common/tool_object.h"

#include <algorithm>

namespace tvw::rgs {

namespace {

constexpr std::string_view kUndoPrefix = "REALUNDO";
constexpr std::string_view kRedoPrefix = "REALREDO";
constexpr std::string_view kHideHelpers = "Hide Helpers";
constexpr std::string_view kWireframe = "Wireframe Mode";

} // namespace

ToolObject::ToolObject(const CreateParam& param, const ToolSpec& spec, GeneralModes& modes,
                       std::string chunkWord, int chunkVersion)
    : CCamera(param), spec_(spec), modes_(modes), state_(std::move(chunkWord), chunkVersion)
{
    nodes_.reserve(spec.nodes.size());
    for (const NodeRow& row : spec.nodes)
        nodes_.push_back(std::make_unique<SceneNode>(row));
    outputs_.resize(spec.outputs.size());
}

std::vector<std::int32_t> ToolObject::supportedCodes()
{
    if (spec_.outputs.empty())
        return {};
    return {code::updateOutput};
}

std::intptr_t ToolObject::call(std::int32_t code, void* argument)
{
    if (code == code::settleItems) {
        settleParameters();
        return 1;
    }
    if (code == code::ticksAlone)
        return 1;
    if (code != code::updateOutput || !argument)
        return 0;
    auto* const control = static_cast<Control*>(argument);
    const auto found = std::find(outputs_.begin(), outputs_.end(), control);
    if (found == outputs_.end())
        return 0;
    control->read(outputValue(static_cast<std::size_t>(found - outputs_.begin())));
    return 1;
}

int ToolObject::declareConfiguration()
{
    runtime().beginConfiguration();
    if (spec_.inputsBeforeItems)
        declareInputs();
    declareItems();
    runtime().endConfiguration();
    if (!spec_.inputsBeforeItems)
        declareInputs();
    declareOutputs();
    return 0;
}

void ToolObject::declareInputs()
{
    inputs_.clear();
    for (const InputRow& row : spec_.inputs) {
        Property* const property = runtime().addProperty(row.fullName(), row.kindMask);
        property->exponent = row.exponent;
        inputs_.push_back(property);
    }
}

void ToolObject::declareOutputs()
{
    if (!runtime().isSupported(code::makeOutput))
        return;
    for (std::size_t i = 0; i < spec_.outputs.size(); ++i) {
        OutputRequest request{std::string(spec_.outputs[i].name), static_cast<std::int32_t>(i),
                              spec_.outputs[i].kind};
        outputs_[i] = reinterpret_cast<Control*>(runtime().call(code::makeOutput, &request));
        if (outputs_[i])
            outputs_[i]->read(0.0);
    }
}

int ToolObject::createNodes()
{
    for (const auto& node : nodes_) {
        const int parent = node->row().parent;
        if (!node->create(runtime(), parent < 0 ? nullptr : nodes_[parent]->handle()))
            return 1;
    }
    if (!nodesCreated())
        return 1;
    runtime().updateConfiguration();
    return 0;
}

int ToolObject::load()
{
    for (const auto& node : nodes_) {
        if (!node->find(runtime()))
            return 1;
    }
    std::int32_t size = 0;
    const void* const bytes = runtime().getSaveData(&size);
    return state_.loadRoot(DataChunk(bytes, static_cast<std::size_t>(size))) ? 0 : 1;
}

int ToolObject::save()
{
    settleParameters();
    DataChunk root = state_.saveRoot();
    std::size_t size = 0;
    const void* const bytes = root.serialize(&size);
    runtime().setSaveData(bytes, static_cast<std::int32_t>(size));
    return 0;
}

void ToolObject::startRun(double time)
{
    running_ = true;
    state_.pushUndoOfValues(runtime());
    if (startsAnew(time))
        state_.reset();
    else
        state_.restore(time);
    runStarts(time);
    state_.retake(time, runtime());
    state_.record(time);
    if (modes_.hideDuringRecording)
        hideForRun();
    runtime().updateConfiguration();
}

bool ToolObject::startsAnew(double)
{
    return false;
}

/// A step visits most nodes one after the other, each behind a chain of pointers. To ask for all of
/// them first lets the processor wait for many at once: a hundred cars take a seventh less.
void ToolObject::fetchNodes() const
{
    for (const auto& node : nodes_) {
        if (CNode* const handle = node->handle())
            handle->call(code::fetch, nullptr);
    }
}

void ToolObject::tick(double time)
{
    fetchNodes();
    step(time);
    if (recordsState())
        state_.record(time);
    for (std::size_t i = 0; i < outputs_.size(); ++i) {
        if (outputs_[i])
            outputs_[i]->read(outputValue(i));
    }
    runtime().updateConfiguration();
}

void ToolObject::stopRun()
{
    runEnds();
    state_.flush();
    running_ = false;
    showAfterRun();
}

void ToolObject::hideForRun()
{
    for (const auto& node : nodes_) {
        if (node->row().group == NodeGroup::Helpers && node->exists() &&
            node->handle()->isVisible()) {
            node->hide();
            hiddenForRun_.push_back(node.get());
        }
    }
}

/// What the user had hidden by hand stays hidden.
void ToolObject::showAfterRun()
{
    if (!modes_.hideHelpers) {
        for (SceneNode* const node : hiddenForRun_)
            node->show();
    }
    hiddenForRun_.clear();
}

void ToolObject::timeChanged(double time)
{
    timeMoved(time);
    runtime().updateConfiguration();
}

void ToolObject::timeMoved(double) {}

double ToolObject::outputValue(std::size_t)
{
    return 0.0;
}

void ToolObject::itemActed(std::string_view) {}

void ToolObject::actionReplayed(std::string_view, bool) {}

void ToolObject::itemChanged(const std::string& label)
{
    const std::string_view text(label);
    const bool undone = text.starts_with(kUndoPrefix);
    if (undone || text.starts_with(kRedoPrefix)) {
        const std::string_view action = text.substr(kUndoPrefix.size());
        if (isSharedAction(action))
            toggleSharedAction(action);
        else
            actionReplayed(action, !undone);
    } else if (isSharedAction(text)) {
        pushAction(text);
        applySharedAction(text);
    } else {
        itemActed(text);
    }
}

void ToolObject::pushAction(std::string_view label)
{
    const std::string action(label);
    runtime().pushUndo(new CREEventUndo(this, std::string(kUndoPrefix) + action,
                                        std::string(kRedoPrefix) + action));
}

const HideSwitch* ToolObject::findSwitch(std::string_view label) const
{
    for (const HideSwitch& row : spec_.switches) {
        if (row.label == label)
            return &row;
    }
    return nullptr;
}

bool ToolObject::isSharedAction(std::string_view label) const
{
    return label == kHideHelpers || label == kWireframe || findSwitch(label);
}

void ToolObject::applySharedAction(std::string_view label)
{
    if (label == kWireframe) {
        for (const auto& node : nodes_)
            node->setDisplayFlag(modes_.wireframe);
    } else if (label == kHideHelpers) {
        applyHiding(NodeGroup::Helpers, modes_.hideHelpers);
    } else if (const HideSwitch* row = findSwitch(label)) {
        applyHiding(row->group, row->flag(modes_));
    }
    runtime().redrawViews();
}

/// Undo and redo of a switch both turn it over: the window set the flag before the first time.
void ToolObject::toggleSharedAction(std::string_view label)
{
    bool& flag = label == kWireframe     ? modes_.wireframe
                 : label == kHideHelpers ? modes_.hideHelpers
                                         : findSwitch(label)->flag(modes_);
    flag = !flag;
    applySharedAction(label);
    runtime().updateConfiguration();
}

void ToolObject::applyHiding(NodeGroup group, bool hidden)
{
    for (const auto& node : nodes_) {
        if (node->row().group != group)
            continue;
        if (hidden)
            node->hide();
        else
            node->show();
    }
}

} // namespace tvw::rgs

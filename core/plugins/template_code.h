/// The tool object of a template: what its `customdata` says, run.
#pragma once

#include "core/contract/camera.h"
#include "core/contract/interface.h"
#include "core/math_script.h"
#include "util/messagenode.h"
#include "util/xml/element.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tvw::rgs::core {
class Instance;
class InstanceReference;
} // namespace tvw::rgs::core

namespace tvw::rgs::core::plugins {

using ScriptPtr = std::unique_ptr<MathScript, Destroyer>;

/// A configuration item of this tool, or of another one of the tree.
class Parameter
{
public:
    double value() const; ///< 0 when the tool is gone
    void setValue(double value) const;
    bool isExternal() const { return external_; }
    std::uint32_t itemId() const { return itemId_; }

    /// What the element means; own: the tool whose record it stands in.
    static Parameter read(const util::xml::Element& element, Instance& own);

private:
    /// Null when the tool of that name is not in the tree. Looked up once the tree stands.
    Instance* instance_ = nullptr;
    std::uint32_t itemId_ = 0;
    bool external_ = false;
};

/// An item that is set to the value of an expression over items and inputs.
class Target
{
public:
    static Target read(const util::xml::Element& element, Instance& own);
    void run() const;

private:
    struct Source
    {
        Property* input = nullptr; ///< else the item
        Parameter item;
    };
    Parameter item_;
    std::vector<Source> sources_;
    ScriptPtr script_;
};

/// Runs its targets when an input moves.
struct PropertyTrigger
{
    Property* input = nullptr;
    double last = 0.0;
    std::vector<Target> targets;
};

/// Runs its targets when an item changes; one of another tool in every tick.
struct ItemTrigger
{
    Parameter item;
    std::vector<Target> targets;
    bool running = false; ///< a target that sets the item again does not fire it anew
};

class TemplateCode final : public CCamera, public MessageNode
{
public:
    explicit TemplateCode(const CreateParam& param) : CCamera(param), MessageNode("Template") {}

    std::intptr_t call(std::int32_t code, void* argument) override;
    std::vector<std::int32_t> supportedCodes() override;
    void startRun(double time) override;
    void tick(double time) override;
    int declareConfiguration() override;
    int createNodes() override { return 0; }
    int load() override { return 0; }
    int save() override;

    void receive(Message& message, bool isBroadcast) override;

private:
    void declareInputs();
    void declareOutputs();
    void readLogic();
    void updateOutput(Control* control);
    void fireInputs(bool force);
    void fireExternalItems();
    Instance& instance();

    struct Output
    {
        Control* control;
        ScriptPtr script;
        std::vector<Property*> inputs; ///< null: the item at the same place
        std::vector<std::uint32_t> items;
    };

    util::xml::Element custom_;
    std::vector<Output> outputs_;
    std::vector<PropertyTrigger> inputTriggers_;
    std::vector<ItemTrigger> itemTriggers_;
};

} // namespace tvw::rgs::core::plugins

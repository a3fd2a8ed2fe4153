#include "core/template.h"

#include "core/adaptor.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "core/library_manager.h"
#include "core/paths.h"
#include "core/saved_tool_file.h"
#include "core/tool_placement.h"
#include "util/base64.h"
#include "util/huffman.h"

#include <filesystem>

namespace tvw::rgs::core {

using util::xml::Element;

namespace {

constexpr const char* kMissingNodes =
    "Some nodes required for this plugin was not found in the scene. Please make sure all required "
    "nodes are present.\nThe following nodes were not found:\n\n";

/// The record itself: of an `RGT` its first tool, of a packed one what is packed in it.
Element unwrapped(const Element& record)
{
    const Element& tool = *toolRecordsOf(record).front();
    if (tool.attributeValue("compressed") != "1")
        return tool;
    const Result<std::string> text = decompress(base64Decode(tool.text()));
    Element unpacked;
    if (!text || unpacked.parse(*text) != 0)
        return {};
    return unpacked.name() == "RGT" || unpacked.name() == "rgs" ? unpacked.child("RGT_Plugin") : unpacked;
}

std::string textOf(const Element& record, const char* name)
{
    return std::string(record.child(name).text());
}

Tool* typeOf(const Element& record)
{
    return LibraryManager::instance().findTool(textOf(record, "type"));
}

/// Ends a half-made tool: its entry, and with it the instance and what nodes it made.
InstanceReference* giveUp(InstanceReference* reference, bool deleteNodes)
{
    if (deleteNodes) {
        for (CoreNode* const node : reference->instance().nodes()) {
            if (!node->isDeleted())
                node->deleteNode(true);
        }
    }
    reference->destroy();
    return nullptr;
}

void loadRecordedInputs(const Element& recorded, RecordedInputs& inputs)
{
    const auto read = [&](const char* name, RecordedInputs::Lines& lines) {
        const int count = static_cast<int>(recorded.childCount(name));
        lines.clear();
        lines.resize(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            const std::string block = base64Decode(recorded.child(name, i).text());
            lines[static_cast<std::size_t>(i)].load(block.data(), block.size());
        }
    };
    read("input", inputs.lines());
    read("start", inputs.starts());
}

/// Whether the values that a profile gave are those of the profile of its name as it is stored now.
bool equalsStored(Instance& instance, const Element& profile, const Element& factoryValues)
{
    const std::string name = profile.attributeValue("name");
    const Element& stored = name == kFactorySettings
                                ? factoryValues
                                : instance.type()->configProfiles().profile(name);
    if (stored.isEmpty())
        return true;
    Element present;
    instance.writeConfigProfile(present, name);
    Element wanted = stored;
    wanted.setAttribute("name", name);
    return present.fragment() == wanted.fragment();
}

void applyProfiles(Instance& instance, const Element& record)
{
    Tool& type = *instance.type();
    type.prepareProfiles(instance);
    Element factoryValues;
    instance.writeConfigProfile(factoryValues, kFactorySettings);
    const Element& config = record.child("configprofile");
    if (config.isEmpty()) {
        instance.loadConfigProfile(type.configProfiles().profile(kStartProfile));
    } else {
        instance.loadConfigProfile(config);
        instance.setProfileEqual(equalsStored(instance, config, factoryValues));
    }
    const Element& input = record.child("inputprofile");
    instance.loadInputProfile(input.isEmpty() ? type.inputProfiles().profile(kStartProfile) : input);
}

/// Takes over the scene nodes that the record names. False, after a box, when one is missing.
bool bindSceneNodes(Instance& instance, const Element& record)
{
    const Element& info = record.child("nodeinfo");
    std::vector<CoreNode*> found;
    ReturnValue<std::vector<CoreNode*>> out(found);
    const std::string savedName = textOf(record, "name");
    adaptor()->bindNodes(savedName, info, out);
    const int count = static_cast<int>(info.childCount("node"));
    found.resize(static_cast<std::size_t>(count), nullptr);
    std::string missing;
    for (int i = 0; i < count; ++i) {
        if (!found[static_cast<std::size_t>(i)])
            missing += savedName + "_" + info.child("node", i).attributeValue("name") + "\n";
    }
    if (!missing.empty()) {
        instance.messageBox(kMissingNodes + missing, "Error loading plugin", 32);
        return false;
    }
    for (int i = 0; i < count; ++i) {
        CoreNode* const node = found[static_cast<std::size_t>(i)];
        node->clone(&instance, info.child("node", i).attributeValue("name"));
        node->destroy();
    }
    return true;
}

bool loadState(Instance& instance, const Element& record)
{
    if (!bindSceneNodes(instance, record))
        return false;
    const std::string bytes = base64Decode(record.child("savedata").text());
    instance.setSaveData(bytes.data(), static_cast<std::int32_t>(bytes.size()));
    return instance.tool()->load() == 0;
}

} // namespace

Template::Template(Library* library, const Element& record, const std::string& path)
    : Tool(library), record_(unwrapped(record)), path_(path)
{
    if (path_.empty())
        path_ = record.attributeValue("path");
    if (const std::string folder = path_.substr(0, path_.size() - fileName(path_).size());
        !folder.empty())
        path_ = folder;
    std::string name = textOf(record_, "name");
    if (name.empty())
        name = textOf(record_, "type");
    MessageNode::setName(name.empty() ? "(Unknown)" : name);

    const Tool* const type = typeOf(record_);
    imagePath_ = (type ? type->getDataPath() : getPath("data") + "/core/template") + "/images";
    const Element& custom = record_.child("customdata");
    for (int i = 0; i < static_cast<int>(custom.childCount("category")); ++i)
        categories_.emplace_back(custom.child("category", i).text());
    if (categories_.empty() && type)
        categories_ = type->getCategories();
}

std::unique_ptr<Template, Destroyer> makeTemplate(Library* library, const Element& record,
                                                  const std::string& path)
{
    const Element tool = unwrapped(record);
    if (!typeOf(tool))
        return nullptr;
    return std::unique_ptr<Template, Destroyer>(new Template(library, record, path));
}

std::vector<std::string> Template::getIds() const { return {name()}; }

std::vector<std::string> Template::getCategories() const { return categories_; }

std::string Template::getUserFolder() const { return path_ + "data"; }

std::string Template::getHelpPath() const
{
    const std::string page = path_ + "index.html";
    std::error_code ignored;
    return std::filesystem::exists(page, ignored) ? page : std::string();
}

void Template::makeElement(Element& out, const std::string& name) const
{
    out = record_;
    if (name.empty())
        return;
    if (Element* const present = out.findChild("name"))
        out.removeChild(*present);
    out.addChild(util::xml::TagWithData("name", name));
}

InstanceReference* Template::createInstance(const std::string& name)
{
    if (!name.empty()) {
        Element renamed;
        makeElement(renamed, name);
        record_ = renamed;
    }
    made_.clear();
    unplaced_.clear();
    InstanceReference* const reference = build(made_);
    if (reference && record_.child("savedata").isEmpty()) {
        unplaced_.emplace_back(this, reference);
        for (const Made& made : made_)
            unplaced_.emplace_back(made.first.get(), made.second);
    }
    return reference;
}

InstanceReference* Template::build(std::vector<Made>& made)
{
    Tool* const type = typeOf(record_);
    Instance* const instance = type ? type->createRaw(textOf(record_, "name")) : nullptr;
    if (!instance)
        return nullptr;
    auto* const reference = new InstanceReference(instance);
    if (const std::string saved = textOf(record_, "name"); !saved.empty())
        instance->setSavedName(saved);
    if (textOf(record_, "checked") == "false")
        reference->setState(Column::Run, ColumnState::Off, false);

    CCamera& tool = *instance->tool();
    if (const Element& custom = record_.child("customdata"); !custom.isEmpty())
        tool.call(code::readCustomData, const_cast<Element*>(&custom));
    if (tool.declareConfiguration() != 0)
        return giveUp(reference, false);
    applyProfiles(*instance, record_);
    loadRecordedInputs(record_.child("recordedinputvalues"), instance->recordedInputs());
    instance->liveSpinners().read(record_.child("recordedinputvalues"));

    const bool isNew = record_.child("savedata").isEmpty();
    if (isNew ? tool.createNodes() != 0 : !loadState(*instance, record_))
        return giveUp(reference, isNew);

    const int children = static_cast<int>(record_.childCount("RGT_Plugin"));
    for (int i = 0; i < children; ++i) {
        auto child = makeTemplate(nullptr, record_.child("RGT_Plugin", i), path_);
        InstanceReference* const below = child ? child->build(made) : nullptr;
        if (!below)
            continue;
        reference->attach(below);
        made.emplace_back(std::move(child), below);
    }
    return reference;
}

void Template::place()
{
    placeTools(unplaced_);
    unplaced_.clear();
    made_.clear();
}

} // namespace tvw::rgs::core

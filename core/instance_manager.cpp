#include "core/instance_manager.h"

#include "core/adaptor.h"
#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/instance_reference.h"
#include "core/instance_undo.h"
#include "core/library_manager.h"
#include "core/saved_tool_file.h"
#include "core/template.h"
#include "core/tool.h"
#include "core/tool_record.h"

#include <memory>
#include <utility>

namespace tvw::rgs::core {

namespace {

Windows& windows()
{
    return CoreImplementation::instance().windows();
}

/// The first of that name among an entry and all below it.
InstanceReference* findBy(InstanceReference* top, const std::string& name,
                          const std::string& (Instance::*nameOf)() const)
{
    InstanceReference* found = nullptr;
    if (!top)
        return found;
    const InstanceReference* const root = CoreImplementation::instance().instances().root();
    top->forEach([&](InstanceReference& entry) {
        if (!found && &entry != root && (entry.instance().*nameOf)() == name)
            found = &entry;
    });
    return found;
}

} // namespace

InstanceManager::~InstanceManager()
{
    destroyRoot();
}

void InstanceManager::init()
{
    Tool* const group = LibraryManager::instance().findTool("Group");
    if (group)
        root_ = group->createInstance("root");
}

void InstanceManager::destroyRoot()
{
    if (root_)
        std::exchange(root_, nullptr)->destroy();
}

InstanceReference* InstanceManager::create(const std::string& pluginId, const std::string& name,
                                           InstanceReference* parent)
{
    Tool* const type = LibraryManager::instance().findTool(pluginId);
    UndoScope undo("Creating instance");
    InstanceReference* const reference = type ? type->createInstance(name) : nullptr;
    if (!reference) {
        undo.cancel();
        return nullptr;
    }
    (parent ? parent : root_)->attach(reference);
    const Entries made{reference};
    const Entries* const before = std::exchange(loading_, &made);
    type->place();
    announceComplete(*reference);
    loading_ = before;
    windows().refreshTree();
    return reference;
}

void InstanceManager::announceComplete(InstanceReference& reference)
{
    reference.forEach([](InstanceReference& entry) {
        entry.instance().tool()->call(code::treeComplete, nullptr);
    });
}

InstanceReference* InstanceManager::createFromXml(const util::xml::Element& element,
                                                  InstanceReference* parent)
{
    const UndoScope undo("Creating instance");
    Entries made;
    const Entries* const before = std::exchange(loading_, &made);
    std::vector<std::unique_ptr<Template, Destroyer>> records;
    for (const util::xml::Element* record : toolRecordsOf(element)) {
        auto saved = makeTemplate(nullptr, *record, record->attributeValue("path"));
        InstanceReference* const reference = saved ? saved->createInstance({}) : nullptr;
        if (!reference)
            continue;
        made.push_back(reference);
        (parent ? parent : root_)->attach(reference);
        records.push_back(std::move(saved));
    }
    for (const auto& saved : records)
        saved->place(); // once all stand: the tools of a file refer to each other
    for (InstanceReference* const reference : made)
        announceComplete(*reference);
    loading_ = before;
    windows().refreshTree();
    return made.empty() ? nullptr : made.front();
}

Status InstanceManager::loadFile(const std::string& path, InstanceReference* parent,
                                 InstanceReference** first)
{
    const Result<util::xml::Element> record = readSavedTools(path);
    if (!record)
        return Status::failure(record.reason());
    InstanceReference* const made = createFromXml(*record, parent);
    if (first)
        *first = made;
    return {};
}

std::vector<Instance*> InstanceManager::collect(bool onlyChecked) const
{
    std::vector<Instance*> all;
    if (!root_)
        return all;
    root_->forEach([&](InstanceReference& entry) {
        if (&entry != root_ && (!onlyChecked || entry.takesPart()))
            all.push_back(&entry.instance());
    });
    return all;
}

void InstanceManager::deleteAll()
{
    if (!root_)
        return;
    while (!root_->childItems().empty())
        root_->childItems().back()->destroy();
    windows().refreshTree();
}

InstanceReference* InstanceManager::find(const std::string& name) const
{
    return findBy(root_, name, &Instance::name);
}

InstanceReference* InstanceManager::findSaved(const std::string& name) const
{
    if (loading_) {
        for (InstanceReference* const top : *loading_) {
            if (InstanceReference* const own = findBy(top, name, &Instance::savedName))
                return own;
        }
    }
    InstanceReference* const found = findBy(root_, name, &Instance::savedName);
    return found ? found : find(name);
}

void InstanceManager::move(InstanceReference& entry, InstanceReference& parent, int index)
{
    const bool stays = entry.parentReference() == &parent && entry.indexInParent() == index;
    if (stays || parent.isWithin(&entry))
        return;
    const UndoScope undo("Move tool");
    adaptor()->pushUndo(new InstanceReferenceMove(entry, parent, index));
    entry.detach();
    parent.attach(&entry, index);
}

int InstanceManager::deleteReference(InstanceReference* reference, bool deleteNodes)
{
    if (!reference->isAlive())
        return 0;
    if (CoreImplementation::instance().isRunning())
        return kAlreadyRunning;
    AdaptorInterface& host = *adaptor();
    const UndoScope undo("Delete Tarvo Tool");
    while (!reference->childItems().empty())
        deleteReference(reference->childReferences().back(), deleteNodes);
    InstanceReference* const parent = reference->parentReference();
    if (!parent)
        return 0;
    auto* const record =
        new InstanceReferenceDeleteRestore(reference, parent, reference->indexInParent());
    reference->takeOut();
    Instance& instance = reference->instance();
    instance.requestDelete(deleteNodes);
    host.pushUndo(record); // behind the nodes' own records: dropped last
    return 0;
}

InstanceReference* cloneTool(InstanceReference& source)
{
    InstanceReference* const parent = source.parentReference();
    if (!parent)
        return nullptr;
    const UndoScope undo("Clone tool");
    util::xml::Element record;
    writeRecord(source, recordflag::plain, record);
    InstanceReference* const copy =
        CoreImplementation::instance().instances().createFromXml(record, parent);
    if (copy)
        cloneLinkedNodes(source, *copy);
    return copy;
}

} // namespace tvw::rgs::core

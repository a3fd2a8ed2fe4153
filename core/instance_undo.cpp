#include "core/instance_undo.h"

#include "core/core_implementation.h"
#include "core/instance.h"
#include "core/instance_manager.h"
#include "core/instance_reference.h"

#include <utility>

namespace tvw::rgs::core {

LimboOwner::~LimboOwner()
{
    if (reference && !reference->isAlive())
        reference->destroy();
}

namespace {

/// A watch on an entry; on none it stays null inside.
InstanceReference::Watch watchOn(const InstanceReference* entry)
{
    return entry ? entry->watch() : std::make_shared<InstanceReference*>(nullptr);
}

} // namespace

InstancePresence::InstancePresence(InstanceReference* reference, InstanceReference* parent,
                                   int index)
    : owner_(reference->limboOwner()), parent_(watchOn(parent)), index_(index)
{
}

void InstancePresence::takeOut(bool notePlace)
{
    InstanceReference* const reference = owner_->reference;
    if (!reference || !reference->isAlive())
        return;
    if (notePlace) {
        parent_ = watchOn(reference->parentReference());
        index_ = reference->indexInParent();
    }
    reference->takeOut();
}

void InstancePresence::putIn()
{
    InstanceReference* const reference = owner_->reference;
    InstanceReference* const parent = *parent_;
    if (reference && !reference->isAlive())
        reference->putIn(parent ? parent : CoreImplementation::instance().instances().root(),
                         index_);
}

InstanceReferenceMove::InstanceReferenceMove(InstanceReference& entry, InstanceReference& parent,
                                             int index)
    : entry_(entry.watch()), before_{watchOn(entry.parentReference()), entry.indexInParent()},
      after_{parent.watch(), index}
{
}

void InstanceReferenceMove::restore(bool)
{
    go(before_);
}

void InstanceReferenceMove::redo()
{
    go(after_);
}

void InstanceReferenceMove::go(const Place& place)
{
    InstanceReference* const entry = *entry_;
    InstanceReference* const parent = *place.parent;
    if (!entry || !entry->isAlive() || !parent)
        return;
    entry->detach();
    parent->attach(entry, place.index);
    CoreImplementation::instance().windows().refreshTree();
}

InstanceReferenceRename::InstanceReferenceRename(const InstanceReference& entry, std::string before,
                                                 std::string after)
    : entry_(entry.watch()), before_(std::move(before)), after_(std::move(after))
{
}

void InstanceReferenceRename::restore(bool)
{
    rename(before_);
}

void InstanceReferenceRename::redo()
{
    rename(after_);
}

void InstanceReferenceRename::rename(const std::string& name)
{
    if (*entry_)
        (*entry_)->instance().setName(name);
}

} // namespace tvw::rgs::core

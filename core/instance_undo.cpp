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

InstancePresence::InstancePresence(InstanceReference* reference, InstanceReference* parent, int index)
    : owner_(reference->limboOwner()), parent_(parent), index_(index)
{
}

void InstancePresence::takeOut(bool notePlace)
{
    InstanceReference* const reference = owner_->reference;
    if (!reference || !reference->isAlive())
        return;
    if (notePlace) {
        parent_ = reference->parentReference();
        index_ = reference->indexInParent();
    }
    reference->takeOut();
}

void InstancePresence::putIn()
{
    InstanceReference* const reference = owner_->reference;
    if (reference && !reference->isAlive())
        reference->putIn(parent_ ? parent_ : CoreImplementation::instance().instances().root(), index_);
}

InstanceReferenceRename::InstanceReferenceRename(Instance* instance, std::string before,
                                                 std::string after)
    : instance_(instance), before_(std::move(before)), after_(std::move(after))
{
}

void InstanceReferenceRename::restore(bool) { instance_->setName(before_); }

void InstanceReferenceRename::redo() { instance_->setName(after_); }

} // namespace tvw::rgs::core

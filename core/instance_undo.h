/// Undo of making, deleting, moving and renaming tools.
#pragma once

#include "core/contract/undo.h"

#include <memory>
#include <string>

namespace tvw::rgs::core {

class Instance;
class InstanceReference;

/// What all records of one entry hold in common: the entry, and its end when the last of them goes
/// while it stands in limbo. Null inside once the entry has ended some other way.
struct LimboOwner
{
    explicit LimboOwner(InstanceReference* entry) : reference(entry) {}
    ~LimboOwner();
    LimboOwner(const LimboOwner&) = delete;
    LimboOwner& operator=(const LimboOwner&) = delete;

    InstanceReference* reference;
};

/// Swaps an entry between the tree and limbo.
class InstancePresence : public CUndo
{
protected:
    InstancePresence(InstanceReference* reference, InstanceReference* parent, int index);

    void takeOut(bool notePlace);
    void putIn();

private:
    std::shared_ptr<LimboOwner> owner_;
    std::shared_ptr<InstanceReference*> parent_; ///< null inside once it has ended
    int index_;
};

class InstanceReferenceCreateRestore final : public InstancePresence
{
public:
    explicit InstanceReferenceCreateRestore(InstanceReference* reference)
        : InstancePresence(reference, nullptr, -1)
    {
    }
    void restore(bool isUndo) override { takeOut(isUndo); }
    void redo() override { putIn(); }
};

class InstanceReferenceDeleteRestore final : public InstancePresence
{
public:
    InstanceReferenceDeleteRestore(InstanceReference* reference, InstanceReference* parent,
                                   int index)
        : InstancePresence(reference, parent, index)
    {
    }
    void restore(bool) override { putIn(); }
    void redo() override { takeOut(true); }
};

class InstanceReferenceMove final : public CUndo
{
public:
    /// Made before the move; a place counts the children of the parent without the entry.
    InstanceReferenceMove(InstanceReference& entry, InstanceReference& parent, int index);
    void restore(bool isUndo) override;
    void redo() override;

private:
    struct Place
    {
        std::shared_ptr<InstanceReference*> parent; ///< null inside once it has ended
        int index;
    };
    void go(const Place& place);

    std::shared_ptr<InstanceReference*> entry_; ///< null inside once it has ended
    Place before_;
    Place after_;
};

/// Each way goes through the unique naming again, since another tool may have taken the name.
class InstanceReferenceRename final : public CUndo
{
public:
    InstanceReferenceRename(const InstanceReference& entry, std::string before, std::string after);
    void restore(bool isUndo) override;
    void redo() override;

private:
    void rename(const std::string& name);

    std::shared_ptr<InstanceReference*> entry_; ///< null inside once it has ended
    std::string before_;
    std::string after_;
};

} // namespace tvw::rgs::core

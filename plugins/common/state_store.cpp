#include "plugins/common/state_store.h"

#include <charconv>
#include <cstddef>
#include <cstring>

namespace tvw::rgs {

namespace {

constexpr int kOldestReadable = 100;

} // namespace

const DataChunk* StateEntry::find(const DataChunk& parent) const
{
    if (parent.hasMember(name_))
        return &parent.member(name_);
    if (!olderName_.empty() && parent.hasMember(olderName_))
        return &parent.member(olderName_);
    return nullptr;
}

void PackedState::save(DataChunk& parent) const
{
    std::vector<std::byte> image(size_);
    std::size_t at = 0;
    for (const Field& field : fields_) {
        std::memcpy(image.data() + at, field.variable, field.size);
        at += field.size;
    }
    parent.addMember(DataChunk(name(), image.data(), image.size()));
}

bool PackedState::load(const DataChunk& parent)
{
    const DataChunk* member = find(parent);
    if (!member)
        return !isRequired();
    if (member->payloadSize() != size_)
        return false;
    const auto* image = static_cast<const std::byte*>(member->payload());
    std::size_t at = 0;
    for (const Field& field : fields_) {
        if (field.isFlag)
            *static_cast<bool*>(field.variable) = image[at] != std::byte{0};
        else
            std::memcpy(field.variable, image + at, field.size);
        at += field.size;
    }
    return true;
}

StateStore::StateStore(std::string word, int version)
    : StateEntry(std::move(word)), version_(version), ownRows_(std::make_unique<RecentRows>()),
      rows_(ownRows_.get())
{
}

StateStore::StateStore(std::string word, RecentRows& rootRows)
    : StateEntry(std::move(word)), version_(0), rows_(&rootRows)
{
}

void StateStore::pushUndo(CInterface& runtime)
{
    for (const auto& entry : entries_)
        entry->pushUndo(runtime);
}

void StateStore::pushUndoOfValues(CInterface& runtime)
{
    for (const auto& entry : entries_)
        entry->pushUndoOfValues(runtime);
}

void StateStore::record(double t)
{
    if (ownRows_) {
        if (rows_->full())
            flush();
        rows_->write(t);
    }
    for (StateEntry* const entry : apart_)
        entry->record(t);
}

void StateStore::flush()
{
    for (StateEntry* const entry : animated_)
        entry->flush();
    if (ownRows_)
        rows_->clear();
}

void StateStore::restore(double t)
{
    for (StateEntry* const entry : animated_)
        entry->restore(t);
}

void StateStore::reset()
{
    for (StateEntry* const entry : animated_)
        entry->reset();
}

void StateStore::cutBehind(double t)
{
    for (StateEntry* const entry : animated_)
        entry->cutBehind(t);
}

void StateStore::retake(double t, CInterface& runtime)
{
    for (StateEntry* const entry : animated_)
        entry->retake(t, runtime);
}

void StateStore::save(DataChunk& parent) const
{
    DataChunk chunk(name(), nullptr, 0);
    saveEntries(chunk);
    parent.addMember(chunk);
}

bool StateStore::load(const DataChunk& parent)
{
    const DataChunk* chunk = find(parent);
    return chunk ? loadEntries(*chunk) : !isRequired();
}

DataChunk StateStore::saveRoot() const
{
    DataChunk root(version_ > 0 ? name() + std::to_string(version_) : name(), nullptr, 0);
    saveEntries(root);
    return root;
}

bool StateStore::loadRoot(const DataChunk& root)
{
    if (root.name().empty() && root.memberCount() == 0) {
        reset();
        return true;
    }
    return isOurs(std::string(root.name())) && loadEntries(root);
}

bool StateStore::isOurs(const std::string& rootName) const
{
    if (version_ <= 0)
        return rootName == name();
    if (!rootName.starts_with(name()))
        return false;
    int version = 0;
    std::from_chars(rootName.data() + name().size(), rootName.data() + rootName.size(), version);
    return version >= kOldestReadable;
}

void StateStore::saveEntries(DataChunk& chunk) const
{
    for (const auto& entry : entries_)
        entry->save(chunk);
}

bool StateStore::loadEntries(const DataChunk& chunk)
{
    for (const auto& entry : entries_) {
        if (!entry->load(chunk))
            return false;
    }
    return true;
}

} // namespace tvw::rgs

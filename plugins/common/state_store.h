/// A tool's state in one list: what a run changes, what a save keeps, and under which names.
///
/// A tool registers its variables once, in its constructor, in the order in which they stand in its
/// saved chunk. From then on the store pushes their undo records, records them all at a time, reads
/// them all back, cuts what a new run makes stale, and writes and reads the chunk. A variable that
/// one tick leaves for the next and that is not registered is lost between two takes.
///
/// The variables are plain members of the tool or its model; they must live as long as the store.
/// `record` and `restore` allocate nothing once a take has had its length. What was recorded last
/// waits in `RecentRows` for the time lines: an undo record of the lines must not be restored
/// before `flush`.
///
/// A run begins with `pushUndoOfValues`, then `restore` or `reset`, then `retake` and `record`.
#pragma once

#include "core/contract/interface.h"
#include "util/avar.h"
#include "util/datachunk.h"
#include "util/recent_rows.h"

#include <concepts>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace tvw::rgs {

/// One registered variable, or a group of them.
class StateEntry
{
public:
    explicit StateEntry(std::string name) : name_(std::move(name)) {}
    virtual ~StateEntry() = default;
    StateEntry(const StateEntry&) = delete;
    StateEntry& operator=(const StateEntry&) = delete;

    /// What it holds can be put back.
    virtual void pushUndo(CInterface& runtime) = 0;

    /// The same before a run, for what `retake` does not see to.
    virtual void pushUndoOfValues(CInterface& runtime) { pushUndo(runtime); }

    virtual bool isAnimated() const { return false; } ///< those below do something
    virtual bool joins(RecentRows&) { return false; } ///< records itself with the rows from now on
    virtual void record(double) {}    ///< the variable's value goes onto its time line
    virtual void flush() {}           ///< takes its share of the rows
    virtual void restore(double) {}   ///< the time line's value at that time goes back
    virtual void reset() {}           ///< back to the value at registration
    virtual void cutBehind(double) {} ///< drops what lies later

    /// A run begins: the same, and can be undone. What is dropped goes to the undo record as it
    /// stands, only the rest is copied.
    virtual void retake(double, CInterface&) {}
    virtual void save(DataChunk& parent) const = 0;

    /// False refuses the whole chunk: a required member is missing or one is damaged.
    [[nodiscard]] virtual bool load(const DataChunk& parent) = 0;

    const std::string& name() const { return name_; }

    /// A name under which older files hold it; the present name is looked up first.
    StateEntry& formerly(std::string olderName)
    {
        olderName_ = std::move(olderName);
        return *this;
    }

    /// A chunk without this member is refused.
    StateEntry& required()
    {
        required_ = true;
        return *this;
    }

protected:
    /// The member of the chunk that holds this entry, or null.
    const DataChunk* find(const DataChunk& parent) const;
    bool isRequired() const { return required_; }

private:
    std::string name_;
    std::string olderName_;
    bool required_ = false;
};

/// Saved under a name, not animated. The member is the raw bytes of the value.
template <class T>
class Stored final : public StateEntry
{
    static_assert(std::is_trivially_copyable_v<T>);

public:
    Stored(std::string name, T& variable) : StateEntry(std::move(name)), variable_(variable) {}

    void pushUndo(CInterface& runtime) override
    {
        runtime.pushUndo(new CVariableModUndo<T>(&variable_));
    }
    void save(DataChunk& parent) const override { parent.addValue(name(), variable_); }

    bool load(const DataChunk& parent) override
    {
        const DataChunk* member = find(parent);
        if (!member)
            return !isRequired();
        return member->readValue(variable_) || !isRequired();
    }

private:
    T& variable_;
};

/// Neither saved nor animated, but put back by the undo of a run.
template <class T>
class Undone final : public StateEntry
{
public:
    explicit Undone(T& variable) : StateEntry({}), variable_(variable) {}

    void pushUndo(CInterface& runtime) override
    {
        runtime.pushUndo(new CVariableModUndo<T>(&variable_));
    }
    void save(DataChunk&) const override {}
    bool load(const DataChunk&) override { return true; }

private:
    T& variable_;
};

/// A value with a time line. The member is the time line's binary block.
template <class Curve>
class Recorded final : public StateEntry
{
public:
    using T = std::remove_cvref_t<decltype(std::declval<Curve>().get(0.0))>;

    Recorded(std::string name, T& variable)
        : StateEntry(std::move(name)), variable_(variable), initial_(variable), curve_(variable)
    {
    }

    /// With all that was recorded. Ask for it each time: it does not keep up by itself.
    Curve& curve() const
    {
        catchUp();
        return curve_;
    }

    void pushUndo(CInterface& runtime) override
    {
        runtime.pushUndo(new CVariableModUndo<Curve>(&curve()));
    }
    void pushUndoOfValues(CInterface&) override {}
    bool isAnimated() const override { return true; }

    bool joins(RecentRows& rows) override
    {
        if constexpr (sizeof(T) > kWidest)
            return false;
        rows_ = &rows;
        place_ = rows.add(&variable_, sizeof(T));
        return true;
    }

    void record(double t) override { curve_.set(t, variable_); }
    void flush() override { catchUp(); }
    void restore(double t) override { variable_ = curve().get(t); }
    void reset() override { variable_ = initial_; }
    void cutBehind(double t) override { curve().cutBehind(t); }

    void retake(double t, CInterface& runtime) override
    {
        Curve& line = curve();
        runtime.pushUndo(new CVariableModUndo<Curve>(&line, retakenFrom(line, t)));
    }

    void save(DataChunk& parent) const override
    {
        const Curve& whole = curve();
        std::vector<std::byte> block(whole.binarySize());
        whole.store(block.data(), block.size());
        parent.addMember(DataChunk(name(), block.data(), block.size()));
    }

    bool load(const DataChunk& parent) override
    {
        const DataChunk* member = find(parent);
        if (!member)
            return !isRequired();
        return curve().load(member->payload(), member->payloadSize());
    }

private:
    static constexpr std::size_t kWidest = 64; ///< [bytes] a wider one is worth its own visit

    void catchUp() const
    {
        if (!rows_)
            return;
        for (std::size_t i = rows_->indexOf(taken_); i < rows_->count(); ++i)
            curve_.set(rows_->time(i), rows_->template at<T>(i, place_));
        taken_ = rows_->end();
    }

    T& variable_;
    T initial_;
    mutable Curve curve_; ///< with its share of the rows, its value
    RecentRows* rows_ = nullptr;
    std::size_t place_ = 0;
    mutable std::uint64_t taken_ = 0; ///< rows
};

/// Flags and numbers that never change in meaning, side by side in one member of fixed size.
class PackedState final : public StateEntry
{
public:
    /// size: bytes of the member; what the fields don't fill is zero. Another size is refused.
    PackedState(std::string name, std::size_t size) : StateEntry(std::move(name)), size_(size) {}

    template <class T>
    requires std::is_trivially_copyable_v<T> PackedState& field(T& variable)
    {
        fields_.push_back({&variable, sizeof(T), std::same_as<T, bool>});
        return *this;
    }

    void pushUndo(CInterface&) override {} // set by the user between runs, never by one
    void save(DataChunk& parent) const override;
    bool load(const DataChunk& parent) override;

private:
    struct Field
    {
        void* variable;
        std::size_t size;
        bool isFlag; ///< any byte but 0 is true
    };
    std::size_t size_;
    std::vector<Field> fields_;
};

class StateStore final : public StateEntry
{
public:
    /// word     the root chunk's name.
    /// version  written behind the word and read back; a chunk with less than 100 is refused.
    ///          0: the word stands alone.
    explicit StateStore(std::string word, int version = 0);

    /// A nested one, whose variables record themselves with its root's.
    StateStore(std::string word, RecentRows& rootRows);

    template <class T>
    Stored<T>& stored(std::string name, T& variable)
    {
        return add<Stored<T>>(std::move(name), variable);
    }

    template <class T>
    Undone<T>& undone(T& variable)
    {
        return add<Undone<T>>(variable);
    }

    template <class T>
    Recorded<AVar_Linear<T>>& linear(std::string name, T& variable)
    {
        return add<Recorded<AVar_Linear<T>>>(std::move(name), variable);
    }

    template <class T>
    Recorded<AVar_Nearest<T>>& nearest(std::string name, T& variable)
    {
        return add<Recorded<AVar_Nearest<T>>>(std::move(name), variable);
    }

    template <class T>
    Recorded<AVar_Latest<T>>& latest(std::string name, T& variable)
    {
        return add<Recorded<AVar_Latest<T>>>(std::move(name), variable);
    }

    PackedState& packed(std::string name, std::size_t size)
    {
        return add<PackedState>(std::move(name), size);
    }

    /// A member chunk with members of its own; one that is missing leaves its variables alone.
    StateStore& nested(std::string name) { return add<StateStore>(std::move(name), *rows_); }

    template <class Entry, class... Args>
    Entry& add(Args&&... args)
    {
        auto entry = std::make_unique<Entry>(std::forward<Args>(args)...);
        Entry& reference = *entry;
        if (entry->isAnimated())
            animated_.push_back(entry.get());
        if (entry->isAnimated() && !entry->joins(*rows_))
            apart_.push_back(entry.get());
        entries_.push_back(std::move(entry));
        return reference;
    }

    void pushUndo(CInterface& runtime) override;
    void pushUndoOfValues(CInterface& runtime) override;
    bool isAnimated() const override { return true; }
    void record(double t) override;
    void flush() override; ///< at the end of a run
    void restore(double t) override;
    void reset() override;
    void cutBehind(double t) override;
    void retake(double t, CInterface& runtime) override;
    void save(DataChunk& parent) const override;
    bool load(const DataChunk& parent) override;

    /// The whole chunk, for `setSaveData`.
    DataChunk saveRoot() const;

    /// Reads a root chunk. False when its word or version is not ours, or a member refuses. A root
    /// without a name and members, as of a tool that never saved, gives every variable its default.
    [[nodiscard]] bool loadRoot(const DataChunk& root);

private:
    bool isOurs(const std::string& rootName) const;
    void saveEntries(DataChunk& chunk) const;
    bool loadEntries(const DataChunk& chunk);

    int version_;
    std::unique_ptr<RecentRows> ownRows_; ///< of a root; goes after the entries
    RecentRows* rows_;
    std::vector<std::unique_ptr<StateEntry>> entries_;
    std::vector<StateEntry*> animated_; ///< of these
    std::vector<StateEntry*> apart_;    ///< of those, what does not record with the rows
};

} // namespace tvw::rgs

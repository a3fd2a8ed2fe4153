/// The undo list of the stage: named steps of records, in a done and an undone list.
///
/// Brackets nest; the outermost makes the step and names it. A step without records is not kept.
/// A record belongs to the list from `push` on and is ended with `CUndo::destroy`, in the order
/// that lets a later record keep what an earlier one points at: steps that are done go oldest first
/// (the last record of a deleted tool keeps it), steps that are undone newest first (the record of
/// its creation does). Main thread only.
#pragma once

#include "core/contract/undo.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tvw::rgs::stage {

class UndoStack
{
public:
    UndoStack() = default;
    UndoStack(const UndoStack&) = delete;
    UndoStack& operator=(const UndoStack&) = delete;
    ~UndoStack() { clear(); }

    void begin(std::string name);

    /// Closes the innermost bracket; without one, nothing happens.
    void end();

    /// As `end`, and when the outermost closes everything pushed since it opened is taken back.
    void cancel();

    /// False when no bracket is open: the record is then destroyed at once. Null is ignored.
    bool push(CUndo* record);

    /// A bracket is open and nothing is being restored.
    [[nodiscard]] bool isOpen() const { return !names_.empty() && !restoring_; }
    [[nodiscard]] bool isRestoring() const { return restoring_; }

    /// Tells one outermost bracket from another; 0 when no record would be kept. What remembers
    /// this number knows whether it has pushed its record for the bracket already.
    [[nodiscard]] std::uint64_t bracket() const { return isOpen() ? bracket_ : 0; }

    bool undo(); ///< false when there is nothing, a bracket is open, or a restore is going on
    bool redo();

    [[nodiscard]] std::vector<std::string> undoNames() const; ///< newest last
    [[nodiscard]] std::vector<std::string> redoNames() const; ///< the next to be redone last

    /// Tells one state of the scene from another: the same number again after an undo or a redo
    /// that leads back to it. What was changed outside brackets does not show.
    [[nodiscard]] std::uint64_t state() const { return done_.empty() ? base_ : done_.back().state; }

    /// Steps kept, at least 1; the oldest go first. Default: 200 (a step of a take keeps the keys
    /// that it replaced).
    void setLimit(std::size_t steps);

    /// Steps go too when those kept have grown the memory in use by more than `bytes`; the newest
    /// stays in any case. counter: answers how much memory is in use now [bytes].
    void setMemoryLimit(std::size_t bytes, std::size_t (*counter)());

    /// Drops all records, those of an open bracket too, without taking anything back. The bracket
    /// stays open, and counts as another one.
    void clear();

private:
    struct Step
    {
        std::string name;
        std::vector<CUndo*> records;
        std::uint64_t state = 0; ///< that it leads to
        std::int64_t grown = 0;  ///< memory in use over its bracket [bytes]
    };

    void close();
    void takeBack(Step& step);
    void dropUndone();
    void trim();
    [[nodiscard]] bool isTooMuch() const;
    [[nodiscard]] std::int64_t inUse() const;
    static void destroyForward(Step& step);
    static void destroyBackward(Step& step);

    std::vector<std::string> names_; ///< of the open brackets
    Step open_;
    std::vector<Step> done_;
    std::vector<Step> undone_;
    std::size_t limit_ = 200;
    std::int64_t memoryLimit_ = 0;
    std::size_t (*memoryInUse_)() = nullptr; ///< null: no such limit
    std::int64_t inUseBefore_ = 0;           ///< the open bracket
    std::uint64_t bracket_ = 0;
    std::uint64_t lastState_ = 0;
    std::uint64_t base_ = 0; ///< the state before all that are kept
    int bracketsInRestore_ = 0;
    bool cancelled_ = false;
    bool restoring_ = false;
};

} // namespace tvw::rgs::stage

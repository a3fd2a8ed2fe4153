/// Undo records. The host owns the undo list; a record that is handed to `pushUndo` belongs to it,
/// is ended by `destroy`, and may outlive every bracket but not what it points at: records are
/// dropped in the order of the list, and the record that deletes a tool is the last of that tool.
#pragma once

#include "core/contract/interface_callback.h"

#include <string>
#include <utility>

namespace tvw::rgs {

class CUndo
{
public:
    /// isUndo true: the user undoes. False: the bracket that holds the record is being cancelled;
    /// no `redo` follows. [main thread]
    virtual void restore(bool isUndo) = 0;

    /// The user redoes. Only after a `restore(true)`.
    virtual void redo() = 0;

    /// Ends the record.
    virtual void destroy() { delete this; }

protected:
    CUndo() = default;
    CUndo(const CUndo&) = delete;
    CUndo& operator=(const CUndo&) = delete;
    virtual ~CUndo() = default;
};

/// Takes back a change of one variable. Made and pushed BEFORE the change. Undo and redo swap, so a
/// time line of many thousand records is put back at no cost.
///
/// variable  must live as long as the record.
template <class T>
class CVariableModUndo final : public CUndo
{
public:
    explicit CVariableModUndo(T* variable) : variable_(variable), copy_(*variable) {}

    /// The change is done: `before` is what the variable was.
    CVariableModUndo(T* variable, T before) : variable_(variable), copy_(std::move(before)) {}

    void restore(bool isUndo) override
    {
        if (!isUndo) {
            *variable_ = copy_;
        } else if (!swapped_) {
            exchange();
            swapped_ = true;
        }
    }

    void redo() override
    {
        if (swapped_) {
            exchange();
            swapped_ = false;
        }
    }

private:
    void exchange()
    {
        using std::swap;
        swap(*variable_, copy_);
    }

    T* variable_;
    T copy_;
    bool swapped_ = false;
};

/// Takes back an action that no variable holds, such as showing a helper node: the target hears an
/// event for undo and one for redo. By convention they are the action's label behind "REALUNDO" and
/// "REALREDO".
class CREEventUndo final : public CUndo
{
public:
    CREEventUndo(CInterfaceCallback* target, std::string undoEvent, std::string redoEvent)
        : target_(target), undoEvent_(std::move(undoEvent)), redoEvent_(std::move(redoEvent))
    {
    }

    void restore(bool) override { target_->itemChanged(undoEvent_); }
    void redo() override { target_->itemChanged(redoEvent_); }

private:
    CInterfaceCallback* target_;
    std::string undoEvent_;
    std::string redoEvent_;
};

} // namespace tvw::rgs

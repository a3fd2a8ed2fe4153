/// The host seam: everything that the core knows of the program it runs in.
///
/// One adaptor exists in a process while the core is up. All calls come on the host's main thread.
/// Times are seconds; matrices are as in util/matrix4.h, +Y up, -Z forward, metres. THE ORDER OF THE
/// VIRTUAL OPERATIONS IS FROZEN.
#pragma once

#include "core/contract/interface.h"
#include "core/core_node.h"
#include "util/returnvalue.h"

#include <string>
#include <vector>

namespace tvw::rgs::core {

/// A stretch of the time line [s].
struct TimeRange
{
    double start = 0.0;
    double end = 0.0;
};

class AdaptorInterface
{
public:
    virtual std::int32_t getInterfaceVersion() = 0; ///< kInterfaceVersion, else the core won't start
    virtual std::string getAdaptorName() = 0;       ///< shown only
    virtual std::string getAdaptorId() = 0;         ///< names folders: letters, digits, "_"
    virtual std::string getHostName() = 0;          ///< shown only
    virtual std::string getHostVersion() = 0;       ///< shown only
    virtual void* getHostWindow() = 0;              ///< native handle; null without a window

    // Nodes. Handles belong to the adaptor, which keeps them until the scene closes; a node that was
    // deleted stays listed with its flag set.

    /// The scene node is named after the owner, "_" and name, made unique; null when the host can't.
    virtual CoreNode* createHelperNode(CInterface* owner, std::string name, CNode* parent,
                                       std::int64_t userValue) = 0;
    virtual CoreNode* createMeshNode(CInterface* owner, std::string name, CNode* parent,
                                     const CMesh* mesh, std::int64_t userValue) = 0;
    virtual std::intptr_t reservedOne() { return 0; }

    /// The first node of that owner and name inside the tool, a deleted one too; null on a miss.
    virtual CoreNode* findNode(CInterface* owner, std::string name) = 0;

    /// Writes on each of the owner's nodes what `gatherTools` needs after the scene is opened.
    virtual void saveNodeTags(CInterface* owner) = 0;

    /// After a scene was opened or merged: makes the tools whose tags it holds.
    virtual void gatherTools() = 0;

    virtual void getAllNodes(ReturnValue<std::vector<CoreNode*>>& out) = 0; ///< not deleted ones
    /// Of one owner, in creation order, deleted ones too.
    virtual void getNodes(CInterface* owner, ReturnValue<std::vector<CoreNode*>>& out) = 0;

    /// Finds the scene nodes that a saved `nodeinfo` of the tool `name` means: one place for each of
    /// its `node` children, null where none was found.
    virtual void bindNodes(std::string name, const util::xml::Element& nodeInfo,
                           ReturnValue<std::vector<CoreNode*>>& out) = 0;
    virtual void mergeFile(std::string path, ReturnValue<std::vector<CoreNode*>>& out) = 0;

    // Undo. Brackets nest; only the outermost reaches the host, under its name.

    virtual void beginUndo(std::string name) = 0;

    /// 0; 1 and the record is destroyed at once when no undo is open.
    virtual std::int32_t pushUndo(CUndo* record) = 0;
    virtual void endUndo() = 0;

    /// Marks the bracket for cancelling, then as `endUndo`: when the outermost closes, the host takes
    /// back all that it holds.
    virtual void cancelUndo() = 0;

    /// False also while the host itself undoes or redoes, so that nothing is recorded then.
    virtual bool isUndoOpen() = 0;
    virtual bool hostUndo() = 0; ///< whether something was undone
    virtual bool hostRedo() = 0;

    // Time.

    virtual double getTime() = 0;
    virtual void setTime(double time) = 0;
    /// The host gets n times as many frames a second, the base rate stays. n >= 1.
    virtual void setTimeScale(std::int32_t n) = 0;
    virtual void getRange(TimeRange& out) = 0;
    virtual void setRange(const TimeRange& range) = 0;
    virtual bool canRedrawInResimulation() = 0;
    virtual double getFramesPerSecond() = 0; ///< the base rate
    virtual double getFrameDuration() = 0;   ///< 1 / base rate
    virtual void redrawViews() = 0;
    virtual void disableHostKeys() = 0; ///< while a text field of ours has the focus
    virtual void enableHostKeys() = 0;

    // A run.

    /// Key mode on (the old state is kept for `endRun`); a record that puts the time back goes into
    /// the undo; every owned node of the instances has its present pose laid as a key. What stands in
    /// the list afterwards runs.
    virtual void beginRun(std::vector<CInterface*>& instances) = 0;
    virtual void beginPlainRun() = 0; ///< key mode alone
    virtual void endRun() = 0;

    virtual void shutdown() = 0; ///< the core's last call
    virtual void showHostSettings(void* window) = 0;
    virtual std::intptr_t reservedTwo() { return 0; }

    /// A native error box, usable before any window of ours exists.
    virtual void showError(std::string text, std::string title) = 0;

    /// Splits the instances into sets whose nodes don't hang below each other's: the number of the
    /// set of each, in the order of the instances. A host that doesn't know has one set.
    virtual std::vector<std::size_t> separate(const std::vector<CInterface*>& instances)
    {
        return std::vector<std::size_t>(instances.size(), 0);
    }

protected:
    ~AdaptorInterface() = default;
};

} // namespace tvw::rgs::core

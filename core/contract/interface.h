/// All that a tool can do: the runtime as one tool sees it.
#pragma once

#include "core/contract/codes.h"
#include "core/contract/extendable.h"
#include "core/contract/inputs.h"
#include "core/contract/interface_callback.h"
#include "core/contract/node.h"
#include "core/contract/snapshot.h"
#include "core/contract/undo.h"
#include "util/returnvalue.h"

#include <string>
#include <vector>

namespace tvw::rgs {

/// Implemented by the runtime, one object for each tool. Times are seconds on the host's time line.
/// A null handle is answered with null or ignored. Supported codes: 38, 39, 41, 43, 55, 56, 58, 60.
class CInterface : public CExtendable
{
public:
    using Callback = CInterfaceCallback;

    /// Replaces the entries of a combo box and keeps an open window in step. Owned by the runtime.
    class ComboUpdater
    {
    public:
        virtual void update(const std::vector<std::string>& items) = 0;

    protected:
        ~ComboUpdater() = default;
    };

    /// Gives the record to the host's undo, which owns it from here on. With no undo open the record
    /// is destroyed at once: do not keep the pointer. [live]
    virtual void pushUndo(CUndo* record) = 0;

    // Inputs. A property lives as long as the tool. kindMask: unidevice::kind bits.

    /// The property of that name, made if new; the mask of a second call is ignored. [live]
    virtual Property* addProperty(std::string name, std::uint32_t kindMask,
                                  Property::Factory* factory) = 0;
    virtual Property* addProperty(std::string name, std::uint32_t kindMask) = 0;

    virtual Property* findProperty(std::string name) = 0; ///< null when there is none. [live]

    // Configuration items. Each takes the next id of the tool, from 0: the order of the calls is part
    // of the saved profiles. Variables are the tool's own and must live as long as it. [declare]

    virtual void beginConfiguration() = 0;
    virtual void endConfiguration() = 0;
    virtual void beginGroup(std::string label, std::string tooltip) = 0;

    /// Goes back to the group around; answers it, null at the root.
    virtual core::configadaptor::Node* endGroup() = 0;

    /// triggerLength  pixels of mouse travel per step when the spinner is dragged.
    /// withInput      also declares an input "Spinner: " + label that turns the spinner in a run.
    virtual void addIntSpinner(std::string label, std::string tooltip, std::int32_t* value,
                               std::int32_t minimum, std::int32_t maximum, std::int32_t step,
                               std::int32_t triggerLength, bool withInput, Callback* callback) = 0;
    virtual void addSpinner(std::string label, std::string tooltip, double* value, double minimum,
                            double maximum, double step, std::int32_t triggerLength, bool withInput,
                            std::int32_t reserved, Callback* callback) = 0;
    virtual void addCheckBox(std::string label, std::string tooltip, bool* value,
                             Callback* callback) = 0;
    virtual void addTextBox(std::string label, std::string tooltip, std::string* value,
                            Callback* callback) = 0;
    virtual ComboUpdater* addComboBox(std::string label, std::string tooltip,
                                      std::vector<std::string> items, std::int32_t* index,
                                      Callback* callback) = 0;
    virtual void addButton(std::string label, std::string tooltip, Callback* callback) = 0;
    virtual void reservedOne() {}

    /// The window's items show the present values of their variables. [live]
    virtual void updateConfiguration() = 0;

    virtual void showInputDialog() = 0;                             ///< [live]
    virtual void getDataFolder(ReturnValue<std::string>& out) = 0;  ///< [live]

    // The tool's saved state: bytes that the runtime keeps and does not look at. [live]

    virtual void setSaveData(const void* bytes, std::int32_t size) = 0; ///< copies
    virtual const void* getSaveData(std::int32_t* size) = 0;            ///< null and 0 when none
    virtual void clearSaveData() = 0;

    // Scene nodes. [live]

    virtual void deleteNode(CNode* node) = 0;
    virtual CNode* getNode(std::string name) = 0; ///< by the name inside the tool; null when none

    /// userValue: a nodekind. Null when the host can't make the node.
    virtual CNode* createHelperNode(std::string name, CNode* parent, std::int64_t userValue) = 0;
    virtual CNode* createMeshNode(std::string name, CNode* parent, const CMesh* mesh,
                                  std::int64_t userValue) = 0;
    virtual void reservedTwo(std::string, const CMesh&) {}

    virtual CSnapshot* getSnapshot(CNode* node, double time) = 0;
    virtual CSnapshot_Helper* getHelperSnapshot(CNode* node) = 0;
    virtual CSnapshot_Mesh* getMeshSnapshot(CNode* node, double time) = 0; ///< null: no mesh
    virtual CSnapshot_Lens* getLensSnapshot(CNode* node, double time) = 0; ///< null: no camera
    virtual void releaseNode(CNode* node) = 0;
    virtual void releaseLensSnapshot(CSnapshot_Lens* snapshot) = 0;
    virtual void releaseMeshSnapshot(CSnapshot_Mesh* snapshot) = 0;
    virtual void releaseHelperSnapshot(CSnapshot_Helper* snapshot) = 0;
    virtual void releaseSnapshot(CSnapshot* snapshot) = 0;

    // Time and the user. [live]

    virtual double getTime() = 0;            ///< the host's time, not a tick's: that is its argument
    virtual double getFramesPerSecond() = 0; ///< [1/s], whole
    virtual double getFrameDuration() = 0;   ///< [s], the step of a run
    virtual void redrawViews() = 0;          ///< dropped while a resimulation runs

    /// style: low four bits 1 Yes No, 2 Yes No Cancel, 3 Ok Cancel, else Ok; then 16 question,
    /// 32 critical, 48 warning. Answers 0 Ok, 2 Yes, 3 No, 1 anything else. Without a window the text
    /// goes to the log and the answer is that of the safe button.
    virtual std::int32_t messageBox(std::string text, std::string title, std::int32_t style) = 0;

    virtual ~CInterface() = default;
};

} // namespace tvw::rgs

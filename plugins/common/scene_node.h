/// A tool's scene node: its row in the tool's table, and its handle once it is made.
#pragma once

#include "core/contract/interface.h"

#include <string>
#include <string_view>

namespace tvw::rgs {

struct Color
{
    float red, green, blue; ///< each 0 to 1
};

inline constexpr Color kReferenceColor{0.8784314F, 0.3372549F,
                                       0.3372549F};                     ///< frames, ground, targets
inline constexpr Color kMovedColor{0.3372549F, 0.8784314F, 0.3372549F}; ///< what a tool moves
inline constexpr Color kCameraColor{0.3372549F, 0.5647059F, 0.8784314F};

/// Which switch of the tool shows and hides a node ("Hide Helpers" or one of its own).
enum class NodeGroup : unsigned char { Helpers, Always, First, Second, Third };

/// One scene node of a tool, as its table has it.
struct NodeRow
{
    std::string_view prefix; ///< stands before the name: the number of a repeated node
    std::string_view name;   ///< with the prefix, unique within the tool
    CMesh (*mesh)();         ///< what the user sees and grabs
    Color color = kMovedColor;
    int parent = -1; ///< row of the parent, which stands earlier; -1: top level
    std::int64_t kind = nodekind::shape;
    NodeGroup group = NodeGroup::Helpers;
    Matrix4 (*place)() = nullptr; ///< local pose at creation; null: identity
    bool keyed = true;            ///< false: a run leaves its keys alone
    bool selected = false;        ///< selected when the tool is made

    std::string fullName() const { return std::string(prefix).append(name); }
};

/// A pose of the node is read and written through its snapshots; a node that was deleted reads as
/// the identity, and a write to it does nothing. [live]
class SceneNode
{
public:
    explicit SceneNode(const NodeRow& row) : row_(&row), name_(row.fullName()) {}
    virtual ~SceneNode() = default;

    /// Makes the scene node. False when the host can't.
    virtual bool create(CInterface& runtime, CNode* parent);

    /// Deletes it; the handle is null afterwards. Always true.
    virtual bool remove();
    virtual void show();
    virtual void hide();

    /// The first display flag of the helper: edges only.
    virtual void setDisplayFlag(bool on);

    /// Takes the handle of the node that stands in the scene already. False when there is none.
    bool find(CInterface& runtime);

    bool exists() const { return handle_ && !handle_->isDeleted(); }
    const std::string& name() const { return name_; }
    const NodeRow& row() const { return *row_; }
    CNode* handle() const { return handle_; }

    /// False, and `out` stays, when there is no pose to read. time [s].
    bool readGlobal(double time, Matrix4& out) const;
    bool readLocal(double time, Matrix4& out) const;

    Matrix4 global(double time) const; ///< identity when there is none
    Matrix4 local(double time) const;
    void setGlobal(double time, const Matrix4& pose);
    void setLocal(double time, const Matrix4& pose);

private:
    CInterface* runtime_ = nullptr; // first what a tick looks at
    CNode* handle_ = nullptr;
    const NodeRow* row_;
    std::string name_;
};

} // namespace tvw::rgs

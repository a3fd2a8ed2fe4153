/// A node of the stage's scene.
///
/// Made, kept and ended by its `Stage`; the object lives until the scene is cleared, also when the
/// node was removed (`isPresent` is false then, and only undo brings it back). A change is recorded
/// for undo when a bracket is open, and simply done otherwise. Times are seconds; matrices are as
/// in util/matrix4.h. Main thread only.
#pragma once

#include "adaptor/stage/animated.h"
#include "adaptor/stage/key_interpolation.h"
#include "adaptor/stage/spline_curve.h"
#include "adaptor/stage/stage_mesh.h"
#include "util/matrix4.h"

#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tvw::rgs::stage {

class NodeHandle;
class Stage;

enum class NodeKind : unsigned char { Helper, Mesh, Camera, Spline };

[[nodiscard]] const char* nameOf(NodeKind kind) noexcept; ///< "helper", "mesh", "camera", "spline"

/// How the angle of view is measured.
enum class ViewAngle : unsigned char { Horizontal, Vertical, Diagonal };

/// What of a node has no keys. One copy of it is the undo record of all its changes in a bracket.
struct NodeState
{
    std::string name;
    std::map<std::string, std::string> properties;
    std::shared_ptr<const StageMesh> mesh;     ///< a helper's shape too; null: none
    std::shared_ptr<const SplineCurve> spline; ///< null: none
    Matrix4 local;                             ///< while the node has no pose keys
    double fov = 45.0;                         ///< [degrees], while it has no keys
    double targetDistance = 10.0;              ///< [m], while it has no keys
    ViewAngle viewAngle = ViewAngle::Horizontal;
    std::array<float, 3> color{0.6F, 0.6F, 0.6F}; ///< red, green, blue, each 0 to 1
    bool visible = true;
    bool selected = false;
    bool wireframe = false;
    bool alwaysOnTop = false;
};

class alignas(64) StageNode // a line of the caches
{
public:
    StageNode(const StageNode&) = delete;
    StageNode& operator=(const StageNode&) = delete;

    [[nodiscard]] Stage& stage() const noexcept { return *stage_; }
    [[nodiscard]] NodeKind kind() const noexcept { return kind_; }
    [[nodiscard]] bool isPresent() const noexcept { return present_; }
    [[nodiscard]] const std::string& name() const noexcept { return state_.name; }
    [[nodiscard]] StageNode* parent() const noexcept { return parent_; } ///< null: top level
    [[nodiscard]] const std::vector<StageNode*>& children() const noexcept { return children_; }
    [[nodiscard]] const NodeState& state() const noexcept { return state_; }

    /// The tools' handles on this node, in the order in which they were made.
    [[nodiscard]] const std::vector<NodeHandle*>& handles() const noexcept { return handles_; }

    /// Rises with every change of the node that a picture of it could show.
    [[nodiscard]] std::uint64_t version() const noexcept { return version_; }

    /// Made unique in the scene by a number behind it; the name taken is `name()`.
    void rename(const std::string& name);

    /// Keeps the world pose at the stage's present time; keys are carried along as a whole. False,
    /// and nothing changes, for the node itself or one below it.
    bool setParent(StageNode* parent);
    [[nodiscard]] bool isBelow(const StageNode& other) const noexcept; ///< or is it

    void setVisible(bool on);
    void setSelected(bool on); ///< the others stay as they are: see Stage::select
    void setColor(float red, float green, float blue); ///< held to 0 .. 1
    void setWireframe(bool on);
    void setAlwaysOnTop(bool on);

    /// User properties: texts under keys, saved with the scene. An empty text is as none.
    [[nodiscard]] std::string property(const std::string& key) const;
    void setProperty(const std::string& key, const std::string& text);

    // Pose. A write at a time: with `key` a key is laid; without, a node with no keys gets another
    // constant pose, and one with keys shows the pose at that time until the time moves. A matrix
    // with an element that is no number is refused: false. So is any write to a removed node.

    [[nodiscard]] Matrix4 local(double time) const { return localAt(toFlicks(time)); }
    [[nodiscard]] Matrix4 world(double time) const { return worldAt(toFlicks(time)); }
    bool setLocal(const Matrix4& pose, double time, bool key);
    bool setWorld(const Matrix4& pose, double time, bool key);

    /// Asks for the memory that a write of a pose needs, and goes on at once.
    void fetch() const noexcept;

    [[nodiscard]] Matrix4 localAt(Flicks time) const noexcept;
    [[nodiscard]] const Matrix4& worldAt(Flicks time) const; ///< until the next call on this node

    [[nodiscard]] const KeyTrack<Matrix4>& poseKeys() const noexcept { return pose_.keys; }
    [[nodiscard]] std::vector<double> poseKeyTimes() const; ///< sorted [s]
    bool removePoseKey(double time);                        ///< false when there is none

    /// Pose and lens: keys later than `time` go, one at exactly that time stands.
    void deleteKeysBehind(double time);
    void deleteLensKeysBehind(double time);
    void clearKeys();

    // Lens; only cameras have one. Writes as for poses.

    [[nodiscard]] bool hasLens() const noexcept { return kind_ == NodeKind::Camera; }
    [[nodiscard]] double fov(double time) const;                    ///< [degrees]
    [[nodiscard]] double targetDistance(double time) const;         ///< [m]
    bool setFov(double degrees, double time, bool key);             ///< held to 0.01 .. 179.99
    bool setTargetDistance(double distance, double time, bool key); ///< held to 0 and up
    void setViewAngle(ViewAngle type);
    [[nodiscard]] const KeyTrack<double>& fovKeys() const noexcept { return fov_.keys; }
    [[nodiscard]] const KeyTrack<double>& targetDistanceKeys() const noexcept
    {
        return targetDistance_.keys;
    }

    // Geometry, in the node's own space.

    [[nodiscard]] const std::shared_ptr<const StageMesh>& mesh() const noexcept
    {
        return state_.mesh;
    }
    [[nodiscard]] const std::shared_ptr<const SplineCurve>& spline() const noexcept
    {
        return state_.spline;
    }
    /// A node that is to share its mesh with others gets the same pointer as they.
    void setMesh(std::shared_ptr<const StageMesh> mesh);
    void setMesh(const CMesh& mesh) { setMesh(std::make_shared<const StageMesh>(mesh)); }
    void setSpline(std::vector<Vector3d> points, bool closed);

private:
    friend class NodeHandle;
    friend class Stage;
    friend class LinkRecord;
    friend class NodeStateRecord;
    friend class PresenceRecord;
    template <class T>
    friend class TrackRecord;

    struct WorldEntry
    {
        Flicks time = 0;
        std::uint64_t sceneVersion = 0; ///< of the stage's poses; 0: never computed
        std::uint64_t ownVersion = 0;
        std::uint64_t parentStamp = 0; ///< of the parent's entry that was used; 0: none
        std::uint64_t stamp = 0;       ///< differs whenever the pose may
        std::uint64_t heldEpoch = 0;   ///< when the local pose was a held one
    };

    StageNode(Stage& stage, NodeKind kind) : stage_(&stage), kind_(kind) {}

    /// Of the entry for that time, up to date.
    [[nodiscard]] std::size_t worldIndex(Flicks time) const;
    bool setLocalAt(const Matrix4& pose, Flicks time, bool key);
    bool setWorldAt(const Matrix4& pose, Flicks time, bool key);
    void touch() noexcept;     ///< something that shows has changed
    void touchPose() noexcept; ///< and with it the world poses of this node and those below
    NodeState& change();       ///< the state, remembered for undo
    template <class T>
    KeyTrack<T>& changeKeys(Animated<T>& track);
    template <class T>
    void cutBehind(Animated<T>& track, double time);
    template <class T>
    void write(Animated<T>& track, T NodeState::*constant, const T& value, Flicks time, bool key);
    void carry(const Matrix4& by);
    void prepareRun(std::size_t frames);
    void releaseContent() noexcept;

    // What a write of a pose looks at stands first and side by side: a run writes thousands of
    // nodes in turn, and fetches each from beyond the nearest caches.
    Stage* stage_;
    StageNode* parent_ = nullptr;
    NodeKind kind_;
    bool present_ = false;
    std::uint64_t version_ = 1;
    std::uint64_t poseVersion_ = 1;
    Animated<Matrix4> pose_;
    mutable std::array<WorldEntry, 2> worlds_;
    mutable std::array<Matrix4, 2> worldPoses_;
    mutable unsigned oldestWorld_ = 0;
    int presenceRecords_ = 0;
    std::uint64_t stateNoted_ = 0;
    Animated<double> fov_;
    Animated<double> targetDistance_;
    std::vector<StageNode*> children_;
    std::vector<NodeHandle*> handles_;
    NodeState state_;
};

} // namespace tvw::rgs::stage

/// The numbered operations of `CExtendable::call`, who answers them, and what they are given.
#pragma once

#include "util/vector3.h"

#include <cstdint>
#include <span>
#include <string>

namespace tvw::unidevice {
class Control;
}

namespace tvw::util::xml {
class Element;
}

namespace tvw::rgs {

class CNode;
class CSnapshot_Shape;

namespace code {

// Answered by a node (`CNode::call`).
inline constexpr std::int32_t openSelection = 10; ///< no argument; 0 when a bracket is open already
inline constexpr std::int32_t closeSelection = 11; ///< no argument
inline constexpr std::int32_t disown = 17;     ///< no argument; runs leave the node's keys alone
inline constexpr std::int32_t isSameNode = 31; ///< CNode*; 1 when both stand for one scene node
inline constexpr std::int32_t renameNode = 32; ///< const std::string*; inside an undo of its own
inline constexpr std::int32_t copyNode = 37;   ///< CNode** out; a copy of the scene node
/// const double* time [s]; drops the keys of the lens that are later, whoever owns the node. For a
/// tool that writes the lens of a camera whose pose is the user's.
inline constexpr std::int32_t cutLens = 65;
/// No argument. The node's pose is read or written soon: a host may ask for its memory.
inline constexpr std::int32_t fetch = 64;

// Answered by a mesh at one time (`CSnapshot_Mesh::call`).
inline constexpr std::int32_t castRayFan = 62; ///< MeshRayFan*; 1 when all its rays are answered

// Answered by the runtime (`CInterface::call`).
inline constexpr std::int32_t shapeSnapshot = 38;        ///< ShapeSnapshotRequest*
inline constexpr std::int32_t releaseShapeSnapshot = 39; ///< ShapeSnapshotRelease*
inline constexpr std::int32_t makeOutput = 41;           ///< OutputRequest*; answers a Control*
inline constexpr std::int32_t deleteTool = 43;           ///< no argument; 0, or 71 in a run
inline constexpr std::int32_t parentName = 55;           ///< std::string* out; empty below the root
inline constexpr std::int32_t masterNode = 56;           ///< XmlSink*
inline constexpr std::int32_t destroyTool = 58;          ///< no argument
inline constexpr std::int32_t addLabel = 60;             ///< LabelRequest*

// Answered by a tool object (`CCamera::call`).
inline constexpr std::int32_t updateOutput = 40; ///< unidevice::Control*
inline constexpr std::int32_t treeComplete =
    42; ///< no argument; the tool and all its children stand
inline constexpr std::int32_t writeCustomData = 44; ///< util::xml::Element*, to be filled
inline constexpr std::int32_t readCustomData = 45;  ///< const util::xml::Element*
inline constexpr std::int32_t noToolTip = 61;       ///< only its presence counts
/// No argument. A run is about to start: items that only show something hold their own value again.
inline constexpr std::int32_t settleItems = 63;
/// No argument. 1 promises that a tick looks at nothing but the tool's own inputs, items and nodes and
/// the nodes above and below those, and changes nothing but its own: a second pass may then tick the
/// tool several frames on end while others wait.
inline constexpr std::int32_t ticksAlone = 66;

// Answered by a tool's factory (`CCameraPlugin::call`).
inline constexpr std::int32_t olderIds = 16; ///< std::vector<std::string>* out
inline constexpr std::int32_t unlisted =
    51; ///< only its presence counts: no entry in the tool lists

} // namespace code

/// Rays that lie close together, as a wheel's do, in the node's space. The spans are of one length
/// and belong to the caller. A host that answers 0 is asked ray by ray, `CSnapshot_Mesh::rayCast`,
/// and gives the same hits.
struct MeshRayFan
{
    std::span<const Vector3d> origins;
    std::span<const Vector3d> directions; ///< of unit length; one of length 0 hits nothing
    double maxDistance;                   ///< a hit further away may be left out
    std::span<double> distances;          ///< out: of the nearest hits; negative: none
    std::span<Vector3d> normals;          ///< out: of unit length; unchanged where nothing is hit
};

struct ShapeSnapshotRequest
{
    CNode* node;
    double time; ///< [s]
};

struct ShapeSnapshotRelease
{
    CSnapshot_Shape* snapshot;
    CNode* node;
};

/// A virtual output: a control of the tool's own device, which other tools can bind as an input.
struct OutputRequest
{
    std::string name;
    std::int32_t id;
    std::int32_t kind; ///< unidevice::kind bits
};

struct LabelRequest
{
    std::string text;
    std::int32_t style;
};

/// Takes an element that somebody else made.
class XmlSink
{
public:
    virtual void take(const util::xml::Element& element) = 0;

protected:
    ~XmlSink() = default;
};

} // namespace tvw::rgs

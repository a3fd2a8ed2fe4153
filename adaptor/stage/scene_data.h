/// A scene as plain values, between a file and the stage.
///
/// A reader fills this from a file and checks all of it; only what is whole goes to the stage.
#pragma once

#include "adaptor/stage/flicks.h"
#include "adaptor/stage/stage_node.h"
#include "core/adaptor_interface.h"
#include "util/matrix4.h"
#include "util/mesh.h"

#include <array>
#include <cstddef>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tvw::rgs::stage {

/// Levels of nodes below nodes that a file may have: many functions call themselves once a level.
inline constexpr std::size_t kDeepest = 2000;

inline constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

/// Keys, either as values or as the bytes of a file that outlives this: a long take is then copied
/// once, from the file into the track.
template <class T>
struct KeyData
{
    std::vector<TrackKey<T>> keys; ///< rising times, finite values

    std::string_view times;  ///< Flicks, one for each key; rising
    std::string_view values; ///< `doubles` for each key; finite
    std::size_t doubles = 0; ///< 0: `keys` holds them. 12: a pose without its last row
    [[nodiscard]] bool empty() const noexcept { return keys.empty() && times.empty(); }
};

struct NodeData
{
    NodeKind kind = NodeKind::Helper;
    std::size_t parent = kNone; ///< an earlier node
    std::size_t mesh = kNone;   ///< of `SceneData::meshes`
    std::string name;
    Matrix4 local;
    std::map<std::string, std::string> properties;
    std::vector<Vector3d> points; ///< of a spline
    bool closed = false;
    double fov = 45.0; ///< [degrees]
    double targetDistance = 10.0;
    ViewAngle viewAngle = ViewAngle::Horizontal;
    std::array<float, 3> color{0.6F, 0.6F, 0.6F};
    bool visible = true;
    bool selected = false;
    bool wireframe = false;
    bool alwaysOnTop = false;
    KeyData<Matrix4> pose;
    KeyData<double> fovKeys;
    KeyData<double> targetDistanceKeys;
};

/// What a file tells beside its nodes.
struct SceneSettings
{
    bool known = false; ///< a file of another program says nothing
    double time = 0.0;  ///< [s]
    core::TimeRange range{0.0, 10.0};
    double framesPerSecond = 25.0;
    bool keyMode = false;
};

struct SceneData
{
    std::vector<NodeData> nodes; ///< depth first: a parent stands before its children
    std::vector<CMesh> meshes;
    SceneSettings settings;
    std::string tools;              ///< the tools without nodes, as XML; empty: none
    std::vector<int> toolPlaces;    ///< of each of these among its siblings
    std::vector<std::string> bytes; ///< what the views above look into
};

} // namespace tvw::rgs::stage

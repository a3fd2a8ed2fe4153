/// How far below a point the ground lies, for everything that rolls.
///
/// The ground is a relation of the scene: the surface that the gravity node hangs on, then every
/// surface that hangs on it, in their order; with neither it is the plane y = 0. Three ways of
/// asking stand behind one call and are chosen at the start of a run: a world of Bullet ("Use Fast
/// Ray Cast"), a tree over a stored copy of a surface, or the host's own rays, which alone follow
/// surfaces that move. Points, directions, distances and normals are in world space, metres.
///
/// Between `beginRun` and `endRun` a tick allocates nothing once the longest fan has been cast.
#pragma once

#include "core/contract/interface.h"
#include "util/mesh.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tvw::rgs {

class CGroundTriangleTree;
class GroundSource;

struct GroundRay
{
    Vector3d origin;
    Vector3d direction; ///< of unit length
};

struct GroundHit
{
    double distance = 0.0; ///< along the ray [m]
    Vector3d normal;       ///< of unit length
    bool hit = false;
};

/// The tool's settings that choose and feed the way of asking; saved with the tool.
struct GroundSettings
{
    bool useStaticMesh = true;  ///< "Use Fast Ray Cast"
    bool storeMeshData = false; ///< "Store Ground Mesh Data"
    CMesh storedMesh{};
    Matrix4 storedMatrix{}; ///< world matrix of the surface when the copy was taken
};

class GroundSensor
{
public:
    GroundSensor();
    ~GroundSensor();
    GroundSensor(const GroundSensor&) = delete;
    GroundSensor& operator=(const GroundSensor&) = delete;

    /// What of the ground a start can't use: shown by the caller, who then falls back.
    enum class Problem { None, NoWorld, UnsupportedSurface };

    /// gravityNode: may be null or deleted. bodyLength: scales the built-in plane of the Bullet
    /// world. ownBody: a surface that is the tool's own body is no ground. With UnsupportedSurface
    /// the host's rays are used instead.
    Problem beginRun(CInterface& runtime, CNode* gravityNode, const GroundSettings& settings,
                     double time, double bodyLength, CNode* ownBody);
    void endRun();

    /// The surfaces and their places at the time of the tick [s]; their snapshots are held until
    /// `endTick`. In host mode a surface that is linked or deleted in a run counts from here on.
    void beginTick(double time);
    void endTick();

    /// How many surfaces a ray asks: 0 on the plane, else 1, or one for each in host mode.
    std::size_t surfaceCount() const;
    bool isPlane() const; ///< no surface and no world: y = 0, and no ray is cast

    /// Rays that lie close together, as a wheel's do, against one surface: out[i] answers rays[i];
    /// a hit further than maxLength [m] is none. surface: below `surfaceCount`.
    void castFan(std::size_t surface, std::span<const GroundRay> rays, double maxLength,
                 std::span<GroundHit> out);

    /// One ray of a fan. distance and normal may be null.
    bool castGroundRay(std::size_t surface, const GroundRay& ray, double maxLength,
                       double* distance, Vector3d* normal);

    /// "Store Ground Mesh Data": copies the first surface. Answers an empty text, else what the box
    /// "Error" says, and the settings' flag is off again.
    static std::string storeMesh(CInterface& runtime, CNode* gravityNode, double time,
                                 GroundSettings& settings);

private:
    const CGroundTriangleTree& treeOf(const CMesh& mesh);

    std::unique_ptr<CGroundTriangleTree> tree_; ///< of the last stored copy, for the next run too
    CMesh treeMesh_;                            ///< that copy
    std::vector<std::shared_ptr<const void>> shapes_; ///< of the last run's world, for the next
    std::unique_ptr<GroundSource> source_;            ///< null: no run
};

} // namespace tvw::rgs

#include "plugins/common/ground_bullet_world.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wdouble-promotion"
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
#include <btBulletDynamicsCommon.h>
#pragma GCC diagnostic pop

#include <algorithm>
#include <cmath>

namespace tvw::rgs {

namespace {

static_assert(sizeof(btScalar) == sizeof(double), "link bullet-float64");

constexpr double kWorldEdge = 1000.0; ///< half an edge of the broad phase's box [m]
constexpr double kFriction = 0.5;
constexpr double kRestitution = 0.5;
constexpr int kGroundGroup = 2;
constexpr int kGroundMask = 3;
constexpr double kDefaultGroundEdge = 1000.0; ///< half an edge, in lengths of the body

/// A shape's own indices have 21 bits for the triangle and 10 for the part that it is in.
constexpr std::size_t kTrianglesInPart = std::size_t{1} << 20;

btVector3 toBullet(const Vector3d& v)
{
    return {v.x, v.y, v.z};
}
Vector3d fromBullet(const btVector3& v)
{
    return {v.x(), v.y(), v.z()};
}

bool isFinite(const Vector3d& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

/// No two bodies are ever tested against each other here: without this, each world of each car
/// would begin by touching 9 MB of pools for their contacts.
btDefaultCollisionConstructionInfo withoutContacts()
{
    btDefaultCollisionConstructionInfo info;
    info.m_defaultMaxPersistentManifoldPoolSize = 1;
    info.m_defaultMaxCollisionAlgorithmPoolSize = 1;
    return info;
}

/// A place as Bullet has it: a rotation with translation, a scale of the shape, and what neither
/// can hold worked into the shape's vertices.
struct Split
{
    explicit Split(const Matrix4& place) : rigid(orthonormalise(place)), scale(scaleOf(place))
    {
        const Vector3d x = rigid.axis(0);
        const Vector3d y = rigid.axis(1);
        const Vector3d z = rigid.axis(2);
        constexpr double kSquare = 1e-12; // of the cosine between two axes
        const bool isSkewed = std::abs(dot(x, y)) > kSquare || std::abs(dot(y, z)) > kSquare ||
                              std::abs(dot(z, x)) > kSquare;
        if (isSkewed || scale.x == 0.0 || scale.y == 0.0 || scale.z == 0.0) {
            baked = place;
            setTranslation(baked, {});
            rigid = Matrix4();
            setTranslation(rigid, translationOf(place));
            scale = {1.0, 1.0, 1.0};
        }
    }

    btTransform transform() const
    {
        btTransform out;
        out.setFromOpenGLMatrix(rigid.m);
        return out;
    }

    Matrix4 rigid;
    Vector3d scale;
    Matrix4 baked; ///< goes over the vertices first
};

} // namespace

/// A shape and what it refers to but does not copy. Never changed once made, so that every world on
/// one and the same ground shares it: its tree takes a second for a million triangles.
class GroundBulletWorld::triMeshStorage
{
public:
    /// The living one of the same triangles and scale, else a new one.
    static std::shared_ptr<triMeshStorage> shared(const CMesh& mesh, const Split& place)
    {
        static std::vector<std::weak_ptr<triMeshStorage>> living; // runs are of one thread
        std::erase_if(living, [](const auto& one) { return one.expired(); });
        auto wanted = std::make_shared<triMeshStorage>(mesh, place);
        for (const auto& one : living) {
            if (auto there = one.lock(); there && there->isSameAs(*wanted))
                return there;
        }
        wanted->build();
        living.push_back(wanted);
        return wanted;
    }

    triMeshStorage(const CMesh& mesh, const Split& place) : scale_(place.scale)
    {
        takeVertices(mesh, place.baked);
        takeFaces(mesh);
    }
    triMeshStorage(const triMeshStorage&) = delete;
    triMeshStorage& operator=(const triMeshStorage&) = delete;
    virtual ~triMeshStorage() = default;

    btCollisionShape* shape() { return shape_.get(); } ///< null: no triangle

private:
    struct Vertex
    {
        double x, y, z, pad;
        bool operator==(const Vertex&) const = default;
    };

    bool isSameAs(const triMeshStorage& other) const
    {
        return scale_ == other.scale_ && indices_ == other.indices_ && vertices_ == other.vertices_;
    }

    void build()
    {
        if (indices_.empty())
            return;
        addParts();
        // Before the shape is made: to scale it afterwards would build its tree a second time.
        array_.setScaling(toBullet(scale_));
        shape_ = std::make_unique<btBvhTriangleMeshShape>(&array_, true, true);
        shape_->setLocalScaling(toBullet(scale_));
    }

    void takeVertices(const CMesh& mesh, const Matrix4& baked)
    {
        vertices_.reserve(mesh.vertex.size());
        for (const Vector3d& v : mesh.vertex) {
            const Vector3d p = transformDirection(baked, v);
            vertices_.push_back({p.x, p.y, p.z, 0.0});
        }
    }

    void takeFaces(const CMesh& mesh)
    {
        const auto isKnown = [&](std::int32_t i) {
            return i >= 0 && static_cast<std::size_t>(i) < mesh.vertex.size() &&
                   isFinite(mesh.vertex[i]);
        };
        indices_.reserve(mesh.face.size());
        for (std::size_t i = 0; i + 2 < mesh.face.size(); i += 3) {
            const std::int32_t* const corner = &mesh.face[i];
            if (isKnown(corner[0]) && isKnown(corner[1]) && isKnown(corner[2]))
                indices_.insert(indices_.end(), corner, corner + 3);
        }
    }

    void addParts()
    {
        const std::size_t triangles = indices_.size() / 3;
        for (std::size_t first = 0; first < triangles; first += kTrianglesInPart) {
            btIndexedMesh part;
            part.m_numTriangles = static_cast<int>(std::min(kTrianglesInPart, triangles - first));
            part.m_triangleIndexBase = reinterpret_cast<const unsigned char*>(&indices_[3 * first]);
            part.m_triangleIndexStride = 3 * sizeof(std::int32_t);
            part.m_numVertices = static_cast<int>(vertices_.size());
            part.m_vertexBase = reinterpret_cast<const unsigned char*>(vertices_.data());
            part.m_vertexStride = sizeof(Vertex);
            array_.addIndexedMesh(part, PHY_INTEGER);
        }
    }

    Vector3d scale_;
    btTriangleIndexVertexArray array_;
    std::vector<Vertex> vertices_;
    std::vector<std::int32_t> indices_;
    std::unique_ptr<btBvhTriangleMeshShape> shape_;
};

/// One surface inside the world.
class GroundBulletWorld::CollisionObjects
{
public:
    CollisionObjects(const CMesh& mesh, const Split& place)
        : storage_(triMeshStorage::shared(mesh, place)), motion_(place.transform())
    {
        if (!storage_->shape())
            return;
        btRigidBody::btRigidBodyConstructionInfo info(0.0, &motion_, storage_->shape());
        info.m_friction = kFriction;
        info.m_restitution = kRestitution;
        body_ = std::make_unique<btRigidBody>(info);
        body_->setCollisionFlags(btCollisionObject::CF_KINEMATIC_OBJECT);
        body_->setActivationState(DISABLE_DEACTIVATION);
    }

    btRigidBody* body() { return body_.get(); } ///< null: no triangle
    std::shared_ptr<const void> shape() const { return storage_; }

private:
    std::shared_ptr<triMeshStorage> storage_;
    btDefaultMotionState motion_;
    std::unique_ptr<btRigidBody> body_;
};

class GroundBulletWorld::CPhysicsWorld
{
public:
    explicit CPhysicsWorld(std::size_t surfaces)
        : configuration_(std::make_unique<btDefaultCollisionConfiguration>(withoutContacts())),
          dispatcher_(std::make_unique<btCollisionDispatcher>(configuration_.get())),
          broadphase_(
              std::make_unique<btAxisSweep3>(btVector3(-kWorldEdge, -kWorldEdge, -kWorldEdge),
                                             btVector3(kWorldEdge, kWorldEdge, kWorldEdge),
                                             static_cast<unsigned short>(surfaces))),
          solver_(std::make_unique<btSequentialImpulseConstraintSolver>()),
          world_(std::make_unique<btDiscreteDynamicsWorld>(dispatcher_.get(), broadphase_.get(),
                                                           solver_.get(), configuration_.get())),
          raycaster_(world_.get())
    {
    }
    CPhysicsWorld(const CPhysicsWorld&) = delete;
    CPhysicsWorld& operator=(const CPhysicsWorld&) = delete;

    /// From the outside in.
    ~CPhysicsWorld()
    {
        for (const auto& object : objects_)
            world_->removeRigidBody(object->body());
        objects_.clear();
        world_.reset();
        solver_.reset();
        broadphase_.reset();
        dispatcher_.reset();
        configuration_.reset();
    }

    void add(const CMesh& mesh, const Matrix4& place)
    {
        auto object = std::make_unique<CollisionObjects>(mesh, Split(place));
        if (!object->body())
            return;
        world_->addRigidBody(object->body(), kGroundGroup, kGroundMask);
        objects_.push_back(std::move(object));
    }

    std::vector<std::shared_ptr<const void>> shapes() const
    {
        std::vector<std::shared_ptr<const void>> out;
        for (const auto& object : objects_)
            out.push_back(object->shape());
        return out;
    }

    GroundHit cast(const GroundRay& ray, double maxLength)
    {
        btVehicleRaycaster::btVehicleRaycasterResult result;
        const btVector3 from = toBullet(ray.origin);
        const btVector3 to = toBullet(ray.origin + ray.direction * maxLength);
        if (!raycaster_.castRay(from, to, result))
            return {};
        return {result.m_distFraction * maxLength, fromBullet(result.m_hitNormalInWorld), true};
    }

private:
    std::unique_ptr<btDefaultCollisionConfiguration> configuration_;
    std::unique_ptr<btCollisionDispatcher> dispatcher_;
    std::unique_ptr<btAxisSweep3> broadphase_;
    std::unique_ptr<btSequentialImpulseConstraintSolver> solver_;
    std::unique_ptr<btDiscreteDynamicsWorld> world_;
    btDefaultVehicleRaycaster raycaster_;
    std::vector<std::unique_ptr<CollisionObjects>> objects_;
};

GroundBulletWorld::GroundBulletWorld(std::size_t surfaces)
    : world_(std::make_unique<CPhysicsWorld>(std::clamp<std::size_t>(surfaces, 1, kMostSurfaces)))
{
    addPlace(Matrix4());
}

GroundBulletWorld::~GroundBulletWorld() = default;

void GroundBulletWorld::addSurface(const CMesh& mesh, const Matrix4& place)
{
    world_->add(mesh, place);
}

void GroundBulletWorld::addDefaultGround(double bodyLength)
{
    const double edge = kDefaultGroundEdge * bodyLength;
    CMesh quad;
    quad.vertex = {{edge, 0, edge}, {edge, 0, -edge}, {-edge, 0, -edge}, {-edge, 0, edge}};
    quad.face = {0, 1, 2, 2, 3, 0};
    world_->add(quad, Matrix4());
}

std::vector<std::shared_ptr<const void>> GroundBulletWorld::shapes() const
{
    return world_->shapes();
}

void GroundBulletWorld::castFan(std::size_t, std::span<const GroundRay> rays, double maxLength,
                                std::span<GroundHit> out)
{
    for (std::size_t i = 0; i < rays.size(); ++i)
        out[i] = world_->cast(rays[i], maxLength);
}

} // namespace tvw::rgs

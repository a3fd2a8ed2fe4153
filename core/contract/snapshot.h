/// Views of a node at one time. They come from a pool in the node, cost no allocation once the pool
/// is warm, and must be given back to `CInterface` in the tick in which they were got. [live]
///
/// Matrices are column-major with column vectors (util/matrix4.h); lengths are scene units (metres).
#pragma once

#include "core/contract/extendable.h"
#include "util/matrix4.h"
#include "util/mesh.h"
#include "util/vector3.h"

namespace tvw::rgs {

/// The node's pose at the snapshot's time. A write while the host lays keys lays a key there.
class CSnapshot : public CExtendable
{
public:
    virtual void setLocal(const Matrix4& transform) = 0; ///< relative to the parent
    virtual void getLocal(Matrix4& out) = 0;
    virtual void getGlobal(Matrix4& out) = 0;
    virtual void setGlobal(const Matrix4& transform) = 0;
    virtual double getTime() = 0; ///< [s]
    virtual ~CSnapshot() = default;
};

/// How a node looks in the host's views; has no time.
class CSnapshot_Helper : public CExtendable
{
public:
    virtual void setMesh(const CMesh& mesh) = 0;
    virtual void setColor(float red, float green, float blue) = 0; ///< each 0 to 1
    virtual void setWireframe(bool on) = 0;   ///< first display flag: edges only, else shaded
    virtual void setAlwaysOnTop(bool on) = 0; ///< second display flag: drawn over other objects
    virtual ~CSnapshot_Helper() = default;
};

/// A node with a spline; u runs from 0 at the start of the selected curve to 1 at its end.
class CSnapshot_Shape : public CExtendable
{
public:
    virtual int curveCount() = 0;
    virtual int reserved() { return 0; }
    virtual int selectCurve(int index) = 0; ///< clamps into the curves present; the index taken
    virtual double curveLength() = 0;
    virtual void pointAt(Vector3<double>& out, double u) = 0;
    virtual void tangentAt(Vector3<double>& out, double u) = 0; ///< unit length
    virtual ~CSnapshot_Shape() = default;
};

/// A node with a mesh, in the node's own space.
class CSnapshot_Mesh : public CExtendable
{
public:
    virtual void setMesh(const CMesh& mesh) = 0;
    virtual CMesh getMesh() = 0;

    /// The nearest hit of the ray, false when there is none. direction need not be of unit length;
    /// distance is in units of the node's space, normal of unit length; either may be null.
    virtual bool rayCast(const Vector3<double>& origin, const Vector3<double>& direction,
                         double* distance, Vector3<double>* normal) = 0;
    virtual ~CSnapshot_Mesh() = default;
};

/// A camera's lens at the snapshot's time.
class CSnapshot_Lens : public CExtendable
{
public:
    virtual void setFieldOfView(double degrees) = 0;
    virtual double getFieldOfView() = 0;
    virtual int getFieldOfViewType() = 0; ///< 0 horizontal, 1 vertical, 2 diagonal
    virtual void setFieldOfViewType(int type) = 0;
    virtual void setTargetDistance(double distance) = 0;
    virtual double getTargetDistance() = 0;
    virtual double getTime() = 0; ///< [s]
    virtual void getProjection(Matrix4& out) = 0;
    virtual ~CSnapshot_Lens() = default;
};

} // namespace tvw::rgs

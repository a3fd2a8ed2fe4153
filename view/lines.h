/// The thin things of a picture: splines, frusta, crosses, motion paths.
#pragma once

#include "adaptor/stage/stage.h"
#include "view/gl_objects.h"

#include <array>
#include <vector>

namespace tvw::rgs::view {

class LinePainter
{
public:
    /// Throws as `Renderer` does.
    LinePainter();

    /// Empties it for a picture from this eye. toEye: the rotation of the world into the eye's
    /// space.
    void begin(const Vector3d& eye, const Matrix4& toEye);

    void addSpline(const stage::StageNode& node, double time, const std::array<float, 3>& color);
    void addFrustum(const stage::StageNode& camera, double time);
    void addCross(const stage::StageNode& node, double time); ///< of a node without a shape
    void addPath(const stage::StageNode& node, const stage::Stage& scene, double time);

    void draw(const Matrix4& projection);

private:
    struct Point
    {
        std::array<float, 3> position;
        std::array<float, 4> color;
    };
    using Color = std::array<float, 4>;

    [[nodiscard]] Point pointAt(const Vector3d& world, const Color& color) const;
    void add(const Vector3d& from, const Vector3d& to, const Color& color);
    void upload(const std::vector<Point>& points);

    GlProgram program_;
    GlVertexArray array_;
    GlBuffer buffer_;
    Vector3d eye_;
    Matrix4 toEye_;
    std::vector<Point> lines_; ///< in pairs
    std::vector<Point> dots_;
};

} // namespace tvw::rgs::view

#include "view/lines.h"

#include "view/lens.h"
#include "view/shaders.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tvw::rgs::view {

namespace {

using Color = std::array<float, 4>;

constexpr Color kSelected{1.0F, 0.65F, 0.25F, 1.0F};
constexpr Color kCamera{0.55F, 0.70F, 0.85F, 1.0F};
constexpr Color kEmpty{0.75F, 0.75F, 0.75F, 1.0F};
constexpr Color kPast{0.95F, 0.62F, 0.23F, 1.0F};
constexpr Color kFuture{0.36F, 0.66F, 0.92F, 1.0F};
constexpr Color kKey{0.96F, 0.96F, 0.96F, 1.0F};

} // namespace

LinePainter::LinePainter()
    : program_(makeProgram(shader::kLineVertex, shader::kLineFragment)), array_(makeVertexArray()),
      buffer_(makeBuffer())
{
}

void LinePainter::begin(const Vector3d& eye, const Matrix4& toEye)
{
    eye_ = eye;
    toEye_ = toEye;
    lines_.clear();
    dots_.clear();
}

LinePainter::Point LinePainter::pointAt(const Vector3d& world, const Color& color) const
{
    const Vector3d p = transformDirection(toEye_, world - eye_);
    return {{static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z)}, color};
}

void LinePainter::add(const Vector3d& from, const Vector3d& to, const Color& color)
{
    lines_.push_back(pointAt(from, color));
    lines_.push_back(pointAt(to, color));
}

void LinePainter::addSpline(const stage::StageNode& node, double time,
                            const std::array<float, 3>& color)
{
    const stage::SplineCurve& curve = *node.spline();
    const Color own{color[0], color[1], color[2], 1.0F};
    const Color& shown = node.state().selected ? kSelected : own;
    const Matrix4 world = node.world(time);
    const auto pieces = static_cast<int>(std::min<std::size_t>(24 * curve.points().size(), 4096));
    Vector3d before = transformPoint(world, curve.pointAt(0.0));
    for (int i = 1; i <= pieces; ++i) {
        const double u = static_cast<double>(i) / pieces;
        // A closed curve takes 1 round to its start, which ends it where it began.
        const Vector3d here = transformPoint(world, curve.pointAt(u));
        add(before, here, shown);
        before = here;
    }
    for (const Vector3d& point : curve.points())
        dots_.push_back(pointAt(transformPoint(world, point), shown));
}

void LinePainter::addFrustum(const stage::StageNode& camera, double time)
{
    const Lens lens = lensOf(camera, time);
    const Vector3d eye = translationOf(lens.world);
    constexpr double kAspect = 16.0 / 9.0;
    const double reach = std::clamp(camera.targetDistance(time), 0.5, 50.0);
    const Color& color = camera.state().selected ? kSelected : kCamera;
    std::array<Vector3d, 4> corners;
    for (int i = 0; i < 4; ++i) {
        const double x = i == 0 || i == 3 ? -1.0 : 1.0;
        const double y = i < 2 ? -1.0 : 1.0;
        corners[i] = eye + rayThrough(lens, kAspect, x, y) * reach;
    }
    for (int i = 0; i < 4; ++i) {
        add(eye, corners[i], color);
        add(corners[i], corners[(i + 1) % 4], color);
    }
}

void LinePainter::addCross(const stage::StageNode& node, double time)
{
    constexpr double kArm = 0.25; // [m]
    const Matrix4 world = orthonormalise(node.world(time));
    const Vector3d centre = translationOf(world);
    const Color& color = node.state().selected ? kSelected : kEmpty;
    for (int c = 0; c < 3; ++c)
        add(centre - world.axis(c) * kArm, centre + world.axis(c) * kArm, color);
}

void LinePainter::addPath(const stage::StageNode& node, const stage::Stage& scene, double time)
{
    const core::TimeRange range = scene.range();
    const double step = scene.timeScale() / scene.hostFramesPerSecond();
    constexpr int kMostFrames = 20000;
    const int frames =
        static_cast<int>(std::clamp((range.end - range.start) / step, 0.0, double{kMostFrames}));
    Vector3d before = translationOf(node.world(range.start));
    for (int i = 1; i <= frames; ++i) {
        const double t = range.start + i * step;
        const Vector3d here = translationOf(node.world(t));
        add(before, here, t <= time ? kPast : kFuture);
        before = here;
    }
    for (const double t : node.poseKeyTimes()) {
        if (t >= range.start && t <= range.end && dots_.size() < std::size_t{kMostFrames})
            dots_.push_back(pointAt(translationOf(node.world(t)), kKey));
    }
}

void LinePainter::upload(const std::vector<Point>& points)
{
    glBindVertexArray(array_.get());
    glBindBuffer(GL_ARRAY_BUFFER, buffer_.get());
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(points.size() * sizeof(Point)),
                 points.data(), GL_STREAM_DRAW);
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, sizeof(Point), nullptr);
    glEnableVertexAttribArray(1);
    glVertexAttribPointer(1, 4, GL_FLOAT, GL_FALSE, sizeof(Point),
                          reinterpret_cast<const void*>(offsetof(Point, color)));
}

void LinePainter::draw(const Matrix4& projection)
{
    glUseProgram(program_.get());
    std::array<float, 16> matrix;
    std::transform(projection.m, projection.m + 16, matrix.begin(),
                   [](double v) { return static_cast<float>(v); });
    glUniformMatrix4fv(glGetUniformLocation(program_.get(), "projection"), 1, GL_FALSE,
                       matrix.data());
    if (!lines_.empty()) {
        upload(lines_);
        glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(lines_.size()));
    }
    if (!dots_.empty()) {
        glEnable(GL_PROGRAM_POINT_SIZE);
        upload(dots_);
        glDrawArrays(GL_POINTS, 0, static_cast<GLsizei>(dots_.size()));
        glDisable(GL_PROGRAM_POINT_SIZE);
    }
}

} // namespace tvw::rgs::view

#include "view/playblast.h"

#include "view/movie_writer.h"
#include "view/offscreen.h"
#include "view/orbit_camera.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace tvw::rgs::view {

namespace {

constexpr int kLeastSize = 16;
constexpr int kMostSize = 8192;

/// Where the eye is at each frame.
class Eye
{
public:
    static Result<Eye> make(const stage::Stage& scene, const Playblast& what, double start)
    {
        Eye out;
        if (!what.camera.empty()) {
            out.node_ = scene.find(what.camera);
            if (!out.node_ || !out.node_->hasLens())
                return Result<Eye>::failure("there is no camera named \"" + what.camera + "\"");
        } else if (what.lens) {
            out.lens_ = *what.lens;
        } else {
            out.node_ = followCamera(scene);
            if (!out.node_)
                out.lens_ = overview(scene, start);
        }
        return out;
    }

    [[nodiscard]] Lens at(double time) const { return node_ ? lensOf(*node_, time) : lens_; }
    [[nodiscard]] const stage::StageNode* node() const { return node_; }

private:
    static Lens overview(const stage::Stage& scene, double time)
    {
        Box box;
        scene.forEachNode([&](stage::StageNode& node) {
            if (node.state().visible)
                addNode(box, node, time);
        });
        OrbitCamera camera;
        camera.frame(box);
        return camera.lens();
    }

    const stage::StageNode* node_ = nullptr;
    Lens lens_;
};

Options optionsOf(const Playblast& what, const Eye& eye, const Lens& lens, double time)
{
    constexpr double kAhead = 9.0; // [m], where a camera of this system usually has its subject
    Options out;
    out.grid = what.grid;
    out.cameras = false;
    out.splines = false;
    out.eye = eye.node();
    out.time = time;
    out.focusDistance = kAhead;
    out.focus = translationOf(lens.world) - orthonormalise(lens.world).axis(2) * kAhead;
    return out;
}

Status drawAll(stage::Stage& scene, const Playblast& what, const Eye& eye,
               const core::TimeRange& range, MovieWriter& writer)
{
    Renderer renderer;
    PictureMaker maker(what.width, what.height, what.samples);
    const double rate = scene.getFramesPerSecond();
    const auto first = static_cast<int>(std::llround(range.start * rate));
    const bool one = what.output.size() > 4 && what.output.ends_with(".png");
    const int last = one ? first : static_cast<int>(std::llround(range.end * rate));
    for (int frame = first; frame <= last; ++frame) {
        const double time = frame / rate;
        const Lens lens = eye.at(time);
        if (Status done = writer.add(
                maker.draw(renderer, scene, lens, optionsOf(what, eye, lens, time)), frame);
            !done)
            return done;
        if (what.progress && !what.progress((frame - first + 1.0) / (last - first + 1.0)))
            return Status::failure("cancelled");
    }
    return writer.finish();
}

} // namespace

stage::StageNode* followCamera(const stage::Stage& scene)
{
    stage::StageNode* found = nullptr;
    scene.forEachNode([&](stage::StageNode& node) {
        if (!found && node.hasLens() && node.name().ends_with("FollowCam"))
            found = &node;
    });
    return found;
}

Status playblast(stage::Stage& scene, const Playblast& what)
{
    const auto fits = [](int size) { return size >= kLeastSize && size <= kMostSize; };
    if (!fits(what.width) || !fits(what.height))
        return Status::failure("a picture is " + std::to_string(kLeastSize) + " to " +
                               std::to_string(kMostSize) + " pixels wide and high");
    const core::TimeRange range = what.range.value_or(scene.range());
    if (!(range.end >= range.start))
        return Status::failure("the range ends before it starts");
    const auto eye = Eye::make(scene, what, range.start);
    if (!eye)
        return Status::failure(eye.reason());
    const auto context = OffscreenContext::make();
    if (!context)
        return Status::failure(context.reason());
    auto writer =
        MovieWriter::make(what.output, what.width, what.height, scene.getFramesPerSecond());
    if (!writer)
        return Status::failure(writer.reason());
    try {
        return drawAll(scene, what, *eye, range, **writer);
    } catch (const std::runtime_error& error) {
        return Status::failure(error.what());
    }
}

} // namespace tvw::rgs::view

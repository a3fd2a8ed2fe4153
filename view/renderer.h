/// Draws a scene of the stage with OpenGL 3.3 (core profile).
///
/// The context that is current in the constructor must be current in every call, the destructor
/// too. Positions go to the graphics card relative to the eye, so that a scene far from the origin
/// does not shake. Colours are sRGB.
#pragma once

#include "adaptor/stage/stage.h"
#include "view/lens.h"

#include <array>
#include <functional>
#include <memory>
#include <vector>

namespace tvw::rgs::view {

/// What is shown beside the nodes' meshes.
struct Options
{
    bool grid = true;
    bool helpers = true; ///< the nodes of tools, which show and move the rig
    bool shadows = true;
    bool cameras = true; ///< shapes of cameras, and the frustum of a selected one
    bool splines = true;
    const stage::StageNode* pathOf = nullptr; ///< its motion path over the range; null: none
    const stage::StageNode* eye = nullptr;    ///< a camera that is looked through: not drawn itself
    double time = 0.0;                        ///< [s]
    Vector3d focus;                           ///< shadows are sharpest here
    double focusDistance = 12.0;              ///< [m], from the eye
};

/// A part of a framebuffer.
struct Viewport
{
    int x = 0, y = 0, width = 1, height = 1;
};

class Renderer
{
public:
    /// Throws std::runtime_error when the context can't do what is needed, with its own words.
    Renderer();
    ~Renderer();
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    /// Into the framebuffer that is bound.
    void draw(const stage::Stage& scene, const Lens& lens, const Viewport& viewport,
              const Options& options);

    /// The node in front at a place of the picture (from the lower left, pixels); null: none. Draws
    /// into a framebuffer of its own.
    [[nodiscard]] stage::StageNode* pick(const stage::Stage& scene, const Lens& lens,
                                         const Viewport& viewport, const Options& options, int x,
                                         int y);

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace tvw::rgs::view

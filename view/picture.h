/// Pictures drawn into memory.
#pragma once

#include "view/gl_objects.h"
#include "view/renderer.h"

#include <cstdint>
#include <vector>

namespace tvw::rgs::view {

/// Rows from the top, four bytes a pixel: red, green, blue, 255.
struct Picture
{
    int width = 0, height = 0;
    std::vector<std::uint8_t> rgba;
};

/// Draws pictures of one size. Needs a current context as `Renderer` does.
class PictureMaker
{
public:
    /// samples: of each pixel, held to what the driver can do; 0: no smoothing. Throws as
    /// `GlTarget` does.
    PictureMaker(int width, int height, int samples = 4);

    /// Until the next call.
    const Picture& draw(Renderer& renderer, const stage::Stage& scene, const Lens& lens,
                        const Options& options);

private:
    GlTarget drawn_;
    GlTarget resolved_;
    Picture picture_;
    std::vector<std::uint8_t> rows_; ///< from the bottom, as the card gives them
};

} // namespace tvw::rgs::view

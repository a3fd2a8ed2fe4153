#include "view/picture.h"

#include <algorithm>
#include <cstring>

namespace tvw::rgs::view {

namespace {

int heldSamples(int wanted)
{
    GLint most = 0;
    glGetIntegerv(GL_MAX_SAMPLES, &most);
    return std::clamp(wanted, 0, static_cast<int>(most));
}

} // namespace

PictureMaker::PictureMaker(int width, int height, int samples)
    : drawn_(width, height, heldSamples(samples)), resolved_(width, height, 0)
{
    picture_ = {width, height, std::vector<std::uint8_t>(std::size_t{4} * width * height)};
    rows_.resize(picture_.rgba.size());
}

const Picture& PictureMaker::draw(Renderer& renderer, const stage::Stage& scene, const Lens& lens,
                                  const Options& options)
{
    const int width = picture_.width;
    const int height = picture_.height;
    glBindFramebuffer(GL_FRAMEBUFFER, drawn_.framebuffer());
    renderer.draw(scene, lens, {0, 0, width, height}, options);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, drawn_.framebuffer());
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, resolved_.framebuffer());
    glBlitFramebuffer(0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    glBindFramebuffer(GL_FRAMEBUFFER, resolved_.framebuffer());
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, rows_.data());
    const std::size_t row = std::size_t{4} * width;
    for (int y = 0; y < height; ++y)
        std::memcpy(&picture_.rgba[y * row], &rows_[(height - 1 - y) * row], row);
    return picture_;
}

} // namespace tvw::rgs::view

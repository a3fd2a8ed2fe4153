/// OpenGL with no window, no display and no graphics card: Mesa's surfaceless EGL platform.
#pragma once

#include "util/result.h"

#include <memory>

namespace tvw::rgs::view {

/// Current in the thread that made it until it goes.
class OffscreenContext
{
public:
    /// The reason when this machine has no such platform.
    static Result<std::unique_ptr<OffscreenContext>> make();
    ~OffscreenContext();
    OffscreenContext(const OffscreenContext&) = delete;
    OffscreenContext& operator=(const OffscreenContext&) = delete;

private:
    OffscreenContext() = default;

    void* display_ = nullptr;
    void* context_ = nullptr;
};

} // namespace tvw::rgs::view

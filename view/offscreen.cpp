#include "view/offscreen.h"

#include <epoxy/egl.h>
#include <string>

namespace tvw::rgs::view {

namespace {

EGLDisplay surfacelessDisplay()
{
    if (!epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_MESA_platform_surfaceless"))
        return EGL_NO_DISPLAY;
    return eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr);
}

EGLContext makeContext(EGLDisplay display)
{
    if (!eglBindAPI(EGL_OPENGL_API))
        return EGL_NO_CONTEXT;
    const EGLint wanted[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_SURFACE_TYPE, 0, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint found = 0;
    eglChooseConfig(display, wanted, &config, 1, &found);
    const EGLint version[] = {EGL_CONTEXT_MAJOR_VERSION,
                              3,
                              EGL_CONTEXT_MINOR_VERSION,
                              3,
                              EGL_CONTEXT_OPENGL_PROFILE_MASK,
                              EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                              EGL_NONE};
    return eglCreateContext(display, found > 0 ? config : nullptr, EGL_NO_CONTEXT, version);
}

} // namespace

Result<std::unique_ptr<OffscreenContext>> OffscreenContext::make()
{
    using Made = Result<std::unique_ptr<OffscreenContext>>;
    const EGLDisplay display = surfacelessDisplay();
    if (display == EGL_NO_DISPLAY || !eglInitialize(display, nullptr, nullptr))
        return Made::failure("no OpenGL without a window: EGL has no surfaceless platform here "
                             "(package libegl-mesa0)");
    std::unique_ptr<OffscreenContext> out(new OffscreenContext);
    out->display_ = display;
    out->context_ = makeContext(display);
    if (out->context_ == EGL_NO_CONTEXT ||
        !eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, out->context_))
        return Made::failure("no OpenGL 3.3 without a window: EGL answers " +
                             std::to_string(eglGetError()));
    return Made(std::move(out));
}

OffscreenContext::~OffscreenContext()
{
    eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (context_ != EGL_NO_CONTEXT)
        eglDestroyContext(display_, context_);
    eglTerminate(display_);
}

} // namespace tvw::rgs::view

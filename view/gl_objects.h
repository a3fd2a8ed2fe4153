/// Owners of OpenGL's names. All of them need the context current in which they were made, at their
/// end too.
#pragma once

#include <cstddef>
#include <epoxy/gl.h>
#include <string>
#include <utility>

namespace tvw::rgs::view {

/// One name and what deletes it.
template <void (*Delete)(GLuint)>
class GlName
{
public:
    GlName() = default;
    explicit GlName(GLuint name) : name_(name) {}
    GlName(GlName&& other) noexcept : name_(std::exchange(other.name_, 0)) {}
    GlName& operator=(GlName&& other) noexcept
    {
        std::swap(name_, other.name_);
        return *this;
    }
    ~GlName()
    {
        if (name_ != 0)
            Delete(name_);
    }

    [[nodiscard]] GLuint get() const { return name_; }
    explicit operator bool() const { return name_ != 0; }

private:
    GLuint name_ = 0;
};

inline void deleteBuffer(GLuint name)
{
    glDeleteBuffers(1, &name);
}
inline void deleteVertexArray(GLuint name)
{
    glDeleteVertexArrays(1, &name);
}
inline void deleteProgram(GLuint name)
{
    glDeleteProgram(name);
}
inline void deleteFramebuffer(GLuint name)
{
    glDeleteFramebuffers(1, &name);
}
inline void deleteRenderbuffer(GLuint name)
{
    glDeleteRenderbuffers(1, &name);
}
inline void deleteTexture(GLuint name)
{
    glDeleteTextures(1, &name);
}

using GlBuffer = GlName<&deleteBuffer>;
using GlVertexArray = GlName<&deleteVertexArray>;
using GlProgram = GlName<&deleteProgram>;
using GlFramebuffer = GlName<&deleteFramebuffer>;
using GlRenderbuffer = GlName<&deleteRenderbuffer>;
using GlTexture = GlName<&deleteTexture>;

[[nodiscard]] GlBuffer makeBuffer();
[[nodiscard]] GlVertexArray makeVertexArray();

/// Throws std::runtime_error with the compiler's text.
[[nodiscard]] GlProgram makeProgram(const char* vertexSource, const char* fragmentSource);

/// A picture to draw into, with depth. samples: 0 for none.
class GlTarget
{
public:
    /// Throws std::runtime_error when the driver takes no such size.
    GlTarget(int width, int height, int samples);

    [[nodiscard]] GLuint framebuffer() const { return framebuffer_.get(); }
    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }

private:
    int width_, height_;
    GlFramebuffer framebuffer_;
    GlRenderbuffer color_, depth_;
};

} // namespace tvw::rgs::view

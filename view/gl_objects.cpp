#include "view/gl_objects.h"

#include <stdexcept>

namespace tvw::rgs::view {

namespace {

GLuint compile(GLenum kind, const char* source)
{
    const GLuint shader = glCreateShader(kind);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    GLint done = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &done);
    if (done == 0) {
        std::string text(2048, '\0');
        GLsizei length = 0;
        glGetShaderInfoLog(shader, static_cast<GLsizei>(text.size()), &length, text.data());
        text.resize(static_cast<std::size_t>(length));
        glDeleteShader(shader);
        throw std::runtime_error("the graphics driver refuses a shader: " + text);
    }
    return shader;
}

GlRenderbuffer makeStorage(GLenum format, int width, int height, int samples)
{
    GLuint name = 0;
    glGenRenderbuffers(1, &name);
    glBindRenderbuffer(GL_RENDERBUFFER, name);
    glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, format, width, height);
    return GlRenderbuffer(name);
}

} // namespace

GlBuffer makeBuffer()
{
    GLuint name = 0;
    glGenBuffers(1, &name);
    return GlBuffer(name);
}

GlVertexArray makeVertexArray()
{
    GLuint name = 0;
    glGenVertexArrays(1, &name);
    return GlVertexArray(name);
}

GlProgram makeProgram(const char* vertexSource, const char* fragmentSource)
{
    const GLuint vertex = compile(GL_VERTEX_SHADER, vertexSource);
    const GLuint fragment = compile(GL_FRAGMENT_SHADER, fragmentSource);
    GlProgram program(glCreateProgram());
    glAttachShader(program.get(), vertex);
    glAttachShader(program.get(), fragment);
    glLinkProgram(program.get());
    glDeleteShader(vertex);
    glDeleteShader(fragment);
    GLint done = 0;
    glGetProgramiv(program.get(), GL_LINK_STATUS, &done);
    if (done == 0)
        throw std::runtime_error("the graphics driver can't link a shader");
    return program;
}

GlTarget::GlTarget(int width, int height, int samples) : width_(width), height_(height)
{
    color_ = makeStorage(GL_RGBA8, width, height, samples);
    depth_ = makeStorage(GL_DEPTH_COMPONENT24, width, height, samples);
    GLuint name = 0;
    glGenFramebuffers(1, &name);
    framebuffer_ = GlFramebuffer(name);
    glBindFramebuffer(GL_FRAMEBUFFER, name);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, color_.get());
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, depth_.get());
    if (glCheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE)
        throw std::runtime_error("the graphics driver can't draw a picture of " +
                                 std::to_string(width) + " x " + std::to_string(height));
}

} // namespace tvw::rgs::view

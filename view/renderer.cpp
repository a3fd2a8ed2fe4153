#include "view/renderer.h"

#include "view/gl_objects.h"
#include "view/lines.h"
#include "view/shaded_mesh.h"
#include "view/shaders.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>
#include <string>
#include <unordered_map>

namespace tvw::rgs::view {

namespace {

constexpr int kShadowSize = 2048; ///< [pixels]
constexpr std::array<float, 3> kSplineColor{0.85F, 0.85F, 0.55F};

using Floats16 = std::array<float, 16>;

Floats16 toFloats(const Matrix4& m)
{
    Floats16 out;
    std::transform(m.m, m.m + 16, out.begin(), [](double v) { return static_cast<float>(v); });
    return out;
}

/// What one node sends to the card.
struct Instance
{
    Floats16 model;
    std::array<float, 4> color;
    std::array<float, 4> mark;
};

struct Item
{
    const stage::StageMesh* mesh;
    stage::StageNode* node;
    Instance instance;
    bool wireframe;
    bool onTop;
    bool casts;
};

/// A mesh on the card.
struct Buffers
{
    std::weak_ptr<const stage::StageMesh> source;
    GlVertexArray array;
    GlBuffer corners, triangles, instances;
    GLsizei count = 0; ///< of indices
};

/// The number as four bytes of a colour.
std::array<float, 4> markOf(std::size_t number)
{
    std::array<float, 4> out{};
    for (int i = 0; i < 4; ++i)
        out[i] = static_cast<float>(number >> (8 * i) & 0xFF) / 255.0F;
    return out;
}

} // namespace

class Renderer::Implementation
{
public:
    Implementation()
    {
        if (epoxy_gl_version() < 33)
            throw std::runtime_error("the 3D view needs OpenGL 3.3; the driver offers " +
                                     std::to_string(epoxy_gl_version() / 10) + "." +
                                     std::to_string(epoxy_gl_version() % 10));
        mesh_ = makeProgram(shader::kMeshVertex, shader::kMeshFragment);
        depth_ = makeProgram(shader::kMeshVertex, shader::kDepthFragment);
        back_ = makeProgram(shader::kBackVertex, shader::kBackFragment);
        grid_ = makeProgram(shader::kGridVertex, shader::kGridFragment);
        empty_ = makeVertexArray();
    }

    void draw(const stage::Stage& scene, const Lens& lens, const Viewport& viewport,
              const Options& options)
    {
        GLint target = 0;
        glGetIntegerv(GL_FRAMEBUFFER_BINDING, &target);
        setUp(lens, viewport, options);
        gather(scene, options);
        if (options.shadows)
            drawShadowMap(options);
        glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(target));
        begin(viewport);
        drawBackground();
        if (options.grid)
            drawGrid(options);
        drawItems(options.shadows, false);
        drawLines(scene, lens, options);
    }

    stage::StageNode* pick(const stage::Stage& scene, const Lens& lens, const Viewport& viewport,
                           const Options& options, int x, int y)
    {
        GLint before = 0;
        glGetIntegerv(GL_FRAMEBUFFER_BINDING, &before);
        setUp(lens, viewport, options);
        gather(scene, options);
        const GlTarget target(viewport.width, viewport.height, 0);
        begin({0, 0, viewport.width, viewport.height});
        glEnable(GL_SCISSOR_TEST);
        glScissor(x, y, 1, 1);
        drawItems(false, true);
        glDisable(GL_SCISSOR_TEST);
        std::array<unsigned char, 4> mark{};
        glReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, mark.data());
        glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(before));
        const std::size_t number =
            mark[0] | mark[1] << 8 | mark[2] << 16 | std::size_t{mark[3]} << 24;
        return number == 0 || number > items_.size() ? nullptr : numbered_[number - 1];
    }

private:
    void setUp(const Lens& lens, const Viewport& viewport, const Options& options)
    {
        const double aspect = static_cast<double>(viewport.width) / std::max(viewport.height, 1);
        const Matrix4 world = orthonormalise(lens.world);
        eye_ = translationOf(world);
        Matrix4 turned = world;
        setTranslation(turned, {});
        toEye_ = inverse(turned);
        const double nearest = std::clamp(options.focusDistance * 0.01, 0.02, 1.0);
        projection_ = perspective(verticalFov(lens, aspect), aspect, nearest, nearest * 100000.0);
    }

    /// Into the eye's space, in double precision.
    [[nodiscard]] Matrix4 seen(const Matrix4& world) const
    {
        Matrix4 moved = world;
        setTranslation(moved, translationOf(world) - eye_);
        return toEye_ * moved;
    }

    void gather(const stage::Stage& scene, const Options& options)
    {
        items_.clear();
        numbered_.clear();
        scene.forEachNode([&](stage::StageNode& node) { addItem(node, options); });
        std::stable_sort(items_.begin(), items_.end(), [](const Item& a, const Item& b) {
            return std::tie(a.onTop, a.wireframe, a.mesh) < std::tie(b.onTop, b.wireframe, b.mesh);
        });
        std::erase_if(meshes_, [](const auto& entry) { return entry.second.source.expired(); });
    }

    void addItem(stage::StageNode& node, const Options& options)
    {
        const stage::NodeState& state = node.state();
        const bool isOfTool = !node.handles().empty();
        if (!state.visible || !state.mesh || state.mesh->mesh().face.empty() ||
            &node == options.eye)
            return;
        if ((isOfTool && !options.helpers) || (node.hasLens() && !options.cameras))
            return;
        numbered_.push_back(&node);
        const float highlight = state.selected ? 0.35F : 0.0F;
        items_.push_back({.mesh = state.mesh.get(),
                          .node = &node,
                          .instance = {toFloats(seen(node.world(options.time))),
                                       {state.color[0], state.color[1], state.color[2], highlight},
                                       markOf(numbered_.size())},
                          .wireframe = state.wireframe,
                          .onTop = state.alwaysOnTop,
                          .casts = !node.hasLens() && !state.wireframe});
    }

    Buffers& buffersOf(const std::shared_ptr<const stage::StageMesh>& mesh)
    {
        Buffers& out = meshes_[mesh.get()];
        if (out.count != 0 && !out.source.expired())
            return out;
        out = {};
        out.source = mesh;
        const ShadedMesh shaded = shade(mesh->mesh());
        out.array = makeVertexArray();
        out.corners = makeBuffer();
        out.triangles = makeBuffer();
        out.instances = makeBuffer();
        out.count = static_cast<GLsizei>(shaded.triangles.size());
        glBindVertexArray(out.array.get());
        glBindBuffer(GL_ARRAY_BUFFER, out.corners.get());
        glBufferData(GL_ARRAY_BUFFER,
                     static_cast<GLsizeiptr>(shaded.corners.size() * sizeof(ShadedMesh::Corner)),
                     shaded.corners.data(), GL_STATIC_DRAW);
        attribute(0, 3, sizeof(ShadedMesh::Corner), offsetof(ShadedMesh::Corner, position), 0);
        attribute(1, 3, sizeof(ShadedMesh::Corner), offsetof(ShadedMesh::Corner, normal), 0);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, out.triangles.get());
        glBufferData(GL_ELEMENT_ARRAY_BUFFER,
                     static_cast<GLsizeiptr>(shaded.triangles.size() * sizeof(std::uint32_t)),
                     shaded.triangles.data(), GL_STATIC_DRAW);
        glBindBuffer(GL_ARRAY_BUFFER, out.instances.get());
        for (int column = 0; column < 4; ++column)
            attribute(2 + column, 4, sizeof(Instance), offsetof(Instance, model) + 16 * column, 1);
        attribute(6, 4, sizeof(Instance), offsetof(Instance, color), 1);
        attribute(7, 4, sizeof(Instance), offsetof(Instance, mark), 1);
        return out;
    }

    static void attribute(int index, int size, std::size_t stride, std::size_t offset, int divisor)
    {
        const auto i = static_cast<GLuint>(index);
        glEnableVertexAttribArray(i);
        glVertexAttribPointer(i, size, GL_FLOAT, GL_FALSE, static_cast<GLsizei>(stride),
                              reinterpret_cast<const void*>(offset));
        glVertexAttribDivisor(i, static_cast<GLuint>(divisor));
    }

    static void begin(const Viewport& viewport)
    {
        glViewport(viewport.x, viewport.y, viewport.width, viewport.height);
        glDisable(GL_CULL_FACE);
        glDisable(GL_BLEND);
        glDisable(GL_FRAMEBUFFER_SRGB);
        glEnable(GL_DEPTH_TEST);
        glDepthFunc(GL_LEQUAL);
        glDepthMask(GL_TRUE);
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    }

    void drawBackground()
    {
        glUseProgram(back_.get());
        glBindVertexArray(empty_.get());
        glDepthMask(GL_FALSE);
        glDrawArrays(GL_TRIANGLES, 0, 3);
        glDepthMask(GL_TRUE);
    }

    void drawGrid(const Options& options)
    {
        // A line every metre from close by, every ten from far away.
        const double height = std::max(std::abs(eye_.y), options.focusDistance * 0.3);
        const double spacing = std::pow(10.0, std::floor(std::log10(std::max(height, 0.1) / 2.0)));
        const double reach = std::max(60.0 * spacing, 8.0 * height);
        glUseProgram(grid_.get());
        glBindVertexArray(empty_.get());
        set(grid_, "projection", projection_);
        const Floats16 turn = toFloats(toEye_);
        const std::array<float, 9> rotation{turn[0], turn[1], turn[2], turn[4], turn[5],
                                            turn[6], turn[8], turn[9], turn[10]};
        glUniformMatrix3fv(at(grid_, "toEye"), 1, GL_FALSE, rotation.data());
        set(grid_, "eye", eye_);
        const double period = 10.0 * spacing;
        glUniform2f(at(grid_, "phase"), static_cast<float>(std::fmod(eye_.x, period)),
                    static_cast<float>(std::fmod(eye_.z, period)));
        glUniform1f(at(grid_, "spacing"), static_cast<float>(spacing));
        glUniform1f(at(grid_, "reach"), static_cast<float>(reach));
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glEnable(GL_POLYGON_OFFSET_FILL);
        glPolygonOffset(1.0F, 2.0F); // a floor at the same height hides it
        glDepthMask(GL_FALSE);
        glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
        glDepthMask(GL_TRUE);
        glDisable(GL_POLYGON_OFFSET_FILL);
        glDisable(GL_BLEND);
    }

    void drawShadowMap(const Options& options)
    {
        if (!shadowTarget_)
            makeShadowMap();
        // A box round what is looked at, seen from the sun.
        const double reach = std::clamp(options.focusDistance * 1.6, 6.0, 250.0);
        const Vector3d back = sun();
        const Vector3d right = normalise(cross(Vector3d{0, 1, 0}, back));
        Matrix4 view;
        view.setAxis(0, right);
        view.setAxis(1, cross(back, right));
        view.setAxis(2, back);
        Matrix4 toSun = inverse(view);
        setTranslation(toSun, transformDirection(toSun, eye_ - options.focus));
        Matrix4 box;
        box.m[0] = box.m[5] = 1.0 / reach;
        box.m[10] = -1.0 / (6.0 * reach);
        Matrix4 fromEye = inverse(toEye_);
        toShadow_ = box * toSun * fromEye;

        glBindFramebuffer(GL_FRAMEBUFFER, shadowTarget_.get());
        glViewport(0, 0, kShadowSize, kShadowSize);
        glEnable(GL_DEPTH_TEST);
        glDepthMask(GL_TRUE);
        glClear(GL_DEPTH_BUFFER_BIT);
        glUseProgram(depth_.get());
        set(depth_, "projection", toShadow_);
        set(depth_, "toShadow", toShadow_);
        forEachBatch([&](const Item& first, GLsizei count, Buffers& buffers) {
            if (first.casts)
                glDrawElementsInstanced(GL_TRIANGLES, buffers.count, GL_UNSIGNED_INT, nullptr,
                                        count);
        });
    }

    void makeShadowMap()
    {
        GLuint name = 0;
        glGenTextures(1, &name);
        shadowMap_ = GlTexture(name);
        glBindTexture(GL_TEXTURE_2D, name);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_DEPTH_COMPONENT24, kShadowSize, kShadowSize, 0,
                     GL_DEPTH_COMPONENT, GL_UNSIGNED_INT, nullptr);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_COMPARE_MODE, GL_COMPARE_REF_TO_TEXTURE);
        glGenFramebuffers(1, &name);
        shadowTarget_ = GlFramebuffer(name);
        glBindFramebuffer(GL_FRAMEBUFFER, name);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_TEXTURE_2D, shadowMap_.get(),
                               0);
        glDrawBuffer(GL_NONE);
        glReadBuffer(GL_NONE);
    }

    void drawItems(bool shadowed, bool numbers)
    {
        glUseProgram(mesh_.get());
        set(mesh_, "projection", projection_);
        set(mesh_, "toShadow", toShadow_);
        set(mesh_, "sun", transformDirection(toEye_, sun()));
        set(mesh_, "up", toEye_.axis(1));
        glUniform1i(at(mesh_, "shadowed"), shadowed ? 1 : 0);
        glUniform1i(at(mesh_, "numbers"), numbers ? 1 : 0);
        glUniform1i(at(mesh_, "shadowMap"), 0);
        if (shadowed) {
            glActiveTexture(GL_TEXTURE0);
            glBindTexture(GL_TEXTURE_2D, shadowMap_.get());
        }
        bool cleared = false;
        forEachBatch([&](const Item& first, GLsizei count, Buffers& buffers) {
            if (first.onTop && !cleared) { // these come last
                glClear(GL_DEPTH_BUFFER_BIT);
                cleared = true;
            }
            glUniform1i(at(mesh_, "lit"), first.wireframe ? 0 : 1);
            glPolygonMode(GL_FRONT_AND_BACK, first.wireframe && !numbers ? GL_LINE : GL_FILL);
            glDrawElementsInstanced(GL_TRIANGLES, buffers.count, GL_UNSIGNED_INT, nullptr, count);
        });
        glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    }

    /// Calls f(first item, count, buffers) for each run of items that share a mesh, with its array
    /// bound.
    template <class F>
    void forEachBatch(F&& f)
    {
        for (std::size_t i = 0; i < items_.size();) {
            const Item& first = items_[i];
            std::size_t end = i;
            batch_.clear();
            while (end < items_.size() && items_[end].mesh == first.mesh &&
                   items_[end].onTop == first.onTop && items_[end].wireframe == first.wireframe)
                batch_.push_back(items_[end++].instance);
            Buffers& buffers = buffersOf(first.node->mesh());
            glBindVertexArray(buffers.array.get());
            glBindBuffer(GL_ARRAY_BUFFER, buffers.instances.get());
            glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(batch_.size() * sizeof(Instance)),
                         batch_.data(), GL_STREAM_DRAW);
            f(first, static_cast<GLsizei>(batch_.size()), buffers);
            i = end;
        }
    }

    void drawLines(const stage::Stage& scene, const Lens&, const Options& options)
    {
        lines_.begin(eye_, toEye_);
        scene.forEachNode([&](stage::StageNode& node) {
            if (!node.state().visible || &node == options.eye)
                return;
            if (options.splines && node.spline())
                lines_.addSpline(node, options.time, kSplineColor);
            if (options.cameras && node.hasLens() && (node.state().selected || !node.mesh()))
                lines_.addFrustum(node, options.time);
            if (!node.mesh() && !node.hasLens() && !node.spline())
                lines_.addCross(node, options.time);
        });
        if (options.pathOf)
            lines_.addPath(*options.pathOf, scene, options.time);
        lines_.draw(projection_);
    }

    static Vector3d sun() { return normalise(Vector3d{0.45, 0.78, 0.42}); }

    static GLint at(const GlProgram& program, const char* name)
    {
        return glGetUniformLocation(program.get(), name);
    }
    static void set(const GlProgram& program, const char* name, const Matrix4& value)
    {
        glUniformMatrix4fv(at(program, name), 1, GL_FALSE, toFloats(value).data());
    }
    static void set(const GlProgram& program, const char* name, const Vector3d& value)
    {
        glUniform3f(at(program, name), static_cast<float>(value.x), static_cast<float>(value.y),
                    static_cast<float>(value.z));
    }

    GlProgram mesh_, depth_, back_, grid_;
    GlVertexArray empty_;
    GlTexture shadowMap_;
    GlFramebuffer shadowTarget_;
    LinePainter lines_;
    std::unordered_map<const stage::StageMesh*, Buffers> meshes_;

    // Of the picture that is being drawn.
    Vector3d eye_;
    Matrix4 toEye_; ///< rotation alone
    Matrix4 projection_;
    Matrix4 toShadow_;
    std::vector<Item> items_;
    std::vector<stage::StageNode*> numbered_;
    std::vector<Instance> batch_;
};

Renderer::Renderer() : implementation_(std::make_unique<Implementation>()) {}
Renderer::~Renderer() = default;

void Renderer::draw(const stage::Stage& scene, const Lens& lens, const Viewport& viewport,
                    const Options& options)
{
    implementation_->draw(scene, lens, viewport, options);
}

stage::StageNode* Renderer::pick(const stage::Stage& scene, const Lens& lens,
                                 const Viewport& viewport, const Options& options, int x, int y)
{
    return implementation_->pick(scene, lens, viewport, options, x, y);
}

} // namespace tvw::rgs::view

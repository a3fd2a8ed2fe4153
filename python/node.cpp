#include "python/bindings.h"

#include "adaptor/stage/stage_mesh.h"

#include <cmath>

namespace tvw::rgs::python {

using stage::StageNode;

StageNode& PyNode::get() const
{
    sessionOf(scene_);
    return *node_;
}

StageNode& PyNode::camera() const
{
    if (!get().hasLens())
        raiseValueError("\"" + node_->name() + "\" is no camera");
    return *node_;
}

double PyNode::time(std::optional<double> t) const
{
    if (t && !std::isfinite(*t))
        raiseValueError("a time must be a finite number of seconds");
    return t ? *t : sessionOf(scene_).stage().getTime();
}

namespace {

std::optional<PyNode> wrap(const PyNode& from, StageNode* node)
{
    return node ? std::optional<PyNode>(PyNode(from.scene(), *node)) : std::nullopt;
}

void setParent(const PyNode& node, const std::optional<PyNode>& parent)
{
    if (!node.get().setParent(parent ? &parent->get() : nullptr))
        raiseValueError("a node can't hang on itself or on one below it");
}

std::vector<PyNode> children(const PyNode& node)
{
    std::vector<PyNode> all;
    for (StageNode* const child : node.get().children())
        all.emplace_back(node.scene(), *child);
    return all;
}

std::optional<PyTool> owner(const PyNode& node)
{
    stage::Session& session = sessionOf(node.scene());
    auto* const instance = static_cast<core::Instance*>(session.stage().ownerOf(node.get()));
    if (!instance || !instance->reference())
        return std::nullopt;
    return PyTool(node.scene(), *instance->reference());
}

void setMatrix(const PyNode& node, const Matrix& matrix, std::optional<double> t, bool key, bool world)
{
    const Matrix4 pose = toMatrix4(matrix);
    const double time = node.time(t);
    const bool done = world ? node.get().setWorld(pose, time, key) : node.get().setLocal(pose, time, key);
    if (!done)
        raiseValueError("the pose can't be set");
}

void setLens(bool done)
{
    if (!done)
        raiseValueError("the lens does not take this value");
}

std::optional<std::pair<double, py::tuple>> rayCast(const PyNode& node, const Point& origin,
                                                const Point& direction)
{
    const auto& mesh = node.get().mesh();
    if (!mesh)
        raiseValueError("\"" + node.get().name() + "\" has no mesh");
    const Vector3d from = toVector(origin);
    const Vector3d along = toVector(direction);
    const auto hit = mesh->tree().rayCast(from, along);
    if (!hit)
        return std::nullopt;
    return std::pair(hit->distance, fromVector(hit->normal));
}

} // namespace

void bindNode(py::module_& module)
{
    using T = std::optional<double>;
    py::class_<PyNode>(module, "Node", "A node of the scene. RuntimeError once its stage is closed.")
        .def_property(
            "name", [](const PyNode& n) { return n.get().name(); },
            [](const PyNode& n, const std::string& name) { n.get().rename(name); },
            "The name in the scene; made unique when set.")
        .def_property(
            "parent", [](const PyNode& n) { return wrap(n, n.get().parent()); }, &setParent,
            "The node above, None at the top. Setting it keeps the world position.")
        .def_property_readonly("children", &children)
        .def_property_readonly("owner", &owner, "The Tool that made the node, or None.")
        .def_property_readonly("kind", [](const PyNode& n) { return nameOf(n.get().kind()); },
                               "\"helper\", \"mesh\", \"camera\" or \"spline\".")
        .def_property(
            "visible", [](const PyNode& n) { return n.get().state().visible; },
            [](const PyNode& n, bool on) { n.get().setVisible(on); })
        .def_property_readonly("deleted", &PyNode::deleted)
        .def(
            "matrix",
            [](const PyNode& n, T t) { return fromMatrix4(n.get().world(n.time(t))); },
            py::arg("t") = py::none(), "The world matrix at t [s], or now.")
        .def(
            "local_matrix",
            [](const PyNode& n, T t) { return fromMatrix4(n.get().local(n.time(t))); },
            py::arg("t") = py::none(), "The matrix relative to the parent at t [s], or now.")
        .def(
            "position",
            [](const PyNode& n, T t) { return fromVector(translationOf(n.get().world(n.time(t)))); },
            py::arg("t") = py::none(), "The world position at t [s], or now.")
        .def(
            "set_matrix",
            [](const PyNode& n, const Matrix& m, T t, bool key) { setMatrix(n, m, t, key, true); },
            py::arg("m"), py::arg("t") = py::none(), py::arg("key") = false,
            "Sets the world matrix; with key a key is laid at t [s], or now.")
        .def(
            "set_local_matrix",
            [](const PyNode& n, const Matrix& m, T t, bool key) { setMatrix(n, m, t, key, false); },
            py::arg("m"), py::arg("t") = py::none(), py::arg("key") = false,
            "Sets the matrix relative to the parent; with key a key is laid at t [s], or now.")
        .def("key_times", [](const PyNode& n) { return n.get().poseKeyTimes(); },
             "Sorted times [s] of the transform keys.")
        .def(
            "fov", [](const PyNode& n, T t) { return n.camera().fov(n.time(t)); },
            py::arg("t") = py::none(), "Field of view [degrees]; ValueError for no camera.")
        .def(
            "target_distance",
            [](const PyNode& n, T t) { return n.camera().targetDistance(n.time(t)); },
            py::arg("t") = py::none(), "Target distance [scene units]; ValueError for no camera.")
        .def(
            "set_fov",
            [](const PyNode& n, double v, T t, bool key) { setLens(n.camera().setFov(v, n.time(t), key)); },
            py::arg("v"), py::arg("t") = py::none(), py::arg("key") = false)
        .def(
            "set_target_distance",
            [](const PyNode& n, double v, T t, bool key) {
                setLens(n.camera().setTargetDistance(v, n.time(t), key));
            },
            py::arg("v"), py::arg("t") = py::none(), py::arg("key") = false)
        .def("ray_cast", &rayCast, py::arg("origin"), py::arg("direction"),
             "The nearest hit of a ray in the node's own space: (distance, normal), or None. "
             "ValueError for a node without a mesh.")
        .def("__eq__", [](const PyNode& a, const PyNode& b) { return a == b; }, py::is_operator())
        .def("__hash__", &PyNode::hash)
        .def("__repr__", [](const PyNode& n) {
            return n.deleted() ? std::string("<Node, deleted>") : "<Node \"" + n.get().name() + "\">";
        });
}

} // namespace tvw::rgs::python

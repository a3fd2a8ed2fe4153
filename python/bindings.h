/// What the parts of the Python module share.
///
/// Python objects may outlive what they stand for: each holds a watch on it, and an operation on what
/// is gone raises RuntimeError.
#pragma once

#include "adaptor/stage/session.h"
#include "core/instance.h"
#include "core/instance_reference.h"

#include <pybind11/functional.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tvw::rgs::python {

namespace py = pybind11;

using Matrix = std::array<double, 16>;
using Point = std::array<double, 3>;

Matrix4 toMatrix4(const Matrix& matrix); ///< ValueError for what is no number
py::tuple fromMatrix4(const Matrix4& matrix);
Vector3d toVector(const Point& point); ///< ValueError for what is no number
py::tuple fromVector(const Vector3d& vector);

[[noreturn]] void raiseKeyError(const std::string& text);
[[noreturn]] void raiseValueError(const std::string& text);

/// A scene that can be closed under its nodes.
struct SceneToken
{
    stage::Session* session = nullptr; ///< null once the scene has been closed
};
using ScenePtr = std::shared_ptr<SceneToken>;

class PyTool;

/// A node of the scene.
class PyNode
{
public:
    PyNode(ScenePtr scene, stage::StageNode& node) : scene_(std::move(scene)), node_(&node) {}

    stage::StageNode& get() const; ///< RuntimeError when its scene was closed
    stage::StageNode& camera() const; ///< ValueError when it is none
    bool deleted() const { return !scene_->session || !node_->isPresent(); }
    double time(std::optional<double> t) const; ///< that time, or now; ValueError for what is no number
    const ScenePtr& scene() const { return scene_; }
    bool operator==(const PyNode& other) const { return node_ == other.node_; }
    std::size_t hash() const { return std::hash<const void*>()(node_); }

private:
    ScenePtr scene_;
    stage::StageNode* node_;
};

/// A tool. Its name and all else are those of the living tool.
class PyTool
{
public:
    PyTool(ScenePtr scene, core::InstanceReference& reference)
        : scene_(std::move(scene)), watch_(reference.watch())
    {
    }

    core::InstanceReference& reference() const; ///< RuntimeError when the tool is gone
    core::Instance& get() const { return reference().instance(); }
    const ScenePtr& scene() const { return scene_; }
    bool operator==(const PyTool& other) const { return watch_ == other.watch_; }
    std::size_t hash() const { return std::hash<const void*>()(watch_.get()); }

private:
    ScenePtr scene_;
    core::InstanceReference::Watch watch_;
};

/// A device of the hub.
class PyDevice
{
public:
    PyDevice(ScenePtr scene, unidevice::Device& device) : scene_(std::move(scene)), device_(&device) {}

    unidevice::Device& get() const; ///< RuntimeError when it is gone
    unidevice::Control& control(const std::string& type, int index) const; ///< KeyError: none such
    const ScenePtr& scene() const { return scene_; }
    bool operator==(const PyDevice& other) const { return device_ == other.device_; }

private:
    ScenePtr scene_;
    unidevice::Device* device_;
};

/// The session behind a token. RuntimeError when it is closed.
stage::Session& sessionOf(const ScenePtr& scene);

void bindTypes(py::module_& module);
void bindNode(py::module_& module);
void bindDevice(py::module_& module);
void bindTool(py::module_& module);
void bindStage(py::module_& module);

} // namespace tvw::rgs::python

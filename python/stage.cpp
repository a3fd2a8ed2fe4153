#include "python/bindings.h"

#include "adaptor/stage/scene_file.h"
#include "core/adaptor.h"
#include "core/core_implementation.h"
#include "core/instance_manager.h"
#include "core/settings.h"
#include "unidevice/device_hub.h"

#include <algorithm>
#include <cerrno>
#include <cmath>

namespace tvw::rgs::python {

using core::InstanceReference;
using stage::Session;
using stage::StageNode;

namespace {

/// What goes wrong with a file: OSError when the system refused it, ValueError for what is in it.
void requireFile(const Status& status)
{
    if (status)
        return;
    constexpr int kRefusals[] = {ENOENT, EACCES, EPERM, EISDIR, ENOTDIR, ENOSPC, EDQUOT,
                                 EFBIG,  EROFS,  EIO,   ELOOP,  EMFILE,  ENAMETOOLONG};
    if (std::find(std::begin(kRefusals), std::end(kRefusals), errno) != std::end(kRefusals)) {
        PyErr_SetString(PyExc_OSError, status.reason().c_str());
        throw py::error_already_set();
    }
    raiseValueError(status.reason());
}

template <class T>
T requireFile(Result<T> result)
{
    if (!result)
        requireFile(Status::failure(result.reason()));
    return *std::move(result);
}

/// The settings as a mapping.
class PySettings
{
public:
    explicit PySettings(ScenePtr scene) : scene_(std::move(scene)) {}

    py::object get(const std::string& key) const
    {
        const std::string text = store().value(key);
        if (text.empty())
            raiseKeyError(key);
        return py::module_::import("json").attr("loads")(text);
    }
    void set(const std::string& key, const py::object& value) const
    {
        if (store().value(key).empty())
            raiseKeyError(key);
        const auto text = py::module_::import("json").attr("dumps")(value).cast<std::string>();
        const Status done = store().setValue(key, text);
        if (!done)
            raiseValueError(done.reason());
    }
    static const std::vector<std::string>& keys() { return core::SettingsStore::keys(); }

private:
    core::SettingsStore& store() const { return sessionOf(scene_).core().settings(); }
    ScenePtr scene_;
};

class PyStage
{
public:
    PyStage(double fps, double start, double end, const std::optional<std::string>& userFolder)
    {
        requireTime(fps);
        requireRange({start, end});
        if (fps <= 0.0)
            raiseValueError("the frame rate must be above 0");
        auto session = Session::start({.framesPerSecond = fps,
                                       .range = {start, end},
                                       .userFolder = userFolder.value_or(std::string())});
        if (!session)
            throw std::runtime_error(session.reason());
        session_ = *std::move(session);
        session_->onMessage = [](const Session::Message& message) { warn(message); };
        newScene();
    }
    ~PyStage() { close(); }

    void close()
    {
        scene_->session = nullptr;
        session_.reset();
    }

    bool isInRun() const { return session_ && session_->core().isRunning(); }

    Session& get() const
    {
        if (!session_)
            throw std::runtime_error("the stage is closed");
        return *session_;
    }
    const ScenePtr& scene() const { return scene_; }

    /// What stood for the old scene's nodes stands for nothing now.
    void newScene()
    {
        if (scene_)
            scene_->session = nullptr;
        scene_ = std::make_shared<SceneToken>(SceneToken{session_.get()});
    }

    static void requireTime(double seconds)
    {
        if (!std::isfinite(seconds))
            raiseValueError("a time must be a finite number of seconds");
    }
    static void requireRange(const std::pair<double, double>& range)
    {
        requireTime(range.first);
        requireTime(range.second);
        if (range.second < range.first)
            raiseValueError("a range must not end before it starts");
    }

private:
    static void warn(const Session::Message& message)
    {
        const py::gil_scoped_acquire held;
        py::module_::import("logging").attr("getLogger")("rigstage").attr("warning")(
            "%s: %s", message.title, message.text);
    }

    std::unique_ptr<Session> session_;
    ScenePtr scene_;
};

// Scene content.

PyNode wrap(const PyStage& stage, StageNode& node) { return {stage.scene(), node}; }

std::vector<PyNode> wrapAll(const PyStage& stage, const std::vector<StageNode*>& nodes)
{
    std::vector<PyNode> all;
    for (StageNode* const node : nodes)
        all.push_back(wrap(stage, *node));
    return all;
}

Matrix4 poseOf(const std::optional<Matrix>& matrix) { return matrix ? toMatrix4(*matrix) : Matrix4{}; }

PyNode find(const PyStage& stage, const std::string& name)
{
    StageNode* const node = stage.get().stage().find(name);
    if (!node)
        raiseKeyError("the scene has no node \"" + name + "\"");
    return wrap(stage, *node);
}

PyNode addMesh(const PyStage& stage, const std::string& name, const std::vector<Point>& vertices,
               const std::vector<std::array<std::int32_t, 3>>& triangles,
               const std::optional<Matrix>& matrix)
{
    CMesh mesh;
    for (const Point& vertex : vertices)
        mesh.vertex.push_back(toVector(vertex));
    for (const auto& triangle : triangles)
        mesh.face.insert(mesh.face.end(), triangle.begin(), triangle.end());
    if (!mesh.isSound())
        raiseValueError("a triangle names a vertex that is not there");
    return wrap(stage, stage.get().stage().addMesh(name, mesh, poseOf(matrix)));
}

PyNode addSpline(const PyStage& stage, const std::string& name, const std::vector<Point>& points,
                 bool closed, const std::optional<Matrix>& matrix)
{
    std::vector<Vector3d> through;
    for (const Point& point : points)
        through.push_back(toVector(point));
    if (through.size() < 2)
        raiseValueError("a spline runs through two points at least");
    return wrap(stage, stage.get().stage().addSpline(name, through, closed, poseOf(matrix)));
}

PyNode addCamera(const PyStage& stage, const std::string& name, double fov,
                 const std::optional<Matrix>& matrix)
{
    if (!(fov > 0.0 && fov < 180.0))
        raiseValueError("a field of view lies between 0 and 180 degrees");
    return wrap(stage, stage.get().stage().addCamera(name, fov, poseOf(matrix)));
}

// Tools.

PyTool create(const PyStage& stage, const std::string& type, const std::string& name,
              const std::optional<PyTool>& parent)
{
    auto made = stage.get().create(type, name, parent ? &parent->reference() : nullptr);
    if (!made)
        raiseValueError(made.reason());
    return {stage.scene(), **made};
}

std::optional<PyTool> createFromXml(const PyStage& stage, const std::string& text,
                                    const std::optional<PyTool>& parent)
{
    auto made = stage.get().createFromXml(text, parent ? &parent->reference() : nullptr);
    if (!made)
        raiseValueError(made.reason());
    return *made ? std::optional(PyTool(stage.scene(), **made)) : std::nullopt;
}

std::vector<PyTool> tools(const PyStage& stage)
{
    std::vector<PyTool> all;
    for (InstanceReference* const reference : stage.get().root().childReferences())
        all.emplace_back(stage.scene(), *reference);
    return all;
}

PyTool toolNamed(const PyStage& stage, const std::string& name)
{
    InstanceReference* const reference = stage.get().tool(name);
    if (!reference)
        raiseKeyError("there is no tool \"" + name + "\"");
    return {stage.scene(), *reference};
}

// Runs.

void record(const PyStage& stage, double seconds, std::function<void(double)> beforeFrame, int countdown)
{
    if (countdown < 0)
        raiseValueError("a countdown is 0 or more whole seconds");
    const Status done = stage.get().record(
        {.seconds = seconds, .beforeFrame = std::move(beforeFrame), .countdown = countdown});
    if (!done)
        raiseValueError(done.reason());
}

void resimulate(const PyStage& stage, std::optional<double> start, std::optional<double> end,
                const std::function<void(double)>& progress)
{
    const core::TimeRange range = stage.get().stage().range();
    const Status done =
        stage.get().resimulate(start.value_or(range.start), end.value_or(range.end), progress);
    if (!done)
        raiseValueError(done.reason());
}

// Devices.

std::vector<PyDevice> devices(const PyStage& stage)
{
    stage.get();
    std::vector<PyDevice> all;
    auto& hub = unidevice::DeviceHub::instance();
    for (int i = 0; i < hub.deviceCount(); ++i)
        all.emplace_back(stage.scene(), *hub.deviceAt(i));
    return all;
}

PyDevice addDevice(const PyStage& stage, const std::string& name, int axes, int sliders, int hats,
                   int buttons)
{
    constexpr int kMost = 256;
    for (const int count : {axes, sliders, hats, buttons}) {
        if (count < 0 || count > kMost)
            raiseValueError("a device has 0 to 256 controls of a type");
    }
    return {stage.scene(), stage.get().addDevice(name, {axes, sliders, hats, buttons})};
}

std::vector<std::pair<std::string, std::string>> messages(const PyStage& stage)
{
    std::vector<std::pair<std::string, std::string>> all;
    for (const auto& message : stage.get().messages())
        all.emplace_back(message.title, message.text);
    for (const auto& message : stage.get().stage().messages())
        all.emplace_back(message.title, message.text);
    return all;
}

void bindTimeAndFiles(py::class_<PyStage>& type)
{
    type.def_property(
            "time", [](const PyStage& s) { return s.get().stage().getTime(); },
            [](const PyStage& s, double t) {
                PyStage::requireTime(t);
                s.get().stage().setTime(t);
            },
            "The scene's time [s].")
        .def_property(
            "range",
            [](const PyStage& s) {
                const core::TimeRange range = s.get().stage().range();
                return std::pair(range.start, range.end);
            },
            [](const PyStage& s, const std::pair<double, double>& range) {
                PyStage::requireRange(range);
                s.get().stage().setRange({range.first, range.second});
            },
            "The animation range (start, end) [s].")
        .def_property(
            "fps", [](const PyStage& s) { return s.get().stage().getFramesPerSecond(); },
            [](const PyStage& s, double fps) {
                if (!std::isfinite(fps) || fps <= 0.0)
                    raiseValueError("the frame rate must be above 0");
                s.get().stage().setFramesPerSecond(fps);
            },
            "The base frame rate [1/s].")
        .def_property_readonly("frame_duration",
                               [](const PyStage& s) { return s.get().stage().getFrameDuration(); },
                               "The step of a run [s].")
        .def(
            "new",
            [](PyStage& s) {
                s.get().clear();
                s.newScene();
            },
            "An empty scene; undo is emptied.")
        .def(
            "save", [](const PyStage& s, const std::string& path) {
                errno = 0;
                requireFile(saveScene(s.get(), path));
                s.get().setScenePath(path); // so that a lost take is found by the scene's name
            },
            py::arg("path"), "The scene with tools, state, takes and keys, as .glb.")
        .def(
            "open",
            [](PyStage& s, const std::string& path) {
                errno = 0;
                requireFile(openScene(s.get(), path));
                s.get().setScenePath(path);
                s.newScene();
            },
            py::arg("path"), "Takes the place of the present scene.")
        .def(
            "export",
            [](const PyStage& s, const std::string& path, double tolerance, double angleTolerance) {
                errno = 0;
                requireFile(exportScene(s.get().stage(), path, {tolerance, angleTolerance}));
            },
            py::arg("path"), py::arg("tolerance") = 0.0, py::arg("angle_tolerance") = 0.0,
            "The animation for other programs. Keys are left out as long as the curve stays within "
            "the tolerances [m, degrees]; 0 leaves out none.")
        .def(
            "import_file",
            [](const PyStage& s, const std::string& path) {
                errno = 0;
                return wrapAll(s, requireFile(importFile(s.get().stage(), path)));
            },
            py::arg("path"), "The nodes made from a mesh or scene file.")
        .def(
            "save_prm",
            [](const PyStage& s, const std::string& path) {
                errno = 0;
                requireFile(s.get().savePrm(path));
            },
            py::arg("path"))
        .def(
            "load_prm",
            [](const PyStage& s, const std::string& path, const std::optional<PyTool>& parent) {
                errno = 0;
                requireFile(s.get().loadPrm(path, parent ? &parent->reference() : nullptr));
            },
            py::arg("path"), py::arg("parent") = py::none());
}

void bindContent(py::class_<PyStage>& type)
{
    type.def_property_readonly("nodes",
                               [](const PyStage& s) { return wrapAll(s, s.get().stage().nodes()); },
                               "All live nodes, depth first.")
        .def("find", &find, py::arg("name"), "The node of that name; KeyError when there is none.")
        .def("add_mesh", &addMesh, py::arg("name"), py::arg("vertices"), py::arg("triangles"),
             py::arg("matrix") = py::none())
        .def(
            "add_empty",
            [](const PyStage& s, const std::string& name, const std::optional<Matrix>& matrix) {
                return wrap(s, s.get().stage().addEmpty(name, poseOf(matrix)));
            },
            py::arg("name"), py::arg("matrix") = py::none())
        .def("add_camera", &addCamera, py::arg("name"), py::arg("fov") = 45.0,
             py::arg("matrix") = py::none(), "fov: horizontal [degrees].")
        .def("add_spline", &addSpline, py::arg("name"), py::arg("points"), py::arg("closed") = false,
             py::arg("matrix") = py::none(), "A spline that runs through its points.")
        .def(
            "remove",
            [](const PyStage& s, const PyNode& node) {
                const core::UndoScope undo("Delete"); // else an older step would bring it back
                s.get().stage().remove(node.get());
            },
            py::arg("node"), "Deletes a scene node.")
        .def("undo", [](const PyStage& s) { return s.get().stage().hostUndo(); },
             "True if something was undone.")
        .def("redo", [](const PyStage& s) { return s.get().stage().hostRedo(); })
        .def_property_readonly(
            "undo_names", [](const PyStage& s) { return s.get().stage().undoStack().undoNames(); },
            "Names of the undo steps, newest last.");
}

void bindTools(py::class_<PyStage>& type)
{
    type.def("create", &create, py::arg("type_id"), py::arg("name") = "", py::arg("parent") = py::none(),
             "A new tool; ValueError for an unknown type.")
        .def_property_readonly("tools", &tools, "The top-level tools, in tree order.")
        .def("tool", &toolNamed, py::arg("name"))
        .def_property_readonly("root",
                               [](const PyStage& s) { return PyTool(s.scene(), s.get().root()); })
        .def("create_from_xml", &createFromXml, py::arg("text"), py::arg("parent") = py::none(),
             "The tools of a record; the first, or None.")
        .def("record", &record, py::arg("seconds"), py::arg("before_frame") = py::none(),
             py::arg("countdown") = 1,
             "A take of that length at machine speed, from the present time. before_frame(t) runs "
             "before the devices are read in each frame.")
        .def("resimulate", &resimulate, py::arg("start") = py::none(), py::arg("end") = py::none(),
             py::arg("progress") = py::none(),
             "A whole second pass, by default over the range; progress(fraction) hears of it.")
        .def_property_readonly("is_running", [](const PyStage& s) { return s.get().core().isRunning(); })
        .def_property_readonly("is_resimulating",
                               [](const PyStage& s) { return s.get().core().isResimulating(); })
        .def_property(
            "time_scale", [](const PyStage& s) { return s.get().core().getTimeScale(); },
            [](const PyStage& s, int n) {
                if (n < 1 || n > 10000)
                    raiseValueError("the slow-motion factor is 1 to 10000");
                s.get().core().setTimeScale(n);
            },
            "The slow-motion factor n: a run goes at 1 / 2^(n-1) of life's speed.")
        .def_property_readonly("settings", [](const PyStage& s) { return PySettings(s.scene()); },
                               "The settings by their keys; setting one saves it.")
        .def_property_readonly("messages", &messages, "(title, text) of what boxes would have shown.")
        .def_property_readonly("devices", &devices)
        .def("add_device", &addDevice, py::arg("name") = "Pad", py::arg("axes") = 6,
             py::arg("sliders") = 0, py::arg("hats") = 0, py::arg("buttons") = 16,
             "A scripted device in the hub.");
}

} // namespace

void bindStage(py::module_& module)
{
    py::class_<PySettings>(module, "Settings", "The settings as a mapping by their keys.")
        .def("__getitem__", &PySettings::get)
        .def("__setitem__", &PySettings::set)
        .def("__len__", [](const PySettings&) { return PySettings::keys().size(); })
        .def("__iter__", [](const PySettings&) { return py::iter(py::cast(PySettings::keys())); })
        .def("__contains__",
             [](const PySettings&, const std::string& key) {
                 const auto& keys = PySettings::keys();
                 return std::find(keys.begin(), keys.end(), key) != keys.end();
             })
        .def("keys", [](const PySettings&) { return PySettings::keys(); });

    py::class_<PyStage> type(module, "Stage",
                             "A scene with its tools. One lives at a time in a process; use it in a "
                             "with block, or close it.");
    type.def(py::init<double, double, double, const std::optional<std::string>&>(),
             py::arg("fps") = 25.0, py::arg("start") = 0.0, py::arg("end") = 10.0,
             py::arg("user_folder") = py::none(),
             "user_folder: where profiles and settings lie; None: the user's own.")
        .def("close",
             [](PyStage& s) {
                 if (s.isInRun())
                     throw std::runtime_error("the stage can't be closed while a run is on");
                 s.close();
             })
        .def("__enter__", [](PyStage& s) -> PyStage& { return s; }, py::return_value_policy::reference)
        .def("__exit__", [](PyStage& s, const py::args&) { s.close(); });
    bindTimeAndFiles(type);
    bindContent(type);
    bindTools(type);
}

} // namespace tvw::rgs::python

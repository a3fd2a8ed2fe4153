#include "python/bindings.h"

#include "core/version.h"
#include "plugins/tool_table.h"

#include <cmath>

namespace tvw::rgs::python {

void raiseKeyError(const std::string& text) { throw py::key_error(text); }

void raiseValueError(const std::string& text) { throw py::value_error(text); }

namespace {

template <class Numbers>
void requireNumbers(const Numbers& numbers)
{
    for (const double number : numbers) {
        if (!std::isfinite(number))
            raiseValueError("every element must be a finite number");
    }
}

} // namespace

Matrix4 toMatrix4(const Matrix& matrix)
{
    requireNumbers(matrix);
    Matrix4 out;
    std::copy(matrix.begin(), matrix.end(), out.m);
    return out;
}

py::tuple fromMatrix4(const Matrix4& matrix)
{
    py::tuple out(std::size(matrix.m));
    for (std::size_t i = 0; i < std::size(matrix.m); ++i)
        out[i] = matrix.m[i];
    return out;
}

Vector3d toVector(const Point& point)
{
    requireNumbers(point);
    return {point[0], point[1], point[2]};
}

py::tuple fromVector(const Vector3d& vector) { return py::make_tuple(vector.x, vector.y, vector.z); }

stage::Session& sessionOf(const ScenePtr& scene)
{
    if (!scene->session)
        throw std::runtime_error("the stage is closed");
    return *scene->session;
}

namespace {

struct ToolType
{
    std::string id, displayName, category, description;
    std::vector<std::string> oldIds;
};

std::vector<ToolType> toolTypes()
{
    std::vector<ToolType> types;
    for (const MakePlugin make : toolTable()) {
        CCameraPlugin* const plugin = make();
        ToolType type{plugin->getId(), plugin->getDisplayName(), plugin->getCategory(),
                      plugin->getDescription(), {}};
        if (plugin->isSupported(code::olderIds))
            plugin->call(code::olderIds, &type.oldIds);
        plugin->destroy();
        types.push_back(std::move(type));
    }
    return types;
}

} // namespace

void bindTypes(py::module_& module)
{
    py::class_<ToolType>(module, "ToolType", "A kind of tool that can be created.")
        .def_readonly("id", &ToolType::id, "The id for Stage.create; the key in files.")
        .def_readonly("display_name", &ToolType::displayName)
        .def_readonly("category", &ToolType::category)
        .def_readonly("description", &ToolType::description)
        .def_readonly("old_ids", &ToolType::oldIds, "Ids under which older files know the type.")
        .def("__repr__", [](const ToolType& type) { return "<ToolType " + type.id + ">"; });
    module.def("tool_types", &toolTypes, "All kinds of tool, in the order of the tool lists.");
}

} // namespace tvw::rgs::python

PYBIND11_MODULE(rigstage, module)
{
    using namespace tvw::rgs::python;
    module.doc() = "Rigstage on its own stage: create tools, drive them by script, record, "
                   "resimulate, export. Times are seconds; matrices are 16 floats, column by column.";
    module.attr("__version__") = tvw::rgs::kVersion;
    bindTypes(module);
    bindNode(module);
    bindDevice(module);
    bindTool(module);
    bindStage(module);
}

/// The stage as a glTF binary.
///
/// What other programs show is plain glTF. What must come back from them stands in `extras`, whose
/// member "rigstage" is ours beside the user properties: a node's kind, its flags, a spline's
/// points; the scene's settings and the tools without nodes. What is only precision stands in the
/// extension `TVW_rigstage`, which other programs drop.
#pragma once

#include "adaptor/stage/animation_writer.h"
#include "adaptor/stage/mesh_writer.h"
#include "adaptor/stage/stage.h"

namespace tvw::rgs::stage {

inline constexpr const char* kExtension = "TVW_rigstage";
inline constexpr const char* kExtras = "rigstage";
inline constexpr int kExtensionVersion = 1;
inline constexpr double kAspectRatio = 16.0 / 9.0;      ///< of every camera's picture
inline constexpr double kDegree = 0.017453292519943295; ///< [rad]

/// The vertical angle of view [rad] that glTF wants of an angle [degrees] measured in that way, and
/// the horizontal one [degrees] of glTF's.
[[nodiscard]] double verticalAngle(double degrees, ViewAngle measured, double aspectRatio);
[[nodiscard]] double angleOfView(double vertical, ViewAngle measured, double aspectRatio);

/// The tools without nodes, as XML, and their places among their siblings.
struct UnboundTools
{
    std::string record;
    std::vector<int> places;
};

class SceneWriter
{
public:
    /// A scene that opens as it is.
    SceneWriter(Stage& stage, const UnboundTools& tools);
    /// Animation for other programs: no extension, no shapes of tools' helpers.
    SceneWriter(Stage& stage, const ExportOptions& options);

    /// The file, which lives as long as the writer. Once only. The reason when it would be longer
    /// than 4 GiB or nodes are nested deeper than kDeepest.
    [[nodiscard]] Result<std::string_view> write();

private:
    std::size_t writeNode(const StageNode& node, std::size_t depth);
    void writeShape(const StageNode& node, Json& out, Json& exact);
    void writePose(const StageNode& node, std::size_t index, Json& out, Json& exact);
    void writeLens(const StageNode& node, Json& out, Json& exact);
    Json extrasOf(const StageNode& node) const;
    Json sceneExtras() const;
    void writeExtension();

    Stage& stage_;
    const UnboundTools* tools_; ///< null: an export
    ExportOptions options_;
    GlbWriter file_;
    AnimationWriter animation_;
    MeshWriter meshes_;
    Json nodes_ = Json::array();
    Json cameras_ = Json::array();
    std::vector<Matrix4> matrices_; ///< of all nodes, exact
    bool tooDeep_ = false;
};

} // namespace tvw::rgs::stage

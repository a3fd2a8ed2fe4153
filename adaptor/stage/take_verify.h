/// Whether a scene's takes are what its tools make of the recorded input today, key by key.
#pragma once

#include "adaptor/stage/session.h"
#include "util/result.h"

#include <optional>
#include <string>

namespace tvw::rgs::stage {

/// The stretch of all takes.
struct TakeExtent
{
    double start = 0.0; ///< [s]
    double end = 0.0;   ///< time of the last frame [s]
};

/// That of one tool's recorded input; of a tool without inputs, which leaves nothing else of a take,
/// that of its nodes' keys. Nothing when it has no take.
std::optional<TakeExtent> takeExtent(Session& session, core::Instance& tool);

/// Over all tools that take part in a run.
std::optional<TakeExtent> takeExtent(Session& session);

/// Where a resimulation first leaves the take: by time, at one time by the order of the nodes.
struct TakeDifference
{
    double time = 0.0; ///< [s]
    std::string node;
    std::string
        value; ///< "position y", "element 4 of the pose", "field of view", "target distance"
    std::optional<double> taken;       ///< none: the take has no key there
    std::optional<double> resimulated; ///< none: the resimulation lays no key there
};

struct TakeComparison
{
    TakeExtent extent;
    std::size_t keys = 0; ///< compared
    std::optional<TakeDifference> difference;
};

/// Resimulates all takes and compares every key of every node bit for bit. The scene is afterwards
/// as it was. The reason when there is no take, or a run is on.
Result<TakeComparison> verifyTake(Session& session, const Progress& progress = {});

} // namespace tvw::rgs::stage

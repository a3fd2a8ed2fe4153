/// A mesh as it is drawn: single precision, with normals that are smooth but at sharp edges.
#pragma once

#include "util/mesh.h"

#include <array>
#include <cstdint>
#include <vector>

namespace tvw::rgs::view {

struct ShadedMesh
{
    struct Corner
    {
        std::array<float, 3> position;
        std::array<float, 3> normal; ///< of unit length; 0 where no face has an area
    };
    std::vector<Corner> corners;
    std::vector<std::uint32_t> triangles; ///< three corners each
};

/// Faces that meet at less than this share a normal where they meet.
inline constexpr double kCreaseDegrees = 38.0;

/// Triangles with a corner that the mesh does not have are left out.
[[nodiscard]] ShadedMesh shade(const CMesh& mesh);

} // namespace tvw::rgs::view

/// The shapes by which tools show their nodes. Sizes are in scene units (metres), made to be seen and
/// grabbed beside a car; each faces -Z and stands on +Y.
#pragma once

#include "util/mesh.h"

namespace tvw::rgs::shape {

CMesh relativeCage(); ///< an open box of bars: a frame of reference
CMesh target();       ///< an octahedron: what moves, or is followed
CMesh actuator();     ///< a block with an arrow along -Z
CMesh camera();       ///< a body with a lens hood along -Z
CMesh humanoid();     ///< a standing person 1.75 high, the feet at the origin

} // namespace tvw::rgs::shape

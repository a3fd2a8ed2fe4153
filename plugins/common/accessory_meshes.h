/// The shapes of the accessories' nodes: clearances, ends of rulers, rays. Sizes are in units of
/// the node that scales them.
#pragma once

#include "util/mesh.h"

namespace tvw::rgs::shape {

CMesh boxClearance();    ///< the edges of a box from -1 to 1 on each axis, which scale with it
CMesh sphereClearance(); ///< three rings of radius 1
CMesh coneClearance();   ///< a cone of 45 degrees to each side that opens along -Z
CMesh slider();          ///< a small block: what knocks about in a play
CMesh pointer();         ///< a rod along -Z with a tip: what turns within a cone
CMesh measuringPoint();  ///< a cross of three thin bars round a small block
CMesh gauge();           ///< three bars of length 1 along the axes, each with a block at its end
CMesh rayOrigin();       ///< a plate with an arrow along -Z
CMesh rayHit();          ///< a plate across Z with a short pin along +Z: the surface's normal
CMesh surfaceMark();     ///< an arrow along -Y, of length 1.2

} // namespace tvw::rgs::shape

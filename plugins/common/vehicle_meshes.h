/// The shapes of vehicles' helper nodes. Unless told otherwise sizes are in units of the node that
/// scales them; each faces -Z and stands on +Y.
#pragma once

#include "util/mesh.h"

namespace tvw::rgs::shape {

CMesh carBody();         ///< a saloon of length 1; its origin lies low between the axles
CMesh wheel();           ///< tyre and spokes of radius 1 and width 1 round the X axis
CMesh wheelRelocator();  ///< a thin ring outside of a wheel: where a wheel belongs
CMesh wheelCentre();     ///< a small star on the hub
CMesh wheelSuspension(); ///< a small upright arrow
CMesh attachPlate();     ///< a flat frame: what hangs here moves against the chassis
CMesh gravityArrow();    ///< an arrow along -Y
CMesh forceArrow();      ///< an arrow along +Z
CMesh steeringWheel();   ///< a rim with three spokes round the Z axis, radius 1
CMesh turnBase();        ///< an upright pin on a cross
CMesh basePlane();       ///< a thin plate of length 1

} // namespace tvw::rgs::shape

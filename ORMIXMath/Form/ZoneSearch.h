#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>

#include <vector>

#include "FormModels.h"

/// \file
/// The best of all zones of planes, circles and spheres; not installed.

namespace ormix::detail {

/// Moves a plane, or the centre of circles in the plane z = 0 or of spheres, to that of the narrowest zone of all, from
/// one that is the best near it. Points are about 1 in size; centres farther away than about 10⁶ are those of lines and
/// planes, and left out.
///
/// With each point p goes the height |p|² above it. The difference of the squared distances of two points from a centre
/// is then linear in the direction (-2 centre, 1), and the zone about that centre the width of the raised points across
/// this direction, divided by the sum of the greatest and the least distance (with the paraboloid of Brown1979). Zones
/// of planes are the widths of the points themselves. Directions are searched by branch and bound: cells of the faces
/// of a cube, of which a linear program of a few points gives a lower bound that is wrong by the square of the cell's
/// size only. Where the few points promise a better zone, all are asked, and the highest and the lowest one join the
/// few.
///
/// About 100 to 1000 cells and 10 to 100 passes over the points are usual. Points for which nearly all zones are as
/// narrow, as those of a sphere between two planes, take more; the search ends after about 5 * 10⁶ looks at one of the
/// few and 800 passes.
/// \return whether no zone is narrower by more than 1e-9 of it, and rounding; false where the search was given up
template <class Model>
bool findZone(const std::vector<SpatialPoint>& points, Model& model);

extern template bool findZone(const std::vector<SpatialPoint>&, PlaneModel&);
extern template bool findZone(const std::vector<SpatialPoint>&, CenterModel<2>&);
extern template bool findZone(const std::vector<SpatialPoint>&, CenterModel<3>&);

}  // namespace ormix::detail

#pragma once

#include <ORMIXMath/Fitting/SurfaceModels.h>

#include <vector>

/// \file
/// Where the least squares of distances to surfaces of revolution begin, without a guess of the caller; not installed.
///
/// Points are about 1 in size and nearly centred: a selection of at most a few hundred, as the time of a descent from
/// each start is in proportion to them. Starts come in no order. O(points) and some thousand small solutions.

namespace ormix::detail {

/// Axes along the principal directions of the points and along those of many directions over the hemisphere for which
/// the best algebraic cylinder fits best, and the cylinder that osculates the paraboloid of a flat patch.
std::vector<CylinderModel> cylinderStarts(const std::vector<SpatialPoint>& points);

/// The same with the algebraic quadrics of revolution about each direction, of which the cone is taken that touches at
/// the height of the middle of the points.
std::vector<ConeModel> coneStarts(const std::vector<SpatialPoint>& points);

/// The torus of the algebraic cyclide s² + s v·p + q(p) = 0 with s = |p|² and a quadric q, where there are points
/// enough, the ones of a patch and of a tube that bends little, and for many directions over the hemisphere the best
/// ones about the circle of the projected points.
std::vector<TorusModel> torusStarts(const std::vector<SpatialPoint>& points);

}  // namespace ormix::detail

#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <cstddef>
#include <vector>

namespace ormix {

/// A ring, not owned: interleaved pairs x0, y0, x1, … It is closed by the edge from its last vertex to its first,
/// whether or not the first is repeated.
struct RingView {
  const omReal64* xy;      ///< the coordinates of all vertices
  std::size_t nbVertices;  ///< their number
};

/// A circle inside a region.
struct InscribedCircle {
  PlanarPoint center{};  ///< in the unit of the rings
  omReal64 radius = 0;   ///< the distance of the centre from the nearest edge
  omReal64 excess = 0;   ///< no circle inside has a radius larger than radius + excess
};

/// A largest circle inside the region that rings bound by the even-odd rule: rings with holes, holes with islands, any
/// orientation and order.
///
/// The region is cut into squares, and squares again where they may hold a better centre than the best known one
/// (branch and bound). What bounds the distance inside a square are the distances from few edges, linear with their
/// curvature as slack, so that bounds and centres improve quadratically. `excess` is at most 1e-9 of the radius and
/// 1e-15 of the rings' extent, unless 30,000 squares were not enough: then it says what is known. That happens where
/// very many places are equally good, as in a long thin region or between two concentric circles; the circle answered
/// is mostly a largest one even so. Distances have errors of about 1e-16 of the extent. Of several largest circles any
/// one may be answered.
///
/// About O(n + m log n) for n vertices and m squares, mostly some hundreds; a region that nears a circle takes O(n) for
/// the squares near the centre.
///
/// Fails with a message, `circle` untouched, when no ring has an area inside its box, or where a coordinate is NaN or
/// infinite (the message names ring and vertex).
ORMIX_MATH_API BoolResult largestInscribedCircle(const std::vector<RingView>& rings, InscribedCircle& circle);

}  // namespace ormix

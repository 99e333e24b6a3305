#include <ORMIXGeometry/Entity/3d/Mesh/RevolvedSurface.h>
#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace ormix::geom::detail {

namespace {

using ormix::detail::cross;
using ormix::detail::operator+;
using ormix::detail::operator*;

/// A line in the half-plane, outside to its right; it may end on the axis or go round.
struct Outline {
  std::vector<PlanarPoint> places;  ///< distance from the axis, and height
  bool isRing;
};

Outline outlineOf(const RoundSolid& solid, omUInt32 nbSides) {
  if (solid.kind == eRS_Frustum)
    return {{{0, 0}, {solid.radius0, 0}, {solid.radius1, solid.height}, {0, solid.height}}, false};
  const bool isRing = solid.radius1 < solid.radius0;
  const omReal64 half = isRing ? s_pi : solid.radius1 > 0 ? std::acos(-solid.radius0 / solid.radius1) : 0;
  const omUInt32 nbSteps = std::max(3U, nbSides / 2);
  Outline outline{{}, isRing};
  for (omUInt32 i = 0; i < nbSteps + (isRing ? 0 : 1); ++i) {
    const omReal64 angle = half * (2 * omReal64(i) / nbSteps - 1);
    // The ends of a line are on the axis, without rounding.
    const bool isEnd = !isRing && (i == 0 || i == nbSteps);
    outline.places.push_back(
        {isEnd ? 0 : solid.radius0 + solid.radius1 * std::cos(angle), solid.radius1 * std::sin(angle)});
  }
  return outline;
}

/// The vertices of each place of an outline: one on the axis, or one for each side.
class Rows {
 public:
  Rows(const RoundSolid& solid, const Outline& outline, omUInt32 nbSides, RevolvedSurface& surface)
      : _nbSides(nbSides) {
    const SpatialPoint u = directionAcross(solid.axis), v = cross(solid.axis, u);
    for (const PlanarPoint& place : outline.places) {
      _firsts.push_back(static_cast<omUInt32>(surface.vertices.size()));
      _isOnAxis.push_back(place.x <= 0);
      for (omUInt32 side = 0; side < (place.x <= 0 ? 1 : nbSides); ++side) {
        const omReal64 angle = s_twoPi * side / nbSides;
        const SpatialPoint p =
            solid.origin + solid.axis * place.y + (u * std::cos(angle) + v * std::sin(angle)) * place.x;
        surface.vertices.emplace_back(p.x, p.y, p.z);
      }
    }
  }

  omUInt32 vertex(std::size_t row, omUInt32 side) const {
    return _isOnAxis[row] ? _firsts[row] : _firsts[row] + side % _nbSides;
  }
  bool isOnAxis(std::size_t row) const { return _isOnAxis[row]; }

 private:
  omUInt32 _nbSides;
  std::vector<omUInt32> _firsts;
  std::vector<bool> _isOnAxis;
};

}  // namespace

RevolvedSurface revolvedSurface(const RoundSolid& solid, omUInt32 nbSides) {
  RevolvedSurface surface;
  const Outline outline = outlineOf(solid, nbSides);
  const Rows rows(solid, outline, nbSides, surface);
  const std::size_t nbRows = outline.places.size();
  for (std::size_t row = 0; row + (outline.isRing ? 0 : 1) < nbRows; ++row) {
    const std::size_t next = (row + 1) % nbRows;
    for (omUInt32 side = 0; side < nbSides; ++side) {
      const omUInt32 a = rows.vertex(row, side), b = rows.vertex(row, side + 1), c = rows.vertex(next, side),
                     d = rows.vertex(next, side + 1);
      if (!rows.isOnAxis(row)) surface.indices.insert(surface.indices.end(), {a, b, d});
      if (!rows.isOnAxis(next)) surface.indices.insert(surface.indices.end(), {a, d, c});
    }
  }
  return surface;
}

}  // namespace ormix::geom::detail

#pragma once

#include <ORMIXMath/Algebra/PointTypes.h>
#include <ORMIXMath/Export.h>

#include <cstddef>
#include <vector>

/// \file
/// The boundaries of regions as directed edges; not installed.

namespace ormix::detail {

/// An edge of a boundary, with the region to its left where x points to the right and y up.
struct BoundaryEdge {
  PlanarPoint start;
  PlanarPoint end;
  PlanarPoint direction;  ///< from start to end, of length 1
  omReal64 length;        ///< above 0

  PlanarPoint at(omReal64 part) const {
    return part >= length ? end : PlanarPoint{start.x + part * direction.x, start.y + part * direction.y};
  }
};

/// Edges of closed rings: those of ring r are behind those of ring r - 1 and end before ringEnds[r].
struct BoundaryEdges {
  std::vector<BoundaryEdge> edges;
  std::vector<std::size_t> ringEnds;
};

/// The rings of regions, which are to be added in ascending order of the regions.
class BoundaryRings {
 public:
  /// Vertices begin to end of one ring, which is closed by the edge from the last one to the first.
  struct Ring {
    std::size_t begin;
    std::size_t end;
    omUInt32 region;
    bool isHole;
  };

  /// Adds a ring whose last vertex may repeat the first. Vertices that repeat the one before are left out, and a ring
  /// of fewer than two vertices then.
  /// \param isHole whether the region is outside
  template <class T>
  void add(const T* xy, std::size_t nbPoints, omUInt32 region, bool isHole) {
    const std::size_t begin = _points.size();
    for (std::size_t i = 0; i < nbPoints; ++i) {
      const PlanarPoint point = toPlanarPoint(xy[2 * i], xy[2 * i + 1]);
      if (_points.size() == begin || point.x != _points.back().x || point.y != _points.back().y)
        _points.push_back(point);
    }
    closeRing({begin, 0, region, isHole});
  }

  /// Turns each ring so that its region is to the left, by the sign of its area, and multiplies all coordinates by a
  /// power of two where squares of them could overflow or vanish. To be called once, before what follows.
  /// \return false when a coordinate is not finite
  ORMIX_MATH_API bool prepare();

  /// The power of two that prepare() found.
  omReal64 scale() const { return _scale; }
  /// A gap as it is to be given to functions on edges: multiplied by the scale, no larger than what already reaches
  /// from any point to any other, and if it is not 0 wider by the rounding of coordinates, so that what was meant to
  /// lie at the gap does so.
  ORMIX_MATH_API omReal64 scaledGap(omReal64 gap) const;

  const std::vector<PlanarPoint>& points() const { return _points; }
  const std::vector<Ring>& rings() const { return _rings; }

  /// The edges of the rings first to last.
  ORMIX_MATH_API BoundaryEdges edges(std::size_t firstRing, std::size_t lastRing) const;

 private:
  ORMIX_MATH_API void closeRing(Ring ring);

  std::vector<PlanarPoint> _points;
  std::vector<Ring> _rings;
  omReal64 _scale = 1;
  omReal64 _largest = 0;  // of the coordinates, after scaling
};

/// The edge between two points that differ.
ORMIX_MATH_API BoundaryEdge makeEdge(const PlanarPoint& start, const PlanarPoint& end);

}  // namespace ormix::detail

#pragma once

#include <ORMIXGeometry/Entity/3d/Shape/GridAxis.h>
#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Distance/Orientation3d.h>

#include <array>

/// \file
/// Where rows of centres of voxels cross a triangle, decided exactly; not installed.

namespace ormix::geom::detail {

/// A crossing of a row of voxels with a triangle.
struct RowCrossing {
  omUInt32 z;
  omUInt32 y;
  omUInt32 x;       ///< the first voxel whose centre is behind the triangle, or the number of columns
  omInt32 winding;  ///< 1 where a row along x enters what the triangle bounds, -1 where it leaves that
};

/// Finds the crossings of triangles with the rows of centres.
///
/// Ties are decided as if all centres were moved by (ε, ε², ε³), with ε positive and smaller than any number: then no
/// centre is in a plane, and no row meets an edge or a vertex. A centre in a triangle is behind it; a row through an
/// edge, in the projection along x, is in the triangle that is at higher y, or at higher z of an edge parallel to y. So
/// of triangles with a common edge each row crosses as many as it would if nothing were in line, and of bodies with a
/// common face one has a centre in it.
class TriangleCrossings {
 public:
  TriangleCrossings(const GridAxis& x, const GridAxis& y, const GridAxis& z) : _x(x), _y(y), _z(z) {}

  /// Calls visit(crossing) with each crossing of a triangle of finite corners. Constant time for each crossing, and for
  /// each slice with centres between the lowest and the highest corner.
  template <class Visit>
  void visit(const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c, Visit visit) {
    const omInt64 zBegin = _z.first(std::min({a.z, b.z, c.z}));
    const omInt64 zEnd = _z.first(std::max({a.z, b.z, c.z}));
    if (zBegin == zEnd || _y.first(std::min({a.y, b.y, c.y})) == _y.first(std::max({a.y, b.y, c.y}))) return;
    const int facing = ormix::orientation({a.y, a.z}, {b.y, b.z}, {c.y, c.z});
    if (facing == 0) return;
    setPlane(a, b, c, facing);
    const std::array<Edge, 3> edges{edgeOf(a, b), edgeOf(b, c), edgeOf(c, a)};
    for (omInt64 z = zBegin; z < zEnd; ++z) {
      omInt64 ends[2] = {0, 0};
      std::size_t nbEnds = 0;
      const omReal64 height = _z.centre(z);
      for (const Edge& edge : edges)
        if (edge.lower.z <= height && height < edge.upper.z && nbEnds < 2) ends[nbEnds++] = rowBehind(edge, height);
      if (ends[0] > ends[1]) std::swap(ends[0], ends[1]);
      for (omInt64 y = ends[0]; y < ends[1]; ++y)
        visit(RowCrossing{static_cast<omUInt32>(z), static_cast<omUInt32>(y),
                          static_cast<omUInt32>(columnBehind(_y.centre(y), height)), -facing});
    }
  }

 private:
  /// An edge from its lower to its higher z, as seen along x.
  struct Edge {
    SpatialPoint lower, upper;
    omReal64 slope;
    omReal64 bound;  ///< of the error of a computed y
  };

  static Edge edgeOf(const SpatialPoint& a, const SpatialPoint& b);
  omInt64 rowBehind(const Edge& edge, omReal64 z) const;
  void setPlane(const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c, int facing);
  omInt64 columnBehind(omReal64 y, omReal64 z) const;

  GridAxis _x, _y, _z;
  // Of the triangle.
  SpatialPoint _a{}, _b{}, _c{};
  int _facing = 0;
  omInt64 _firstColumn = 0, _lastColumn = 0;  // of its lowest and its highest x
  omReal64 _slopeY = 0, _slopeZ = 0;          // of x in the plane
  omReal64 _boundY = 0, _boundZ = 0, _bound = 0;
};

}  // namespace ormix::geom::detail

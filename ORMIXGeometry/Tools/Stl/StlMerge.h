#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <vector>

namespace ormix::geom {

/// A vertex with the index under which it was read.
struct CoordWithIndex {
  omReal32 x, y, z;
  omUInt32 index;
};

/// The different ones of a list of vertices.
struct MergedCoords {
  std::vector<omReal32> coordColl;  ///< x, y, z of each vertex, in ascending order of (x, y, z)
  std::vector<omUInt32> indexColl;  ///< for each vertex of the list that one's place among the different ones

  std::size_t getNbVertices() const { return coordColl.size() / 3; }
};

/// Merges vertices whose three coordinates are exactly equal. The order is total: -0 equals +0 (and comes out as +0),
/// NaN stands behind all numbers, equal to NaN of the same bits only, by its bits as an unsigned number.
/// Linear in the vertices: hash tables find the different ones, and only those are sorted.
/// \param coordColl three numbers a vertex, at most 2^32 - 2 vertices
ORMIX_GEOMETRY_API MergedCoords removeDoubles(const std::vector<omReal32>& coordColl);

/// Sorts vertices by (x, y, z) in that order, by radix: linear. The coordinates must not be -0.
ORMIX_GEOMETRY_API void sortByCoords(std::vector<CoordWithIndex>& vertices);

}  // namespace ormix::geom

#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <vector>

namespace ormix::geom {

/// A vertex with its index in the order of reading.
struct CoordWithIndex {
  omReal32 x, y, z;  ///< coordinates
  omUInt32 index;    ///< in the order of reading
};

/// A list of vertices without duplicates.
struct MergedCoords {
  std::vector<omReal32> coordColl;  ///< x, y, z of each vertex, in ascending order of (x, y, z)
  std::vector<omUInt32> indexColl;  ///< for each vertex of the original list its index in this one

  /// The number of vertices without duplicates.
  std::size_t getNbVertices() const { return coordColl.size() / 3; }
};

/// Merges vertices whose three coordinates are exactly equal. The order is total: -0 equals +0 and becomes +0; NaN is
/// greater than all numbers, and NaNs are compared by their bits as unsigned numbers.
/// Linear in the vertices: duplicates are found by hash tables, and only the remaining vertices are sorted.
/// \param coordColl three numbers for each vertex, at most 2^32 - 2 vertices
ORMIX_GEOMETRY_API MergedCoords removeDoubles(const std::vector<omReal32>& coordColl);

/// Sorts vertices by x, then y, then z, by radix sort: linear. No coordinate may be -0.
ORMIX_GEOMETRY_API void sortByCoords(std::vector<CoordWithIndex>& vertices);

}  // namespace ormix::geom

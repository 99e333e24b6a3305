#pragma once

#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <benchmarks/support/StarRing.h>

namespace ormix::benchmarks {

/// starRing as an exterior polygon.
template <class T>
geom::Polygon2d<T> starPolygon(std::size_t nbPoints) {
  const std::vector<T> xy = starRing<T>(nbPoints);
  geom::Polygon2d<T> polygon;
  polygon.getPointColl().reserve(nbPoints);
  for (std::size_t i = 0; i < xy.size(); i += 2) polygon.getPointColl().emplace_back(xy[i], xy[i + 1]);
  return polygon;
}

}  // namespace ormix::benchmarks

#pragma once

#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>

#include <cmath>

/// \file
/// Corners of squares and rectangles; not installed.

namespace ormix::geom::detail {

/// The local point (localX, localY) rotated by the orientation (radians) and translated by the centre. Unlike a sum of
/// the orientation and the point's polar angle this is exact for orientation 0 and defined for sizes of 0.
template <class T>
Point2dData<omReal64> orientedCorner(const Point2dData<T>& center, omReal64 localX, omReal64 localY,
                                     omReal64 orientation) {
  const omReal64 cosine = std::cos(orientation);
  const omReal64 sine = std::sin(orientation);
  return {static_cast<omReal64>(center.getX()) + (cosine * localX - sine * localY),
          static_cast<omReal64>(center.getY()) + (sine * localX + cosine * localY)};
}

}  // namespace ormix::geom::detail

#pragma once

#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>

#include <cmath>

/// \file
/// What squares and rectangles compute with; not installed.

namespace ormix::geom::detail {

/// The point of the entity's local frame turned by the orientation about the centre. Turning the local point instead of
/// adding its polar angle to the orientation is exact for orientation 0 and defined for sizes of 0.
template <class T>
Point2dData<omReal64> orientedCorner(const Point2dData<T>& center, omReal64 localX, omReal64 localY,
                                     omReal64 orientation) {
  const omReal64 cosine = std::cos(orientation);
  const omReal64 sine = std::sin(orientation);
  return {static_cast<omReal64>(center.getX()) + (cosine * localX - sine * localY),
          static_cast<omReal64>(center.getY()) + (sine * localX + cosine * localY)};
}

}  // namespace ormix::geom::detail

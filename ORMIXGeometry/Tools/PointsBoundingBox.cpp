#include <ORMIXGeometry/Tools/PointsBoundingBox.h>
#include <ORMIXGeometry/Transform/EnvelopeOf.h>

#include <algorithm>
#include <type_traits>

namespace ormix::geom {

namespace {

/// The first coordinate of an axis that is a zero of either sign; there is one.
template <std::size_t D, class T>
T firstZero(const T* coords) {
  while (*coords != 0) coords += D;
  return *coords;
}

/// The box of at least one point as comparing one after the other gives it: of zeros of both signs it has the first,
/// and a NaN is passed over unless it is the first.
template <std::size_t D, class T>
detail::GrowingBox<T, D> boxOf(const T* coords, std::size_t nbPoints) {
  detail::GrowingBox<T, D> box;
  box.includeAnyZero(coords, nbPoints);
  if constexpr (std::is_floating_point_v<T>) {
    if (!box.isFinite) {
      std::copy(coords, coords + D, box.low.begin());
      std::copy(coords, coords + D, box.high.begin());
      for (std::size_t at = 0; at < D * nbPoints; ++at) box.include(at % D, coords[at], coords[at]);
    }
    for (std::size_t axis = 0; axis < D; ++axis) {
      if (box.low[axis] == 0) box.low[axis] = firstZero<D>(coords + axis);
      if (box.high[axis] == 0) box.high[axis] = firstZero<D>(coords + axis);
    }
  }
  return box;
}

}  // namespace

template <class T>
BoundingBox2d<T> pointsBoundingBox(const std::vector<Point2dData<T>>& points) {
  if (points.empty()) return {T(0), T(0), T(0), T(0)};
  const auto box = boxOf<2>(coordinates(points), points.size());
  return {box.low[0], box.low[1], box.high[0], box.high[1]};
}

template <class T>
BoundingBox3d<T> pointsBoundingBox(const std::vector<Point3dData<T>>& points) {
  if (points.empty()) return {};
  const auto box = boxOf<3>(coordinates(points), points.size());
  return {box.low[0], box.low[1], box.low[2], box.high[0], box.high[1], box.high[2]};
}

#define ORMIX_GEOMETRY_INSTANTIATE_BOX(T)                                                             \
  template ORMIX_GEOMETRY_API BoundingBox2d<T> pointsBoundingBox(const std::vector<Point2dData<T>>&); \
  template ORMIX_GEOMETRY_API BoundingBox3d<T> pointsBoundingBox(const std::vector<Point3dData<T>>&);
ORMIX_GEOMETRY_INSTANTIATE_BOX(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_BOX(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_BOX(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_BOX(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_BOX

}  // namespace ormix::geom

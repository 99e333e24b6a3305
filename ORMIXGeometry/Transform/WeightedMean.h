#pragma once

#include <ORMIXMath/Shape/CompensatedSum.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

/// \file
/// Means of points, edges and triangles in D dimensions, about a local origin; not installed.

namespace ormix::geom::detail {

template <std::size_t D>
using Offset = std::array<omReal64, D>;

/// The mean of places with weights. Sums are compensated, and of offsets from an origin, the first place, so that the
/// mean is right to a few units in the last place of the set's extent wherever the set lies.
template <std::size_t D>
class WeightedMean {
 public:
  /// The offset of a point; the first point ever given becomes the origin.
  template <class T>
  Offset<D> offsetOf(const T* point) {
    if (!_hasOrigin)
      for (std::size_t axis = 0; axis < D; ++axis) _origin[axis] = omReal64(point[axis]);
    _hasOrigin = true;
    Offset<D> offset;
    for (std::size_t axis = 0; axis < D; ++axis) offset[axis] = omReal64(point[axis]) - _origin[axis];
    return offset;
  }

  void add(omReal64 weight, Offset<D> offset) {
    for (omReal64& part : offset) part *= weight;
    addSum(weight, offset);
  }
  /// Several places together: the sum of their weights, and that of weight times offset.
  void addSum(omReal64 weight, const Offset<D>& weighted) {
    ormix::detail::addCompensated(weight, _weight, _weightError);
    for (std::size_t axis = 0; axis < D; ++axis)
      ormix::detail::addCompensated(weighted[axis], _sum[axis], _sumError[axis]);
  }

  omReal64 weight() const { return ormix::detail::roundedSum(_weight, _weightError); }

  /// False, `mean` unspecified, where the weights are 0 or anything is not finite.
  bool mean(Offset<D>& mean) const {
    const omReal64 total = weight();
    bool isFinite = total != 0;
    for (std::size_t axis = 0; axis < D; ++axis) {
      mean[axis] = _origin[axis] + ormix::detail::roundedSum(_sum[axis], _sumError[axis]) / total;
      isFinite = isFinite && std::isfinite(mean[axis]);
    }
    return isFinite;
  }

 private:
  bool _hasOrigin = false;
  Offset<D> _origin{};
  omReal64 _weight = 0;
  omReal64 _weightError = 0;
  Offset<D> _sum{};
  Offset<D> _sumError{};
};

template <std::size_t D>
omReal64 lengthOf(const Offset<D>& offset) {
  omReal64 length = 0;
  for (const omReal64 part : offset) length = std::hypot(length, part);
  return length;
}

/// Adds points with the weight 1 each. Blocks of so few that their plain sums lose less than 1e-14 are added with
/// compensation.
template <std::size_t D, class T>
void addPoints(const T* coords, std::size_t nbPoints, WeightedMean<D>& mean) {
  constexpr std::size_t blockSize = 32;
  for (std::size_t first = 0; first < nbPoints; first += blockSize) {
    const std::size_t last = std::min(first + blockSize, nbPoints);
    Offset<D> sum{};
    for (std::size_t i = first; i < last; ++i) {
      const Offset<D> offset = mean.offsetOf(coords + D * i);
      for (std::size_t axis = 0; axis < D; ++axis) sum[axis] += offset[axis];
    }
    mean.addSum(omReal64(last - first), sum);
  }
}

/// Adds the edges of a ring, the last vertex to the first too, with their lengths as weights.
template <std::size_t D, class T>
void addEdges(const T* coords, std::size_t nbPoints, WeightedMean<D>& mean) {
  if (nbPoints == 0) return;
  Offset<D> from = mean.offsetOf(coords + D * (nbPoints - 1));
  for (std::size_t i = 0; i < nbPoints; ++i) {
    const Offset<D> to = mean.offsetOf(coords + D * i);
    Offset<D> edge, middle;
    for (std::size_t axis = 0; axis < D; ++axis) {
      edge[axis] = to[axis] - from[axis];
      middle[axis] = from[axis] / 2 + to[axis] / 2;
    }
    mean.add(lengthOf<D>(edge), middle);
    from = to;
  }
}

/// An area or volume is 0 where it is at most this times length or area and extent: what its sum may be off by.
inline constexpr omReal64 s_flatness = 0x1p-50;

}  // namespace ormix::geom::detail

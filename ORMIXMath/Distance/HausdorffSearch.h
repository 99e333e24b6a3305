#pragma once

#include <ORMIXMath/Distance/DirectedHausdorff.h>
#include <ORMIXMath/Distance/PointSegmentDistance.h>

#include <algorithm>
#include <limits>

/// \file
/// What the searches for the farthest point share; not installed.

namespace ormix::detail::hausdorff {

inline constexpr omReal64 s_infinity = std::numeric_limits<omReal64>::infinity();

/// Whether a point is strictly inside the region of a set.
inline bool isInside(const PlanarSet& set, const PlanarPoint& point) {
  if (!set.region) return false;
  const RingCrossings crossings = set.region->crossings(point.x, point.y);
  return crossings.isOdd && !crossings.isOnBoundary;
}

/// A point and what is nearest to it on the boundary of b.
struct Place {
  PlanarPoint point;
  std::size_t item;
  omReal64 distance;
};

/// The distance of a point from one of the segments.
inline omReal64 distanceTo(const SegmentSet& b, std::size_t item, const PlanarPoint& point) {
  PlanarPoint nearest;
  return pointSegmentDistance(point, b[item], nearest);
}

/// The nearest segment to a point.
/// \param guess any of the segments; a near one saves time
inline Place placeAt(const SegmentSet& b, const PlanarPoint& point, std::size_t guess) {
  Place place{point, guess, distanceTo(b, guess, point)};
  b.tree().nearest(IndexPoint<2>{point.x, point.y}, place.distance * place.distance, [&](std::size_t item) {
    const omReal64 distance = distanceTo(b, item, point);
    if (!(distance < place.distance)) return s_infinity;
    place = {point, item, distance};
    return distance * distance;
  });
  return place;
}

/// The largest distance so far, and the bound below which nothing is of interest.
class Best {
 public:
  /// \param start any point of a
  Best(const PlanarSet& b, const PlanarPoint& start, omReal64 floor, omReal64 magnitude)
      : _b(b), _value(floor), _rounding(4e-16 * magnitude), _farthest{0, start, start} {
    const Place place = placeAt(b.boundary, start, 0);
    if (place.distance > 0 && !isInside(b, start)) {
      set(place);
      _value = std::max(_value, floor);
    }
  }

  /// Takes a point of a; one inside b has the distance 0.
  void take(const Place& place) {
    if (place.distance > _value && !isInside(_b, place.point)) set(place);
  }
  /// Takes a point that is known to be outside b.
  void set(const Place& place) {
    _farthest.onA = place.point;
    _farthest.distance = pointSegmentDistance(place.point, _b.boundary[place.item], _farthest.onB);
    _value = _farthest.distance;
  }
  omReal64 value() const { return _value; }
  bool isAbove(omReal64 upper, omReal64 tolerance = 1e-14) const {
    return upper > _value * (1 + tolerance) + _rounding;
  }
  const PlanarNearestPair& farthest() const { return _farthest; }

 private:
  const PlanarSet& _b;
  omReal64 _value;
  omReal64 _rounding;
  PlanarNearestPair _farthest;
};

/// The search inside the region of a, which it must have; DirectedHausdorff says how.
/// \return by how much the answer may be too small
omReal64 searchInterior(const PlanarSet& a, const PlanarSet& b, Best& best);

}  // namespace ormix::detail::hausdorff

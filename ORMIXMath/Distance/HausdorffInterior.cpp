#include <ORMIXMath/Distance/HausdorffSearch.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <array>
#include <cmath>
#include <vector>

namespace ormix::detail::hausdorff {

namespace {

/// The search inside the region of a.
class InteriorSearch {
 public:
  InteriorSearch(const PlanarSet& a, const PlanarSet& b, Best& best) : _a(a), _b(b), _best(best) {}

  /// \return by how much the answer may be too small
  omReal64 search() {
    const IndexBox<2>& box = _a.boundary.tree().envelope();
    const omReal64 half = std::max(0.5 * box.high[0] - 0.5 * box.low[0], 0.5 * box.high[1] - 0.5 * box.low[1]);
    push({0.5 * box.low[0] + 0.5 * box.high[0], 0.5 * box.low[1] + 0.5 * box.high[1]}, half, 0);
    for (std::size_t count = 0; !_waiting.empty(); ++count) {
      std::pop_heap(_waiting.begin(), _waiting.end());
      const Square square = _waiting.back();
      _waiting.pop_back();
      if (!_best.isAbove(square.upper, s_tolerance)) return 0;
      if (count == DirectedHausdorff::s_mostSquares) return square.upper - _best.value();
      const omReal64 half2 = 0.5 * square.half;
      for (const omReal64 x : {-half2, half2})
        for (const omReal64 y : {-half2, half2})
          push({square.place.point.x + x, square.place.point.y + y}, half2, square.place.item);
    }
    return 0;
  }

 private:
  static constexpr omReal64 s_tolerance = 1e-12;
  static constexpr std::size_t s_nbAngles = 96;
  static constexpr std::size_t s_nbSectors = 6;
  static constexpr std::size_t s_mostNear = 4096;
  static constexpr std::size_t s_longestChain = 32;

  /// A square by its centre and half its side.
  struct Square {
    omReal64 upper;
    omReal64 half;
    Place place;

    friend bool operator<(const Square& s, const Square& r) { return s.upper < r.upper; }
  };
  /// A segment near a square, with the direction from it to the centre; none at infinity.
  struct Near {
    std::size_t item = 0;
    omReal64 distance = s_infinity;
    PlanarPoint direction{0, 0};
  };
  /// The segments that may be nearest somewhere in a square, by their directions: in which of equal angles there are
  /// some, and the nearest one in each sixth of a turn.
  struct NearSegments {
    std::array<bool, s_nbAngles> hasAngle{};
    std::array<Near, s_nbSectors> ofSector;
    std::size_t nb = 0;
  };

  void push(const PlanarPoint& centre, omReal64 half, std::size_t guess) {
    const omReal64 reach = half * 1.4142135623730952;
    if (!_best.isAbove(distanceTo(_b.boundary, guess, centre) + reach, s_tolerance)) return;
    Square square{0, half, placeAt(_b.boundary, centre, guess)};
    square.upper = square.place.distance + reach;
    if (!_best.isAbove(square.upper, s_tolerance)) return;
    const bool isInsideB = isInside(_b, centre);
    if (isInsideB && square.place.distance >= reach) return;
    const bool isInsideA = isInside(_a, centre);
    if (!isInsideA && placeAt(_a.boundary, centre, 0).distance >= reach) return;
    if (isInsideA && !isInsideB && square.place.distance > _best.value()) _best.set(square.place);
    if (square.place.distance > 4 * reach ? !boundByNear(square, reach) : hasOneChain(square, reach)) return;
    if (!_best.isAbove(square.upper, s_tolerance)) return;
    _waiting.push_back(square);
    std::push_heap(_waiting.begin(), _waiting.end());
  }

  /// Whether the segments that may be nearest somewhere in the square are one, or two with a common end that do not
  /// overlap, or a chain without ends near by and with directions less than an eighth of a turn off that of its first
  /// one. Then the distance has no maximum in the square. That of the two would be at the middle of two feet, which a
  /// wedge does not have; beside the chain, which is a graph over its first direction, all feet are on one side.
  bool hasOneChain(const Square& square, omReal64 reach) const {
    const PlanarPoint& centre = square.place.point;
    const omReal64 radius = square.place.distance + 2 * reach;
    std::array<std::size_t, s_longestChain> items;
    std::size_t nb = 0;
    const auto add = [&](std::size_t item) {
      if (distanceTo(_b.boundary, item, centre) > radius) return true;
      if (nb == s_longestChain) return false;
      items[nb++] = item;
      return true;
    };
    if (!_b.boundary.tree().visitWithin(IndexPoint<2>{centre.x, centre.y}, radius, add)) return false;
    if (nb == 1) return true;
    std::sort(items.begin(), items.begin() + static_cast<std::ptrdiff_t>(nb));
    // Along a ring, which may begin inside the chain.
    const auto follows = [&](std::size_t i, std::size_t j) {
      const PlanarPoint& end = _b.boundary[items[i]].p1;
      const PlanarPoint& start = _b.boundary[items[j]].p0;
      return end.x == start.x && end.y == start.y;
    };
    std::size_t nbLinks = 0, first = 0;
    for (std::size_t i = 0; i < nb; ++i) {
      const std::size_t next = i + 1 < nb ? i + 1 : 0;
      if (follows(i, next))
        ++nbLinks;
      else
        first = next;
    }
    if (nbLinks + 1 != nb) return false;
    const PlanarSegment& start = _b.boundary[items[first]];
    const PlanarSegment& end = _b.boundary[items[(first + nb - 1) % nb]];
    const PlanarPoint along{start.p1.x - start.p0.x, start.p1.y - start.p0.y};
    const auto component = [&along](const PlanarSegment& segment) {
      const PlanarPoint v{segment.p1.x - segment.p0.x, segment.p1.y - segment.p0.y};
      return PlanarPoint{v.x * along.x + v.y * along.y, v.y * along.x - v.x * along.y};
    };
    if (nb == 2) return component(end).x > 0 || component(end).y != 0;
    const auto isFar = [&](const PlanarPoint& p) { return std::hypot(p.x - centre.x, p.y - centre.y) > radius; };
    if (!isFar(start.p0) || !isFar(end.p1)) return false;
    for (std::size_t i = 0; i < nb; ++i)
      if (const PlanarPoint v = component(_b.boundary[items[i]]); !(std::abs(v.y) < 0.9 * v.x)) return false;
    return true;
  }

  /// Lowers the bound by the segments that may be the nearest somewhere in the square.
  /// \return false where the distance has no maximum in the square
  bool boundByNear(Square& square, omReal64 reach) const {
    const PlanarPoint& centre = square.place.point;
    const omReal64 distance = square.place.distance;
    NearSegments near;
    const auto add = [&](std::size_t item) {
      PlanarPoint foot;
      const omReal64 toItem = pointSegmentDistance(centre, _b.boundary[item], foot);
      if (toItem > distance + 2 * reach) return true;
      const PlanarPoint direction{(centre.x - foot.x) / toItem, (centre.y - foot.y) / toItem};
      const omReal64 turn = std::atan2(direction.y, direction.x) / s_twoPi + 0.5;
      near.hasAngle[static_cast<std::size_t>(turn * s_nbAngles) % s_nbAngles] = true;
      Near& ofSector = near.ofSector[static_cast<std::size_t>(turn * s_nbSectors) % s_nbSectors];
      if (toItem < ofSector.distance) ofSector = {item, toItem, direction};
      return ++near.nb < s_mostNear;
    };
    const bool areAll = _b.boundary.tree().visitWithin(IndexPoint<2>{centre.x, centre.y}, distance + 2 * reach, add);
    if (areAll && isMonotone(near, reach / (distance - reach))) return false;
    lowerBound(near, square);
    return true;
  }

  /// Whether all directions stay in an open half plane when they turn by at most a chord of the unit circle.
  static bool isMonotone(const NearSegments& near, omReal64 chord) {
    std::size_t longest = 0, current = 0;
    for (std::size_t i = 0; i < 2 * s_nbAngles; ++i) {
      current = near.hasAngle[i % s_nbAngles] ? 0 : current + 1;
      longest = std::max(longest, current);
    }
    const omReal64 gap = s_twoPi * static_cast<omReal64>(longest) / s_nbAngles;
    return gap > s_pi + 4 * std::asin(std::min(1.0, 0.5 * chord));
  }

  /// Bounds by convex combinations of the distances to one, two and three segments, one of each direction: of three
  /// with the weights for which the distances do not change at the centre.
  void lowerBound(const NearSegments& near, Square& square) const {
    const auto& chosen = near.ofSector;
    const auto isThere = [&chosen](std::size_t i) { return chosen[i].distance < s_infinity; };
    std::array<std::array<omReal64, 4>, s_nbSectors> atCorners{};
    for (std::size_t i = 0; i < s_nbSectors; ++i)
      for (std::size_t k = 0; k < 4 && isThere(i); ++k)
        atCorners[i][k] = distanceTo(_b.boundary, chosen[i].item,
                                     {square.place.point.x + (k % 2 == 0 ? -square.half : square.half),
                                      square.place.point.y + (k < 2 ? -square.half : square.half)});
    const auto take = [&](std::size_t i, omReal64 ofI, std::size_t j, omReal64 ofJ, std::size_t l, omReal64 ofL) {
      omReal64 upper = 0;
      for (std::size_t k = 0; k < 4; ++k)
        upper = std::max(upper, ofI * atCorners[i][k] + ofJ * atCorners[j][k] + ofL * atCorners[l][k]);
      square.upper = std::min(square.upper, upper);
    };
    for (std::size_t i = 0; i < s_nbSectors; ++i) {
      if (!isThere(i)) continue;
      take(i, 1, i, 0, i, 0);
      for (std::size_t j = i + 1; j < s_nbSectors; ++j) {
        if (!isThere(j)) continue;
        take(i, 0.5, j, 0.5, j, 0);
        for (std::size_t l = j + 1; l < s_nbSectors; ++l) {
          if (!isThere(l)) continue;
          const auto cross = [](const PlanarPoint& p, const PlanarPoint& q) { return p.x * q.y - p.y * q.x; };
          const omReal64 ofI = cross(chosen[j].direction, chosen[l].direction);
          const omReal64 ofJ = cross(chosen[l].direction, chosen[i].direction);
          const omReal64 ofL = cross(chosen[i].direction, chosen[j].direction);
          const omReal64 sum = ofI + ofJ + ofL;
          if (ofI / sum >= 0 && ofJ / sum >= 0 && ofL / sum >= 0) take(i, ofI / sum, j, ofJ / sum, l, ofL / sum);
        }
      }
    }
  }

  const PlanarSet& _a;
  const PlanarSet& _b;
  Best& _best;
  std::vector<Square> _waiting;
};

}  // namespace

omReal64 searchInterior(const PlanarSet& a, const PlanarSet& b, Best& best) {
  return InteriorSearch(a, b, best).search();
}

}  // namespace ormix::detail::hausdorff

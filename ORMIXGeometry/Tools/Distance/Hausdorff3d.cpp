#include <ORMIXGeometry/Message/ToolsMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Tools/Distance/Hausdorff3d.h>
#include <ORMIXGeometry/Tools/Distance/SpatialBody.h>
#include <ORMIXMath/Algebra/VectorArithmetic.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace ormix::geom {

namespace {

using namespace ormix::detail;
using detail::SpatialBody;

constexpr omReal64 s_infinity = std::numeric_limits<omReal64>::infinity();
constexpr auto s_noFacet = static_cast<omUInt32>(-1);

// Error of a computed distance relative to the largest coordinate, with a margin.
constexpr omReal64 s_rounding = 1e-13;

// The least tolerance relative to the largest size: parts of triangles do not become smaller.
constexpr omReal64 s_leastTolerance = 1e-9;

/// A triangle as its corner and two edges, with the products of these.
struct PreparedFacet {
  SpatialPoint origin, u, v;
  omReal64 uu, uv, vv;

  explicit PreparedFacet(const std::array<SpatialPoint, 3>& t)
      : origin(t[0]), u(t[1] - t[0]), v(t[2] - t[0]), uu(dot(u, u)), uv(dot(u, v)), vv(dot(v, v)) {}

  /// Of the point nearest to p: parameters along u and v. The foot of the perpendicular if that is inside, else of the
  /// nearest of the three edges, which degenerate triangles have, too.
  std::array<omReal64, 2> nearest(const SpatialPoint& p) const {
    const SpatialPoint d = p - origin;
    const omReal64 du = dot(d, u), dv = dot(d, v), area = uu * vv - uv * uv;
    const omReal64 s = vv * du - uv * dv, t = uu * dv - uv * du;
    if (s >= 0 && t >= 0 && s + t <= area && area > 0) return {s / area, t / area};
    const auto clamped = [](omReal64 along, omReal64 square) {
      return along > 0 ? (along < square ? along / square : 1.0) : 0.0;
    };
    const omReal64 ww = uu - 2 * uv + vv;
    std::array<omReal64, 2> best{clamped(du, uu), 0};
    omReal64 least = squareOf(best, du, dv);
    const omReal64 along = clamped((uu - uv) - du + dv, ww);
    for (const std::array<omReal64, 2>& place :
         {std::array<omReal64, 2>{0, clamped(dv, vv)}, std::array<omReal64, 2>{1 - along, along}}) {
      const omReal64 square = squareOf(place, du, dv);
      if (square < least) {
        least = square;
        best = place;
      }
    }
    return best;
  }
  SpatialPoint at(const std::array<omReal64, 2>& place) const { return origin + (u * place[0] + v * place[1]); }
  omReal64 squareTo(const SpatialPoint& p) const {
    const SpatialPoint d = p - at(nearest(p));
    return dot(d, d);
  }

 private:
  /// The square of the distance less that of the origin.
  omReal64 squareOf(const std::array<omReal64, 2>& place, omReal64 du, omReal64 dv) const {
    const auto [s, t] = place;
    return s * (s * uu + 2 * (t * uv - du)) + t * (t * vv - 2 * dv);
  }
};

/// The search for the point of a that is farthest from b.
class Search {
 public:
  Search(const SpatialBody& a, const SpatialBody& b, const HausdorffOptions& options, const HausdorffBounds& start)
      : _a(a), _b(b), _options(options), _bounds(start) {
    _facets.reserve(b.facets.size());
    for (std::size_t i = 0; i < b.facets.size(); ++i) _facets.emplace_back(b.corners(i));
    const omReal64 size = std::max(detail::magnitude(a), detail::magnitude(b));
    _leastTolerance = std::max({s_leastTolerance * size, options.tolerance, 0.0});
    _rounding = s_rounding * size;
  }

  /// Stops as soon as a point farther than this is found, and bounds nothing more closely than to it.
  void setLimit(omReal64 limit) { _limit = limit; }

  HausdorffBounds run() {
    prepareVertices();
    constexpr std::size_t progressSteps = 64;
    const std::size_t step = std::max<std::size_t>(1, _a.facets.size() / progressSteps);
    for (std::size_t i = 0; i < _a.facets.size() && !isBeyondLimit(); ++i) {
      if (i % step == 0 && _options.progress && !_options.progress(omReal64(i) / omReal64(_a.facets.size())))
        _isStopped = true;
      const SpatialBody::Facet& facet = _a.facets[i];
      bound({_corners[facet[0]], _corners[facet[1]], _corners[facet[2]]});
    }
    if (_options.progress) _options.progress(1);
    _bounds.upper = isBeyondLimit() ? s_infinity : std::max(_upper, _bounds.lower) + _rounding;
    _bounds.isComplete = !_isStopped && !isBeyondLimit();
    return _bounds;
  }

 private:
  /// A point of a, and a facet of b that is near to it.
  struct Corner {
    SpatialPoint point;
    omReal64 square;
    omUInt32 facet;
    bool isNearest;
  };
  using Part = std::array<Corner, 3>;

  bool isBeyondLimit() const { return _bounds.lower > _limit; }

  /// What needs no closer bound.
  omReal64 target() const {
    const omReal64 relative = _options.relativeTolerance > 0 ? _options.relativeTolerance * _bounds.lower : 0;
    return std::max(_limit < s_infinity ? _limit - _rounding : 0, _bounds.lower + std::max(relative, _leastTolerance));
  }

  omReal64 squareTo(const SpatialPoint& p, omUInt32 facet) const { return _facets[facet].squareTo(p); }

  void take(Corner& corner, omUInt32 facet) const {
    const omReal64 square = squareTo(corner.point, facet);
    if (square < corner.square) {
      corner.square = square;
      corner.facet = facet;
    }
  }

  /// Finds the nearest facet, and raises the lower bound where it is far.
  void makeNearest(Corner& corner) {
    if (corner.isNearest || _isStopped) return;
    const SpatialPoint& p = corner.point;
    const auto found = _b.tree.nearest(IndexPoint<3>{p.x, p.y, p.z}, corner.square,
                                       [&](std::size_t item) { return squareTo(p, static_cast<omUInt32>(item)); });
    if (found.item != BoxTree<3>::s_none) {
      corner.facet = static_cast<omUInt32>(found.item);
      corner.square = found.square;
    }
    corner.isNearest = true;
    if (++_bounds.nbSearches >= _options.maxNbSearches) _isStopped = true;
    const omReal64 distance = std::sqrt(corner.square);
    if (!(distance > _bounds.lower)) return;
    const SpatialPoint to = _facets[corner.facet].at(_facets[corner.facet].nearest(p));
    _bounds.lower = distance;
    _bounds.from = {p.x, p.y, p.z};
    _bounds.to = {to.x, to.y, to.z};
  }

  /// Gives each vertex a near facet, that of the vertex before where this is not farther than another point is known to
  /// be, so that the lower bound becomes that of all vertices. Along the triangles neighbours follow each other.
  void prepareVertices() {
    _corners.resize(_a.vertices.size());
    for (std::size_t v = 0; v < _corners.size(); ++v) _corners[v] = {_a.vertices[v], s_infinity, s_noFacet, false};
    omUInt32 last = s_noFacet;
    const auto visit = [&](Corner& corner) {
      if (last != s_noFacet) take(corner, last);
      if (!(corner.square <= _bounds.lower * _bounds.lower)) makeNearest(corner);
      // Without a search left, any facet bounds the distance.
      if (corner.facet == s_noFacet) take(corner, 0);
      last = corner.facet;
    };
    // A few everywhere first, so that the bound soon spares searches.
    const std::size_t step = std::max<std::size_t>(1, _corners.size() / 256);
    for (std::size_t v = 0; v < _corners.size() && !isBeyondLimit(); v += step) visit(_corners[v]);
    for (const SpatialBody::Facet& facet : _a.facets)
      for (const omUInt32 v : facet) {
        if (isBeyondLimit()) return;
        if (_corners[v].facet == s_noFacet)
          visit(_corners[v]);
        else
          last = _corners[v].facet;
      }
  }

  /// An upper bound for all points of a part: of one facet, the farthest corner.
  omReal64 squareBoundOf(const Part& part, omUInt32 facet) const {
    omReal64 largest = 0;
    for (const Corner& corner : part)
      largest = std::max(largest, corner.facet == facet ? corner.square : squareTo(corner.point, facet));
    return largest;
  }
  omReal64 squareBoundOf(const Part& part) const {
    omReal64 least = squareBoundOf(part, part[0].facet);
    for (std::size_t i = 1; i < 3; ++i)
      if (part[i].facet != part[0].facet && !(i == 2 && part[2].facet == part[1].facet))
        least = std::min(least, squareBoundOf(part, part[i].facet));
    // Beside that, no point of a part is farther from its nearest corner than its two longest edges are long.
    const omReal64 reach = std::sqrt(std::max({edgeSquare(part, 0), edgeSquare(part, 1), edgeSquare(part, 2)}));
    const omReal64 farthest = std::sqrt(std::max({part[0].square, part[1].square, part[2].square})) + reach;
    return std::min(least, farthest * farthest);
  }
  static omReal64 edgeSquare(const Part& part, std::size_t i) {
    const SpatialPoint along = part[(i + 1) % 3].point - part[i].point;
    return dot(along, along);
  }

  bool isDone(const Part& part) {
    const omReal64 bound = squareBoundOf(part), wanted = target();
    if (!(bound <= wanted * wanted)) return false;
    _upper = std::max(_upper, std::sqrt(bound));
    return true;
  }

  void bound(const Part& whole) {
    _waiting.assign(1, whole);
    while (!_waiting.empty() && !isBeyondLimit()) {
      const Part part = _waiting.back();
      _waiting.pop_back();
      if (isDone(part)) continue;
      if (_isStopped) {
        _upper = std::max(_upper, std::sqrt(squareBoundOf(part)));
        continue;
      }
      omUInt32 middleFacet = 0;
      if (!isDoneByMiddle(part, middleFacet)) split(part, middleFacet);
    }
  }

  /// By the facet nearest to the middle, which is clear where corners have several; answered if it does not do.
  bool isDoneByMiddle(const Part& part, omUInt32& facet) {
    Corner middle{(part[0].point + (part[1].point + part[2].point)) / 3, s_infinity, s_noFacet, false};
    for (const Corner& corner : part) take(middle, corner.facet);
    makeNearest(middle);
    facet = middle.facet;
    const omReal64 bound = squareBoundOf(part, middle.facet), wanted = target();
    if (!(bound <= wanted * wanted)) return false;
    _upper = std::max(_upper, std::sqrt(bound));
    return true;
  }

  /// How far from a point that is near enough to a facet to one that is not all points are, as a share of the way; less
  /// by at most a small part of what near enough is.
  omReal64 nearShare(const SpatialPoint& from, const SpatialPoint& to, omUInt32 facet, omReal64 square) const {
    constexpr omReal64 precision = 1.0 / 16;
    const SpatialPoint along = to - from;
    const omReal64 enough = std::max(precision * std::sqrt(square / dot(along, along)), 1e-12);
    omReal64 low = 0, high = 1;
    while (high - low > enough) {
      const omReal64 middle = 0.5 * (low + high);
      (squareTo(from + along * middle, facet) <= square ? low : high) = middle;
    }
    return low;
  }

  /// A corner from which, or to which, edges leave what is near enough to a facet, and the shares of the ways to there
  /// on the next edge and on the one before.
  struct Removal {
    std::size_t corner = 0;
    bool isKept = false;  ///< whether the corner alone stays
    omReal64 onNext = 0;
    omReal64 onLast = 0;
    omReal64 area = 0;  ///< share of the part that goes
  };

  /// What of a part is near enough to a facet, as far as its ends on two edges tell: that is convex.
  Removal removalBy(const Part& part, omUInt32 facet, omReal64 square) const {
    std::array<bool, 3> isNear{};
    for (std::size_t i = 0; i < 3; ++i) isNear[i] = squareTo(part[i].point, facet) <= square;
    const int nbNear = int(isNear[0]) + int(isNear[1]) + int(isNear[2]);
    Removal removal;
    if (nbNear != 1 && nbNear != 2) return removal;
    removal.isKept = nbNear == 2;
    while (isNear[removal.corner] == removal.isKept) ++removal.corner;
    const SpatialPoint &at = part[removal.corner].point, &next = part[(removal.corner + 1) % 3].point,
                       &last = part[(removal.corner + 2) % 3].point;
    if (removal.isKept) {
      removal.onNext = 1 - nearShare(next, at, facet, square);
      removal.onLast = 1 - nearShare(last, at, facet, square);
      removal.area = 1 - removal.onNext * removal.onLast;
    } else {
      removal.onNext = nearShare(at, next, facet, square);
      removal.onLast = nearShare(at, last, facet, square);
      removal.area = removal.onNext * removal.onLast;
    }
    return removal;
  }

  Corner cornerAt(const Part& part, std::size_t from, std::size_t to, omReal64 share, omUInt32 middleFacet) {
    Corner cut{part[from].point + (part[to].point - part[from].point) * share, s_infinity, s_noFacet, false};
    for (const omUInt32 facet : {part[0].facet, part[1].facet, part[2].facet, middleFacet}) take(cut, facet);
    if (cut.square > _bounds.lower * _bounds.lower) makeNearest(cut);
    return cut;
  }

  /// Replaces a part by smaller ones: without what is near enough to the facet of the middle or of a corner, or, where
  /// that is little, by its halves.
  void split(const Part& part, omUInt32 middleFacet) {
    const omReal64 square = target() * target();
    constexpr omReal64 goodArea = 0.25;
    Removal best;
    for (const omUInt32 facet : {middleFacet, part[0].facet, part[1].facet, part[2].facet}) {
      const Removal removal = removalBy(part, facet, square);
      if (removal.area > best.area) best = removal;
      if (best.area > goodArea) break;
    }
    constexpr omReal64 leastArea = 0.01;
    if (best.area < leastArea && !(part[0].isNearest && part[1].isNearest && part[2].isNearest)) {
      // Their own facets may be better than those that were near by.
      Part again = part;
      for (Corner& corner : again) makeNearest(corner);
      _waiting.push_back(again);
      return;
    }
    if (best.area < leastArea) {
      std::size_t i = 0;
      for (std::size_t k = 1; k < 3; ++k)
        if (edgeSquare(part, k) > edgeSquare(part, i)) i = k;
      const std::size_t next = (i + 1) % 3, last = (i + 2) % 3;
      const Corner cut = cornerAt(part, i, next, 0.5, middleFacet);
      _waiting.push_back({part[i], cut, part[last]});
      _waiting.push_back({cut, part[next], part[last]});
      return;
    }
    _upper = std::max(_upper, target());
    const std::size_t i = best.corner, next = (i + 1) % 3, last = (i + 2) % 3;
    const Corner onNext = cornerAt(part, i, next, best.onNext, middleFacet);
    const Corner onLast = cornerAt(part, i, last, best.onLast, middleFacet);
    if (best.isKept) {
      _waiting.push_back({part[i], onNext, onLast});
    } else {
      _waiting.push_back({onNext, part[next], part[last]});
      _waiting.push_back({onNext, part[last], onLast});
    }
  }

  const SpatialBody& _a;
  const SpatialBody& _b;
  const HausdorffOptions& _options;
  HausdorffBounds _bounds;
  std::vector<PreparedFacet> _facets;  // of b
  std::vector<Corner> _corners;        // the vertices of a
  std::vector<Part> _waiting;
  omReal64 _leastTolerance = 0;
  omReal64 _rounding = 0;
  omReal64 _limit = s_infinity;
  omReal64 _upper = 0;
  bool _isStopped = false;
};

void requireFacets(const PreparedEntity3d& entity) {
  if (entity.body().kind == detail::eBK_Facets) return;
  logAndThrow(formatMessage<eToolsMessage>(eToolsMessage::eTM_NoFacets), __PRETTY_FUNCTION__, __FILE__, __LINE__);
}

/// One direction, from bounds of the other one, with the limit if there is one.
HausdorffBounds directed(const PreparedEntity3d& a, const PreparedEntity3d& b, const HausdorffOptions& options,
                         omReal64 limit, const HausdorffBounds& start) {
  requireFacets(a);
  requireFacets(b);
  // Squares of distances neither overflow nor underflow.
  const omReal64 size = std::max(detail::magnitude(a.body()), detail::magnitude(b.body()));
  constexpr int largestExponent = 200;
  const int exponent = size > 0 ? -std::ilogb(size) : 0;
  if (std::abs(exponent) <= largestExponent) {
    Search search(a.body(), b.body(), options, start);
    search.setLimit(limit);
    return search.run();
  }
  const SpatialBody scaledA = detail::scaled(a.body(), exponent), scaledB = detail::scaled(b.body(), exponent);
  const auto scaleBounds = [](HausdorffBounds& bounds, int power) {
    for (omReal64* value : {&bounds.lower, &bounds.upper}) *value = std::ldexp(*value, power);
    for (Point3dData<omReal64>* p : {&bounds.from, &bounds.to})
      p->setCoords(std::ldexp(p->getX(), power), std::ldexp(p->getY(), power), std::ldexp(p->getZ(), power));
  };
  HausdorffOptions scaledOptions = options;
  scaledOptions.tolerance = std::ldexp(options.tolerance, exponent);
  HausdorffBounds scaledStart = start;
  scaleBounds(scaledStart, exponent);
  Search search(scaledA, scaledB, scaledOptions, scaledStart);
  search.setLimit(std::ldexp(limit, exponent));
  HausdorffBounds bounds = search.run();
  scaleBounds(bounds, -exponent);
  return bounds;
}

}  // namespace

HausdorffBounds directedHausdorff(const PreparedEntity3d& a, const PreparedEntity3d& b,
                                  const HausdorffOptions& options) {
  return directed(a, b, options, s_infinity, {});
}

HausdorffBounds hausdorff(const PreparedEntity3d& a, const PreparedEntity3d& b, const HausdorffOptions& options) {
  const HausdorffBounds fromA = directed(a, b, options, s_infinity, {});
  // What is not farther than this need not be known.
  HausdorffBounds start = fromA;
  start.nbSearches = 0;
  HausdorffBounds both = directed(b, a, options, s_infinity, start);
  both.isFromA = !(both.lower > fromA.lower);
  both.upper = std::max(both.upper, fromA.upper);
  both.isComplete = both.isComplete && fromA.isComplete;
  both.nbSearches += fromA.nbSearches;
  return both;
}

bool isWithinDirectedHausdorff(const PreparedEntity3d& a, const PreparedEntity3d& b, omReal64 limit,
                               const HausdorffOptions& options, HausdorffBounds* bounds) {
  const HausdorffBounds found = directed(a, b, options, limit, {});
  if (bounds) *bounds = found;
  return found.upper <= limit;
}

HausdorffBounds directedHausdorff(const BaseGeometryEntity3d& a, const BaseGeometryEntity3d& b,
                                  const HausdorffOptions& options) {
  return directedHausdorff(PreparedEntity3d(a), PreparedEntity3d(b), options);
}

HausdorffBounds hausdorff(const BaseGeometryEntity3d& a, const BaseGeometryEntity3d& b,
                          const HausdorffOptions& options) {
  return hausdorff(PreparedEntity3d(a), PreparedEntity3d(b), options);
}

}  // namespace ormix::geom

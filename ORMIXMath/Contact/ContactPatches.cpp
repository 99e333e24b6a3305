#include <ORMIXMath/Contact/ContactPatches.h>

#include <cmath>
#include <numeric>

namespace ormix::detail {

namespace {

// Below this share of the whole surface nothing is cut further: it is less than the rounding of areas.
constexpr omReal64 s_negligible = 1e-12;

/// How a piece of a surface lies to another triangle.
enum eNearness { eN_Covered, eN_Near, eN_Far };

/// A piece of a triangle that is not decided, and where the triangles that it may be near begin and end.
struct Piece {
  Corners corners;
  omReal64 area;
  std::size_t begin;
  std::size_t end;
};

SpatialPoint middleOf(const SpatialPoint& p, const SpatialPoint& q) { return (p + q) * 0.5; }

SpatialPoint centerOf(const Corners& corners) { return (corners[0] + corners[1] + corners[2]) / 3; }

class Subdivision {
 public:
  Subdivision(const FacingTriangles& others, omReal64 gap, const PatchLimits& limits)
      : _others(others), _gap(gap), _squareGap(gap * gap), _limits(limits) {}

  /// Sorts out what can be decided about a whole triangle.
  void add(const SurfaceTriangle& triangle) {
    _total += triangle.area;
    if (isCoveredByLast(triangle)) return take(triangle.corners, triangle.area);
    const std::size_t begin = _candidates.size();
    bool isCovered = false;
    bool isAbandoned = false;
    const Ball ball(triangle.corners);
    _others.visitFacing(triangle, _squareGap, [&](std::size_t other, omReal64 bound) {
      isAbandoned = _nbTests >= _limits.maxNbTests;
      if (isAbandoned) return -1.0;
      const eNearness nearness = nearnessOf(triangle.corners, ball, other);
      if (nearness == eN_Near) _candidates.push_back(static_cast<omUInt32>(other));
      isCovered = nearness == eN_Covered;
      if (isCovered) _last = other;
      return isCovered ? -1.0 : bound;
    });
    if (isCovered || isAbandoned) _candidates.resize(begin);
    if (isCovered) return take(triangle.corners, triangle.area);
    if (isAbandoned) _abandoned += triangle.area;
    if (_candidates.size() > begin) _pieces.push_back({triangle.corners, triangle.area, begin, _candidates.size()});
  }

  ContactPatches finish() {
    for (;;) {
      const omReal64 undecided = std::accumulate(_pieces.begin(), _pieces.end(), _abandoned,
                                                 [](omReal64 sum, const Piece& piece) { return sum + piece.area; });
      const bool isEnough = 0.5 * undecided <= _limits.tolerance * (_result.inside + 0.5 * undecided) ||
                            undecided <= s_negligible * _total || _pieces.empty() ||
                            _nbTests + 4 * _candidates.size() > _limits.maxNbTests;
      if (isEnough) {
        _result.undecided = undecided;
        takeCentred();
        return std::move(_result);
      }
      cutAll();
    }
  }

 private:
  /// Around a triangle, with its centre.
  struct Ball {
    SpatialPoint center;
    omReal64 radius = 0;

    explicit Ball(const Corners& corners) : center(centerOf(corners)) {
      for (const SpatialPoint& corner : corners) {
        const SpatialPoint toCorner = corner - center;
        radius = std::max(radius, std::sqrt(dot(toCorner, toCorner)));
      }
    }
  };

  bool isCovered(const Corners& corners, const SurfaceTriangle& other) const {
    for (const SpatialPoint& corner : corners)
      if (!(other.squareTo(corner) <= _squareGap)) return false;
    return true;
  }

  /// Neighbours are mostly covered by the same triangle.
  bool isCoveredByLast(const SurfaceTriangle& triangle) {
    if (_last >= _others.triangles().size()) return false;
    const SurfaceTriangle& other = _others.triangles()[_last];
    return isFacing(triangle, other) && isCovered(triangle.corners, other);
  }

  eNearness nearnessOf(const Corners& corners, const Ball& ball, std::size_t index) {
    ++_nbTests;
    const SurfaceTriangle& other = _others.triangles()[index];
    const auto [lowest, highest] =
        std::minmax({other.height(corners[0]), other.height(corners[1]), other.height(corners[2])});
    if (lowest > _gap || highest < -_gap) return eN_Far;
    const omReal64 reach = _gap + ball.radius;
    if (other.squareTo(ball.center) > reach * reach) return eN_Far;
    return isCovered(corners, other) ? eN_Covered : eN_Near;
  }

  void take(const Corners& corners, omReal64 area) {
    _result.inside += area;
    _result.pieces.push_back(corners);
  }

  /// Cuts each piece into four, and decides what can be.
  void cutAll() {
    std::vector<Piece> pieces;
    std::vector<omUInt32> candidates;
    pieces.swap(_pieces);
    candidates.swap(_candidates);
    for (const Piece& piece : pieces) {
      const auto& [a, b, c] = piece.corners;
      const SpatialPoint ab = middleOf(a, b), bc = middleOf(b, c), ca = middleOf(c, a);
      for (const Corners& part : {Corners{a, ab, ca}, Corners{ab, b, bc}, Corners{ca, bc, c}, Corners{ab, bc, ca}})
        decide(part, 0.25 * piece.area, candidates.data() + piece.begin, candidates.data() + piece.end);
    }
  }

  void decide(const Corners& corners, omReal64 area, const omUInt32* first, const omUInt32* last) {
    const std::size_t begin = _candidates.size();
    const Ball ball(corners);
    for (; first != last; ++first) {
      const eNearness nearness = nearnessOf(corners, ball, *first);
      if (nearness == eN_Covered) {
        _candidates.resize(begin);
        return take(corners, area);
      }
      if (nearness == eN_Near) _candidates.push_back(*first);
    }
    if (_candidates.size() > begin) _pieces.push_back({corners, area, begin, _candidates.size()});
  }

  /// Takes the shapes of undecided pieces whose centre is within the gap.
  void takeCentred() {
    for (const Piece& piece : _pieces)
      for (std::size_t i = piece.begin; i < piece.end; ++i)
        if (_others.triangles()[_candidates[i]].squareTo(centerOf(piece.corners)) <= _squareGap) {
          _result.pieces.push_back(piece.corners);
          break;
        }
  }

  const FacingTriangles& _others;
  const omReal64 _gap;
  const omReal64 _squareGap;
  const PatchLimits& _limits;
  std::size_t _nbTests = 0;
  std::size_t _last = static_cast<std::size_t>(-1);  // that covered a triangle
  omReal64 _total = 0;                               // area of all triangles
  omReal64 _abandoned = 0;                           // area of those that came after too many tests
  std::vector<Piece> _pieces;
  std::vector<omUInt32> _candidates;
  ContactPatches _result;
};

}  // namespace

ContactPatches contactPatches(const std::vector<SurfaceTriangle>& triangles, const FacingTriangles& others,
                              omReal64 gap, const PatchLimits& limits) {
  Subdivision subdivision(others, gap, limits);
  for (const SurfaceTriangle& triangle : triangles) subdivision.add(triangle);
  return subdivision.finish();
}

}  // namespace ormix::detail

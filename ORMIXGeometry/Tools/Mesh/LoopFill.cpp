#include <ORMIXGeometry/Tools/Mesh/LoopFill.h>
#include <ORMIXMath/Algebra/VectorArithmetic.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <queue>
#include <utility>

namespace ormix::geom::detail {

namespace {

using ormix::detail::cross;
using ormix::detail::dot;
using ormix::detail::operator+;
using ormix::detail::operator-;
using ormix::detail::operator/;

using Triangles = std::vector<std::array<std::size_t, 3>>;

constexpr std::size_t s_mostSmall = 12;       ///< corners up to which a loop is filled by ears
constexpr std::size_t s_mostMinimal = 128;    ///< corners up to which the area is made least: n³ / 6 triangles
constexpr std::size_t s_mostCompared = 2048;  ///< corners up to which ears are compared with all others

omReal64 squaredLength(const SpatialPoint& p) { return dot(p, p); }

/// The least angle of a triangle, 0 for a flat one.
omReal64 leastAngle(const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c) {
  const omReal64 twiceArea = std::sqrt(squaredLength(cross(b - a, c - a)));
  const omReal64 least = std::min({std::atan2(twiceArea, dot(b - a, c - a)), std::atan2(twiceArea, dot(a - b, c - b)),
                                   std::atan2(twiceArea, dot(a - c, b - c))});
  return std::isnan(least) ? 0 : least;
}

/// Cuts ears from a ring of corners.
class EarCutter {
 public:
  EarCutter(const std::vector<SpatialPoint>& loop, const HasEdge& hasEdge)
      : _loop(loop), _hasEdge(hasEdge), _ring(loop.size()) {
    const std::size_t nb = loop.size();
    for (std::size_t corner = 0; corner < nb; ++corner) {
      _ring[corner] = {(corner + nb - 1) % nb, (corner + 1) % nb, 0};
      _normal = _normal + cross(loop[corner] - loop[0], loop[(corner + 1) % nb] - loop[0]);
    }
  }

  Triangles fill() {
    std::size_t nbLeft = _loop.size(), first = 0;
    for (std::size_t corner = 0; corner < _loop.size(); ++corner) push(corner);
    while (nbLeft > 3) {
      const Ear ear = _ears.top();
      _ears.pop();
      Corner& corner = _ring[ear.corner];
      if (ear.version != corner.version) continue;
      _triangles.push_back({corner.previous, ear.corner, corner.next});
      _ring[corner.previous].next = corner.next;
      _ring[corner.next].previous = corner.previous;
      ++corner.version;
      first = corner.next;
      --nbLeft;
      for (const std::size_t neighbour : {corner.previous, corner.next}) {
        ++_ring[neighbour].version;
        push(neighbour);
      }
    }
    _triangles.push_back({_ring[first].previous, first, _ring[first].next});
    return std::move(_triangles);
  }

 private:
  struct Corner {
    std::size_t previous, next;
    unsigned version;  ///< of its ear; outdated ones are passed over
  };
  struct Ear {
    omReal64 quality;
    std::size_t corner;
    unsigned version;
    bool operator<(const Ear& other) const {
      return quality != other.quality ? quality < other.quality : corner > other.corner;
    }
  };

  void push(std::size_t corner) {
    const Corner& ear = _ring[corner];
    const SpatialPoint &a = _loop[ear.previous], &b = _loop[corner], &c = _loop[ear.next];
    const bool facesAway = !(dot(cross(b - a, c - a), _normal) > 0);
    const omReal64 penalty = facesAway ? 12 : isPassed(ear, a, b, c) ? 8 : _hasEdge(ear.previous, ear.next) ? 4 : 0;
    _ears.push({leastAngle(a, b, c) - penalty, corner, ear.version});
  }

  /// Whether a corner lies over a triangle, seen along the loop's normal.
  bool isPassed(const Corner& ear, const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c) const {
    if (_loop.size() > s_mostCompared) return false;
    const auto isLeft = [&](const SpatialPoint& p, const SpatialPoint& q, const SpatialPoint& r) {
      return dot(cross(q - p, r - p), _normal) >= 0;
    };
    for (std::size_t at = _ring[ear.next].next; at != ear.previous; at = _ring[at].next)
      if (isLeft(a, b, _loop[at]) && isLeft(b, c, _loop[at]) && isLeft(c, a, _loop[at])) return true;
    return false;
  }

  const std::vector<SpatialPoint>& _loop;
  const HasEdge& _hasEdge;
  std::vector<Corner> _ring;
  SpatialPoint _normal{0, 0, 0};
  std::priority_queue<Ear> _ears;
  Triangles _triangles;
};

/// The triangulation of least area, by dynamic programming over the chords of the loop.
class MinimalArea {
 public:
  MinimalArea(const std::vector<SpatialPoint>& loop, const HasEdge& hasEdge)
      : _loop(loop), _nb(loop.size()), _weights(_nb * _nb), _apexes(_nb * _nb) {
    for (std::size_t corner = 0; corner < _nb; ++corner)
      _extent = std::max(_extent, squaredLength(loop[corner] - loop[0]));
    for (std::size_t span = 2; span < _nb; ++span)
      for (std::size_t from = 0; from + span < _nb; ++from) {
        findApex(from, from + span);
        if (span != _nb - 1 && hasEdge(from, from + span))
          _weights[from * _nb + from + span] += s_edgeWeight * squaredLength(loop[from + span] - loop[from]);
      }
  }

  Triangles getTriangles() const {
    Triangles triangles;
    std::vector<std::pair<std::size_t, std::size_t>> chords{{0, _nb - 1}};
    while (!chords.empty()) {
      const auto [from, to] = chords.back();
      chords.pop_back();
      if (to - from < 2) continue;
      const std::size_t apex = _apexes[from * _nb + to];
      triangles.push_back({from, apex, to});
      chords.emplace_back(from, apex);
      chords.emplace_back(apex, to);
    }
    return triangles;
  }

 private:
  void findApex(std::size_t from, std::size_t to) {
    omReal64 best = std::numeric_limits<omReal64>::infinity();
    std::size_t bestApex = from + 1;
    for (std::size_t apex = from + 1; apex < to; ++apex) {
      const omReal64 rest = _weights[from * _nb + apex] + _weights[apex * _nb + to];
      if (!(rest < best)) continue;
      const omReal64 weight = rest + weightOf(_loop[from], _loop[apex], _loop[to]);
      if (!(weight < best)) continue;
      best = weight;
      bestApex = apex;
    }
    _weights[from * _nb + to] = best;
    _apexes[from * _nb + to] = bestApex;
  }

  /// The area, a thousandth of the square of the longest edge, which decides in planes, and for a flat triangle more
  /// than all others can weigh together.
  omReal64 weightOf(const SpatialPoint& a, const SpatialPoint& b, const SpatialPoint& c) const {
    const omReal64 area = std::sqrt(squaredLength(cross(b - a, c - a))) / 2;
    const omReal64 longest = std::max({squaredLength(b - a), squaredLength(c - b), squaredLength(a - c)});
    const omReal64 flat = area > 1e-12 * longest ? 0 : 1e3 * static_cast<omReal64>(_nb) * _extent;
    return area + 1e-3 * longest + flat;
  }

  /// What a diagonal along an edge costs, for the square of its length.
  static constexpr omReal64 s_edgeWeight = 0.1;

  const std::vector<SpatialPoint>& _loop;
  const std::size_t _nb;
  omReal64 _extent = 0;
  std::vector<omReal64> _weights;    ///< of the part beyond a chord
  std::vector<std::size_t> _apexes;  ///< third corner of the triangle at a chord
};

}  // namespace

std::vector<std::array<std::size_t, 3>> fillLoop(const std::vector<SpatialPoint>& loop, const HasEdge& hasEdge) {
  if (loop.size() <= s_mostSmall || loop.size() > s_mostMinimal) return EarCutter(loop, hasEdge).fill();
  return MinimalArea(loop, hasEdge).getTriangles();
}

}  // namespace ormix::geom::detail

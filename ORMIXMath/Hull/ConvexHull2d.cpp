#include <ORMIXMath/Distance/Orientation.h>
#include <ORMIXMath/Hull/ConvexHull2d.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <type_traits>

#include "HullSlices.h"

namespace ormix {

namespace {

template <class T>
struct Vertex {
  T x;
  T y;
};

template <class T>
bool isBefore(const Vertex<T>& a, const Vertex<T>& b) {
  return a.x < b.x || (a.x == b.x && a.y < b.y);
}

__extension__ typedef __int128 Integer128;

/// orientation(), of integers in their own arithmetic.
template <class T>
int turn(const Vertex<T>& a, const Vertex<T>& b, const Vertex<T>& c) {
  if constexpr (std::is_integral_v<T>) {
    const auto ux = static_cast<omInt64>(b.x) - a.x, uy = static_cast<omInt64>(b.y) - a.y;
    const auto wx = static_cast<omInt64>(c.x) - a.x, wy = static_cast<omInt64>(c.y) - a.y;
    const Integer128 left = static_cast<Integer128>(ux) * wy;
    const Integer128 right = static_cast<Integer128>(uy) * wx;
    return (left > right) - (left < right);
  } else {
    return orientation(toPlanarPoint(a.x, a.y), toPlanarPoint(b.x, b.y), toPlanarPoint(c.x, c.y));
  }
}

// Fewer points are sorted at once.
constexpr std::size_t s_fewPoints = 2000;

// Points of the sample whose hull may drop others: of points spread over a disk it leaves one in fifty.
constexpr std::size_t s_sampleSize = 4096;

// Further points that tell whether a pass over all is worth it, and the part of them that must drop.
constexpr std::size_t s_nbTrials = 256;
constexpr std::size_t s_nbDropped = 64;

// Points of a part into which a run is spread before it is sorted.
constexpr std::size_t s_pointsPerPart = 4;

/// Indices below a bound that are the same on every computer and follow no pattern that points may have.
class ScatteredIndices {
 public:
  explicit ScatteredIndices(std::size_t bound) : _bound(bound) {}
  std::size_t next() {
    _state = _state * 6364136223846793005u + 1442695040888963407u;
    return static_cast<std::size_t>((_state >> 20) % _bound);
  }

 private:
  std::size_t _bound;
  omUInt64 _state = 1;
};

/// Points that lie one after the other in memory.
template <class T>
struct Run {
  Vertex<T>* first;
  Vertex<T>* last;

  Vertex<T>* begin() const { return first; }
  Vertex<T>* end() const { return last; }
  std::size_t size() const { return static_cast<std::size_t>(last - first); }
};

/// Sorts by spreading over parts of equal width in x first, in one pass where a comparing sort takes many. Parts in
/// which many points come together are sorted by comparing, as all are where the width has no finite inverse.
template <class T>
void sortByX(const Run<T>& points) {
  const std::size_t nbParts = points.size() / s_pointsPerPart;
  omReal64 left = 0, scale = 0;
  if (points.size() >= s_fewPoints) {
    const auto [first, last] =
        std::minmax_element(points.begin(), points.end(), [](const auto& a, const auto& b) { return a.x < b.x; });
    left = static_cast<omReal64>(first->x);
    scale = static_cast<omReal64>(nbParts) / (static_cast<omReal64>(last->x) - left);
  }
  if (!(scale > 0 && std::isfinite(scale))) {
    std::sort(points.begin(), points.end(), isBefore<T>);
    return;
  }
  // Monotone in x, whatever is rounded.
  const auto partOf = [&](const Vertex<T>& p) {
    return std::min(static_cast<std::size_t>((static_cast<omReal64>(p.x) - left) * scale), nbParts - 1);
  };
  std::vector<std::size_t> ends(nbParts + 1);
  for (const Vertex<T>& p : points) ++ends[partOf(p) + 1];
  for (std::size_t i = 0; i < nbParts; ++i) ends[i + 1] += ends[i];
  const std::vector<Vertex<T>> before(points.begin(), points.end());
  for (const Vertex<T>& p : before) points.first[ends[partOf(p)]++] = p;
  for (std::size_t i = 0, begin = 0; i < nbParts; begin = ends[i++])
    std::sort(points.first + begin, points.first + ends[i], isBefore<T>);
}

/// Appends the convex chain from `from` over points to `to`, all of which are passed in ascending or all in descending
/// order, none to the left of the line from `from` to `to`. Appends `from`, not `to`.
template <class T>
void appendChain(const Vertex<T>& from, const Vertex<T>& to, const Run<T>& points, std::vector<Vertex<T>>& chain) {
  const std::size_t start = chain.size();
  chain.push_back(from);
  const auto add = [&](const Vertex<T>& p) {
    while (chain.size() > start + 1 && turn(chain[chain.size() - 2], chain.back(), p) <= 0) chain.pop_back();
    chain.push_back(p);
  };
  for (const Vertex<T>& p : points) add(p);
  add(to);
  chain.pop_back();
}

/// The hull's vertices of at least one point, by one monotone chain (Andrew1979) below and one above the line through
/// the first and the last point. Changes the order of the points.
template <class T>
std::vector<Vertex<T>> hullOf(std::vector<Vertex<T>>& points) {
  const auto [first, last] = std::minmax_element(points.begin(), points.end(), isBefore<T>);
  const Vertex<T> left = *first, right = *last;
  if (!isBefore(left, right)) return {left};
  Vertex<T>* const begin = points.data();
  Vertex<T>* const end = begin + points.size();
  Vertex<T>* const middle = std::partition(begin, end, [&](const auto& p) { return turn(left, right, p) < 0; });
  std::vector<Vertex<T>> hull;
  sortByX(Run<T>{begin, middle});
  appendChain(left, right, Run<T>{begin, middle}, hull);
  sortByX(Run<T>{middle, end});
  std::reverse(middle, end);
  appendChain(right, left, Run<T>{middle, end}, hull);
  return hull;
}

/// The points that are not plainly inside; all where dropping does not pay.
template <class T>
std::vector<Vertex<T>> candidates(const Vertex<T>* points, std::size_t nbPoints) {
  if (nbPoints < 2 * s_sampleSize) return {points, points + nbPoints};
  ScatteredIndices indices(nbPoints);
  std::vector<Vertex<T>> sample;
  sample.reserve(s_sampleSize);
  for (std::size_t i = 0; i < s_sampleSize; ++i) sample.push_back(points[indices.next()]);
  const std::vector<Vertex<T>> sampleHull = hullOf(sample);
  if (sampleHull.size() < 3) return {points, points + nbPoints};
  std::vector<omReal64> hullXy;
  for (const Vertex<T>& p : sampleHull) {
    hullXy.push_back(static_cast<omReal64>(p.x));
    hullXy.push_back(static_cast<omReal64>(p.y));
  }
  const detail::HullSlices slices(hullXy);
  const auto isDropped = [&](const Vertex<T>& p) {
    return slices.isInside(static_cast<omReal64>(p.x), static_cast<omReal64>(p.y));
  };
  std::size_t nbDropped = 0;
  for (std::size_t i = 0; i < s_nbTrials; ++i) nbDropped += isDropped(points[indices.next()]) ? 1 : 0;
  if (nbDropped < s_nbDropped) return {points, points + nbPoints};
  std::vector<Vertex<T>> kept;
  for (std::size_t i = 0; i < nbPoints; ++i)
    if (!isDropped(points[i])) kept.push_back(points[i]);
  return kept;
}

/// The index of the first point with a coordinate that is not finite, or nbPoints.
template <class T>
std::size_t findNotFinite(const T* xy, std::size_t nbPoints) {
  if constexpr (std::is_floating_point_v<T>)
    for (std::size_t i = 0; i < nbPoints; ++i)
      if (!std::isfinite(xy[2 * i]) || !std::isfinite(xy[2 * i + 1])) return i;
  return nbPoints;
}

}  // namespace

template <class T>
BoolResult convexHull2d(const T* xy, std::size_t nbPoints, std::vector<T>& hullXy) {
  if (nbPoints == 0) return failure("Convex hull of points in the plane: at least one point is needed, 0 given");
  if (const std::size_t point = findNotFinite(xy, nbPoints); point < nbPoints)
    return failure("Convex hull of points in the plane: point " + std::to_string(point) +
                   " has a coordinate that is not a finite number");
  static_assert(sizeof(Vertex<T>) == 2 * sizeof(T) && std::is_trivially_copyable_v<Vertex<T>>);
  std::vector<Vertex<T>> points = candidates(reinterpret_cast<const Vertex<T>*>(xy), nbPoints);
  const std::vector<Vertex<T>> hull = hullOf(points);
  const T* hullBegin = reinterpret_cast<const T*>(hull.data());
  hullXy.assign(hullBegin, hullBegin + 2 * hull.size());
  return {};
}

template BoolResult convexHull2d(const omInt32*, std::size_t, std::vector<omInt32>&);
template BoolResult convexHull2d(const omUInt32*, std::size_t, std::vector<omUInt32>&);
template BoolResult convexHull2d(const omReal32*, std::size_t, std::vector<omReal32>&);
template BoolResult convexHull2d(const omReal64*, std::size_t, std::vector<omReal64>&);

}  // namespace ormix

#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Simplification/PathArcs.h>
#include <ORMIXUtil/HashSecret.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <unordered_map>
#include <utility>

namespace ormix::detail {

namespace {

constexpr omUInt32 s_none = std::numeric_limits<omUInt32>::max();

bool isSame(const PlanarPoint& a, const PlanarPoint& b) { return a.x == b.x && a.y == b.y; }
bool precedes(const PlanarPoint& a, const PlanarPoint& b) { return a.x < b.x || (a.x == b.x && a.y < b.y); }

PlanarPoint pointAt(const PathView& path, std::size_t index) { return {path.xy[2 * index], path.xy[2 * index + 1]}; }

/// The first vertex in order of x, then y. Blocks are searched for a smaller x before their vertices are compared.
std::size_t firstInOrder(const PathView& path) {
  constexpr std::size_t blockSize = 64;
  std::size_t best = 0;
  for (std::size_t begin = 0; begin < path.nbPoints; begin += blockSize) {
    const std::size_t end = std::min(begin + blockSize, path.nbPoints);
    const omReal64 bestX = path.xy[2 * best];
    int nbCandidates = 0;
    for (std::size_t i = begin; i < end; ++i) nbCandidates += path.xy[2 * i] <= bestX;
    if (nbCandidates == 0) continue;
    for (std::size_t i = begin; i < end; ++i)
      if (precedes(pointAt(path, i), pointAt(path, best))) best = i;
  }
  return best;
}

void appendScaled(std::vector<PlanarPoint>& points, const PathView& path, std::size_t begin, std::size_t end,
                  omReal64 scale) {
  static_assert(sizeof(PlanarPoint) == 2 * sizeof(omReal64));
  const std::size_t size = points.size();
  const auto* from = reinterpret_cast<const PlanarPoint*>(path.xy);
  points.insert(points.end(), from + begin, from + end);
  if (scale == 1.0) return;
  for (std::size_t i = size; i < points.size(); ++i) points[i] = points[i] * scale;
}

/// The vertices of all paths in a row, repeated ones left out, with a number for each place that they take.
class NumberedVertices {
 public:
  struct Range {
    std::size_t first;
    std::size_t nbVertices;
  };

  NumberedVertices(const std::vector<PathView>& paths, omReal64 scale, PathArcs& arcs) {
    std::size_t nbPoints = 0;
    for (const PathView& path : paths) nbPoints += path.nbPoints;
    _points.reserve(nbPoints);
    arcs.numbers.resize(paths.size());
    for (std::size_t i = 0; i < paths.size(); ++i) append(paths[i], scale, arcs.numbers[i]);
    numberPlaces();
  }

  const PlanarPoint& point(std::size_t vertex) const { return _points[vertex]; }
  /// Equal for vertices with the same coordinates.
  omUInt32 place(std::size_t vertex) const { return _places[vertex]; }
  bool isShared(std::size_t vertex) const { return _isShared[_places[vertex]]; }
  const Range& range(std::size_t path) const { return _ranges[path]; }
  std::size_t size() const { return _points.size(); }

 private:
  void append(const PathView& path, omReal64 scale, std::vector<omUInt32>& numbers) {
    const std::size_t first = _points.size();
    appendScaled(_points, path, 0, path.nbPoints, scale);
    bool isRepeating = path.isRing && path.nbPoints > 1 && isSame(_points.back(), _points[first]);
    for (std::size_t i = first + 1; i < _points.size(); ++i) isRepeating |= isSame(_points[i], _points[i - 1]);
    if (isRepeating) {
      std::size_t size = first;
      for (std::size_t i = first; i < first + path.nbPoints; ++i) {
        if (size > first && isSame(_points[i], _points[size - 1])) continue;
        _points[size++] = _points[i];
        numbers.push_back(static_cast<omUInt32>(i - first));
      }
      while (path.isRing && size > first + 1 && isSame(_points[size - 1], _points[first])) {
        --size;
        numbers.pop_back();
      }
      _points.resize(size);
    }
    _ranges.push_back({first, _points.size() - first});
  }

  void numberPlaces() {
    std::size_t nbSlots = 16;
    while (nbSlots < 2 * _points.size()) nbSlots *= 2;
    std::vector<omUInt32> slots(nbSlots, s_none);
    _places.resize(_points.size());
    _isShared.assign(_points.size(), false);
    const omUInt64 secret = hashSecret();
    for (std::size_t vertex = 0; vertex < _points.size(); ++vertex) {
      std::size_t slot = hash(_points[vertex], secret) & (nbSlots - 1);
      while (slots[slot] != s_none && !isSame(_points[slots[slot]], _points[vertex])) slot = (slot + 1) & (nbSlots - 1);
      if (slots[slot] == s_none)
        slots[slot] = static_cast<omUInt32>(vertex);
      else
        _isShared[slots[slot]] = true;
      _places[vertex] = slots[slot];
    }
  }

  static std::size_t hash(const PlanarPoint& point, omUInt64 secret) {
    const omReal64 coordinates[2] = {point.x + 0.0, point.y + 0.0};  // both zeros alike
    omUInt64 bits[2];
    std::memcpy(bits, coordinates, sizeof bits);
    omUInt64 mixed = (bits[0] ^ secret) * 0x9E3779B97F4A7C15u;
    mixed ^= mixed >> 32;
    mixed = (mixed ^ bits[1]) * 0xC2B2AE3D27D4EB4Fu;
    mixed = (mixed ^ mixed >> 29) * 0xFF51AFD7ED558CCDu;
    return static_cast<std::size_t>(mixed ^ mixed >> 32);
  }

  std::vector<PlanarPoint> _points;
  std::vector<omUInt32> _places;
  std::vector<bool> _isShared;
  std::vector<Range> _ranges;
};

/// Cuts the paths at their nodes and joins arcs that are the same.
class SharedArcs {
 public:
  SharedArcs(const std::vector<PathView>& paths, omReal64 scale, PathArcs& result)
      : _paths(paths), _vertices(paths, scale, result), _result(result) {
    findNodes();
    _result.points.reserve(_vertices.size() + paths.size());
    for (std::size_t i = 0; i < paths.size(); ++i) {
      cut(i);
      _result.useEnds.push_back(_result.uses.size());
    }
  }

 private:
  using Range = NumberedVertices::Range;

  /// The places before and after a vertex, in order of their numbers.
  std::pair<omUInt32, omUInt32> neighbours(const Range& range, std::size_t k) const {
    const std::size_t before = k == 0 ? range.nbVertices - 1 : k - 1;
    const std::size_t after = k + 1 == range.nbVertices ? 0 : k + 1;
    return std::minmax({_vertices.place(range.first + before), _vertices.place(range.first + after)});
  }

  void findNodes() {
    _isNode.assign(_vertices.size(), false);
    std::unordered_map<omUInt32, std::pair<omUInt32, omUInt32>> neighboursOfShared;
    for (std::size_t i = 0; i < _paths.size(); ++i) {
      const Range& range = _vertices.range(i);
      for (std::size_t k = 0; k < range.nbVertices; ++k) {
        const omUInt32 place = _vertices.place(range.first + k);
        if (!_paths[i].isRing && (k == 0 || k + 1 == range.nbVertices)) {
          _isNode[place] = true;
          continue;
        }
        const auto beside = neighbours(range, k);
        if (beside.first == beside.second) _isNode[place] = true;
        if (!_vertices.isShared(range.first + k)) continue;
        const auto [known, isNew] = neighboursOfShared.emplace(place, beside);
        if (!isNew && known->second != beside) _isNode[place] = true;
      }
    }
  }

  void cut(std::size_t path) {
    const Range& range = _vertices.range(path);
    const std::size_t n = range.nbVertices;
    if (n == 0) return;
    const auto isNode = [&](std::size_t k) { return _isNode[_vertices.place(range.first + k % n)]; };
    std::size_t start = 0;
    while (start < n && !isNode(start)) ++start;
    if (start == n) {
      start = 0;
      for (std::size_t k = 1; k < n; ++k)
        if (precedes(_vertices.point(range.first + k), _vertices.point(range.first + start))) start = k;
    }
    const std::size_t end = _paths[path].isRing ? start + n : n - 1;
    if (n == 1) {
      add(range, start, start);
      return;
    }
    for (std::size_t first = start; first < end;) {
      std::size_t last = first + 1;
      while (last < end && !isNode(last)) ++last;
      add(range, first, last);
      first = last;
    }
  }

  /// Adds the arc of the vertices `first` to `last`, counted along the path and round a ring.
  void add(const Range& range, std::size_t first, std::size_t last) {
    const auto vertex = [&range](std::size_t k) { return range.first + k % range.nbVertices; };
    const auto isBefore = [&](std::size_t j, std::size_t k) {
      return precedes(_vertices.point(vertex(j)), _vertices.point(vertex(k)));
    };
    const bool isClosed = _vertices.place(vertex(first)) == _vertices.place(vertex(last));
    // Closed arcs go counter-clockwise, as which they are recognised after they were simplified, too.
    omReal64 area = 0;
    const PlanarPoint& origin = _vertices.point(vertex(first));
    for (std::size_t k = first + 1; isClosed && k < last; ++k) {
      const PlanarPoint& a = _vertices.point(vertex(k));
      const PlanarPoint& b = _vertices.point(vertex(k + 1));
      area += (a.x - origin.x) * (b.y - origin.y) - (a.y - origin.y) * (b.x - origin.x);
    }
    const bool isReversed = last > first && (isClosed && area != 0 ? area < 0
                                             : isClosed            ? isBefore(last - 1, first + 1)
                                                                   : isBefore(last, first));
    const std::size_t begin = isReversed ? last : first;
    const std::size_t second = last == first ? first : isReversed ? last - 1 : first + 1;
    const auto newArc = static_cast<omUInt32>(_result.arcs.size());
    omUInt32 arc = newArc;
    if (_vertices.isShared(vertex(begin)) && _vertices.isShared(vertex(second))) {
      const omUInt64 edge = omUInt64{_vertices.place(vertex(begin))} << 32 | _vertices.place(vertex(second));
      arc = _arcOfFirstEdge.emplace(edge, newArc).first->second;
    }
    _result.uses.push_back({arc, isReversed, first % range.nbVertices});
    if (arc != newArc) return;
    _result.arcs.push_back({_result.points.size(), last - first + 1});
    for (std::size_t i = 0; i <= last - first; ++i)
      _result.points.push_back(_vertices.point(vertex(isReversed ? last - i : first + i)));
  }

  const std::vector<PathView>& _paths;
  NumberedVertices _vertices;
  PathArcs& _result;
  std::vector<bool> _isNode;  // by place
  std::unordered_map<omUInt64, omUInt32> _arcOfFirstEdge;
};

}  // namespace

PathArcs separateArcs(const std::vector<PathView>& paths, omReal64 scale) {
  PathArcs result;
  result.numbers.resize(paths.size());
  std::size_t nbPoints = 0;
  for (const PathView& path : paths) nbPoints += path.nbPoints + 1;
  result.points.reserve(nbPoints);
  for (const PathView& path : paths) {
    if (path.nbPoints > 0) {
      const std::size_t start = path.isRing ? firstInOrder(path) : 0;
      const std::size_t first = result.points.size();
      appendScaled(result.points, path, start, path.nbPoints, scale);
      appendScaled(result.points, path, 0, start, scale);
      if (path.isRing && path.nbPoints > 1) result.points.push_back(result.points[first]);
      result.uses.push_back({static_cast<omUInt32>(result.arcs.size()), false, start});
      result.arcs.push_back({first, result.points.size() - first});
    }
    result.useEnds.push_back(result.uses.size());
  }
  return result;
}

PathArcs sharedArcs(const std::vector<PathView>& paths, omReal64 scale) {
  PathArcs result;
  SharedArcs(paths, scale, result);
  return result;
}

}  // namespace ormix::detail

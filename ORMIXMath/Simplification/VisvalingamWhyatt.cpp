#include <ORMIXMath/Simplification/VisvalingamWhyatt.h>

#include <algorithm>
#include <cmath>
#include <queue>

namespace ormix {

namespace {

/// The triangle of a vertex as it was when it was put into the queue.
struct Candidate {
  omReal64 area;
  PlanarPoint point;
  omUInt32 index;
  omUInt32 version;

  /// The order of removal, smallest first.
  friend bool operator>(const Candidate& a, const Candidate& b) {
    if (a.area != b.area) return a.area > b.area;
    if (a.point.x != b.point.x) return a.point.x > b.point.x;
    if (a.point.y != b.point.y) return a.point.y > b.point.y;
    return a.index > b.index;
  }
};

/// The vertices of a path that are left, with their neighbours.
class PathVertices {
 public:
  PathVertices(const PlanarPoint* points, std::size_t nbPoints, omReal64 area)
      : _points(points), _area(area), _links(nbPoints) {
    for (std::size_t i = 0; i < nbPoints; ++i)
      _links[i] = {static_cast<omUInt32>(i - 1), static_cast<omUInt32>(i + 1), 0, false};
    for (std::size_t i = 1; i + 1 < nbPoints; ++i) offer(static_cast<omUInt32>(i), 0);
  }

  void removeSmall() {
    while (!_queue.empty()) {
      const Candidate smallest = _queue.top();
      _queue.pop();
      Link& link = _links[smallest.index];
      if (link.version != smallest.version) continue;
      link.isRemoved = true;
      _links[link.before].after = link.after;
      _links[link.after].before = link.before;
      offer(link.before, smallest.area);
      offer(link.after, smallest.area);
    }
  }

  bool isRemoved(std::size_t index) const { return _links[index].isRemoved; }

 private:
  struct Link {
    omUInt32 before;
    omUInt32 after;
    omUInt32 version;  ///< that of the valid entry in the queue
    bool isRemoved;
  };

  /// Puts a vertex that is no end into the queue unless its triangle is larger than what goes.
  void offer(omUInt32 index, omReal64 leastArea) {
    if (index == 0 || index + 1 == _links.size()) return;
    Link& link = _links[index];
    ++link.version;
    const PlanarPoint& a = _points[link.before];
    const PlanarPoint& b = _points[index];
    const PlanarPoint& c = _points[link.after];
    const omReal64 area = 0.5 * std::abs((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x));
    if (area <= _area) _queue.push({std::max(area, leastArea), b, index, link.version});
  }

  const PlanarPoint* _points;
  omReal64 _area;
  std::vector<Link> _links;
  std::priority_queue<Candidate, std::vector<Candidate>, std::greater<>> _queue;
};

}  // namespace

void simplifyOpenPathByArea(const PlanarPoint* points, std::size_t nbPoints, omReal64 area,
                            std::vector<PathChord>& chords) {
  if (nbPoints < 2) return;
  PathVertices vertices(points, nbPoints, area);
  vertices.removeSmall();
  std::size_t kept = 0;
  for (std::size_t i = 1; i < nbPoints; ++i) {
    if (vertices.isRemoved(i)) continue;
    chords.push_back(chordBetween(points, kept, i));
    kept = i;
  }
}

}  // namespace ormix

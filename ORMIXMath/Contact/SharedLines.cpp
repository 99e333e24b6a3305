#include <ORMIXMath/Contact/SharedLines.h>

#include <algorithm>
#include <utility>

namespace ormix::detail {

namespace {

constexpr omUInt32 s_none = 0xFFFFFFFF;

/// The two lowest regions of some edges.
struct LowestTwo {
  omUInt32 first = s_none;
  omUInt32 second = s_none;

  void add(omUInt32 region) {
    if (region < first) {
      second = first;
      first = region;
    } else if (region > first && region < second) {
      second = region;
    }
  }
  omUInt32 otherThan(omUInt32 region) const { return first == region ? second : first; }
};

/// A walk along one line.
class LineSweep {
 public:
  explicit LineSweep(RegionLengths& lengths) : _lengths(lengths) {}

  /// \param edges of one line, ascending by `low`
  void operator()(const SharedLines::Edge* edges, std::size_t nb) {
    std::size_t next = 0;
    omReal64 at = 0;
    while (next < nb || !_active.empty()) {
      if (_active.empty()) at = edges[next].low;
      for (; next < nb && edges[next].low == at; ++next) _active.push_back(edges[next]);
      omReal64 to = next < nb ? edges[next].low : _active.front().high;
      for (const SharedLines::Edge& edge : _active) to = std::min(to, edge.high);
      divide(to - at);
      _active.erase(
          std::remove_if(_active.begin(), _active.end(), [to](const SharedLines::Edge& e) { return e.high == to; }),
          _active.end());
      at = to;
    }
  }

 private:
  /// Gives away a part of this length of all active edges.
  void divide(omReal64 length) {
    if (_active.size() == 1) return _lengths.leave(_active[0].region, length);
    if (_active.size() == 2 && _active[0].region != _active[1].region && _active[0].isForward != _active[1].isForward)
      return _lengths.share(_active[0].region, _active[1].region, length);
    LowestTwo forward, backward;
    for (const SharedLines::Edge& edge : _active) (edge.isForward ? forward : backward).add(edge.region);
    for (const SharedLines::Edge& edge : _active) {
      const omUInt32 other = (edge.isForward ? backward : forward).otherThan(edge.region);
      if (other == s_none)
        _lengths.leave(edge.region, length);
      else
        _lengths.give(edge.region, other, length);
    }
  }

  RegionLengths& _lengths;
  std::vector<SharedLines::Edge> _active;
};

}  // namespace

void SharedLines::divide(RegionLengths& lengths) const {
  // Edges by line, which needs no order of the lines, and sorted along each.
  std::vector<std::size_t> places(_nbOnLine.size());
  std::size_t total = 0;
  for (std::size_t line = 0; line < places.size(); ++line) places[line] = std::exchange(total, total + _nbOnLine[line]);
  std::vector<Edge> sorted(_edges.size());
  for (const Edge& edge : _edges) sorted[places[edge.line]++] = edge;
  LineSweep sweep(lengths);
  std::size_t begin = 0;
  for (const std::size_t end : places) {
    std::sort(sorted.data() + begin, sorted.data() + end, [](const Edge& a, const Edge& b) { return a.low < b.low; });
    sweep(sorted.data() + begin, end - begin);
    begin = end;
  }
}

}  // namespace ormix::detail

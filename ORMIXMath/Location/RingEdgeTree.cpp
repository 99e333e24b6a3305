#include <ORMIXMath/Location/RingEdgeTree.h>

#include <algorithm>
#include <array>
#include <limits>

namespace ormix::detail {

namespace {

omReal64 square(omReal64 value) { return value * value; }

omReal64 squaredDistance(const RingEdge& edge, const PlanarPoint& p) {
  const PlanarPoint foot = edge.at(edge.nearestPart(p));
  return square(p.x - foot.x) + square(p.y - foot.y);
}

// Levels of a tree of 2^64 edges times the nodes that wait on each.
constexpr std::size_t s_mostWaiting = 22 * 8;

}  // namespace

omReal64 RingEdgeTree::Box::squareTo(const PlanarPoint& p) const {
  const omReal64 dx = std::max({low.x - p.x, 0.0, p.x - high.x});
  const omReal64 dy = std::max({low.y - p.y, 0.0, p.y - high.y});
  return dx * dx + dy * dy;
}

void RingEdgeTree::add(const PlanarPoint& start, const PlanarPoint& end) {
  const PlanarPoint along{end.x - start.x, end.y - start.y};
  const omReal64 length = square(along.x) + square(along.y);
  if (length > 0) _edges.push_back({start, along, 1 / length});
}

void RingEdgeTree::build() {
  std::vector<Box> boxes;
  for (std::size_t i = 0; i < _edges.size(); i += s_fanOut) {
    Box box{_edges[i].start, _edges[i].start};
    for (std::size_t k = i; k < std::min(i + s_fanOut, _edges.size()); ++k)
      for (const PlanarPoint& p : {_edges[k].start, _edges[k].at(1)}) {
        box.low = {std::min(box.low.x, p.x), std::min(box.low.y, p.y)};
        box.high = {std::max(box.high.x, p.x), std::max(box.high.y, p.y)};
      }
    boxes.push_back(box);
  }
  _levels.clear();
  _levels.push_back(std::move(boxes));
  while (_levels.back().size() > 1) {
    const std::vector<Box>& below = _levels.back();
    std::vector<Box> above;
    for (std::size_t i = 0; i < below.size(); i += s_fanOut) {
      Box box = below[i];
      for (std::size_t k = i + 1; k < std::min(i + s_fanOut, below.size()); ++k) {
        box.low = {std::min(box.low.x, below[k].low.x), std::min(box.low.y, below[k].low.y)};
        box.high = {std::max(box.high.x, below[k].high.x), std::max(box.high.y, below[k].high.y)};
      }
      above.push_back(box);
    }
    _levels.push_back(std::move(above));
  }
}

template <class Visit>
void RingEdgeTree::visitChildren(std::size_t level, std::size_t index, Visit visit) const {
  const std::size_t nbBelow = level == 0 ? _edges.size() : _levels[level - 1].size();
  visit(s_fanOut * index, std::min(s_fanOut * index + s_fanOut, nbBelow));
}

RingEdgeTree::Nearest RingEdgeTree::nearest(const PlanarPoint& p, std::size_t guess, Effort& effort) const {
  Nearest found{guess, squaredDistance(_edges[guess], p)};
  std::array<Node, s_mostWaiting> waiting;
  std::size_t nbWaiting = 0;
  waiting[nbWaiting++] = {_levels.size() - 1, 0, 0};
  while (nbWaiting > 0) {
    const Node node = waiting[--nbWaiting];
    if (node.square >= found.square) continue;
    visitChildren(node.level, node.index, [&](std::size_t first, std::size_t last) {
      effort += last - first;
      if (node.level == 0) {
        for (std::size_t i = first; i < last; ++i)
          if (const omReal64 distance = squaredDistance(_edges[i], p); distance < found.square) found = {i, distance};
        return;
      }
      // Nearest last, as it is taken first.
      const std::size_t start = nbWaiting;
      for (std::size_t i = first; i < last; ++i) {
        const Node child{node.level - 1, i, _levels[node.level - 1][i].squareTo(p)};
        if (child.square >= found.square) continue;
        std::size_t at = nbWaiting++;
        for (; at > start && waiting[at - 1].square < child.square; --at) waiting[at] = waiting[at - 1];
        waiting[at] = child;
      }
    });
  }
  return found;
}

template <class Visit>
void RingEdgeTree::visitStraddling(const PlanarPoint& p, Effort& effort, Visit visit) const {
  std::array<Node, s_mostWaiting> waiting;
  std::size_t nbWaiting = 0;
  waiting[nbWaiting++] = {_levels.size() - 1, 0, 0};
  while (nbWaiting > 0) {
    const Node node = waiting[--nbWaiting];
    visitChildren(node.level, node.index, [&](std::size_t first, std::size_t last) {
      effort += last - first;
      for (std::size_t i = first; i < last; ++i) {
        if (node.level > 0) {
          const Box& box = _levels[node.level - 1][i];
          if (box.low.y <= p.y && p.y <= box.high.y && box.low.x <= p.x) waiting[nbWaiting++] = {node.level - 1, i, 0};
        } else if ((_edges[i].start.y <= p.y) != (_edges[i].at(1).y <= p.y)) {
          visit(_edges[i]);
        }
      }
    });
  }
}

bool RingEdgeTree::isInside(const PlanarPoint& p, Effort& effort) const {
  bool isInside = false;
  visitStraddling(p, effort, [&](const RingEdge& edge) {
    const omReal64 side = edge.along.x * (p.y - edge.start.y) - edge.along.y * (p.x - edge.start.x);
    if ((side < 0) == (edge.along.y > 0)) isInside = !isInside;
  });
  return isInside;
}

void RingEdgeTree::crossings(omReal64 y, std::vector<omReal64>& xColl, Effort& effort) const {
  visitStraddling({std::numeric_limits<omReal64>::infinity(), y}, effort, [&](const RingEdge& edge) {
    xColl.push_back(edge.start.x + (y - edge.start.y) / edge.along.y * edge.along.x);
  });
}

}  // namespace ormix::detail

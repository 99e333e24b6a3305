#include "CollapseIntersections.h"

#include <ORMIXMath/Distance/TrianglesMeet.h>
#include <ORMIXMath/Index/BoxTree.h>

#include <algorithm>

namespace ormix::detail {

namespace {

IndexPoint<3> indexPoint(const SpatialPoint& p) { return {p.x, p.y, p.z}; }

IndexBox<3> boxOf(const SpatialPoint (&points)[3]) {
  IndexBox<3> box;
  for (const SpatialPoint& p : points) box.add(indexPoint(p));
  return box;
}

}  // namespace

CollapseIntersections::CollapseIntersections(const CollapsingMesh& mesh)
    : _nbLooksLeft(s_looksOfTriangle * (mesh.topology.nbSides() / 3)) {
  const std::size_t nb = mesh.topology.nbSides() / 3;
  std::vector<Box> boxes(nb);
  for (omUInt32 triangle = 0; triangle < nb; ++triangle) boxes[triangle] = boxOf(cornersOf(mesh, triangle).points);
  const BoxTree<3> tree(boxes);
  _triangles.resize(nb);
  _places.resize(nb);
  for (omUInt32 place = 0; place < nb; ++place) {
    _triangles[place] = static_cast<omUInt32>(tree.itemAt(place));
    _places[_triangles[place]] = place;
  }
  _levels.emplace_back();
  for (std::size_t node = 0; node * s_width < nb; ++node) _levels[0].push_back(boxOfEight(mesh, node));
  while (_levels.back().size() > s_width) {
    std::vector<Box> level;
    for (std::size_t node = 0; node * s_width < _levels.back().size(); ++node)
      level.push_back(boxOfNodes(_levels.size(), node));
    _levels.push_back(std::move(level));
  }
}

CollapseIntersections::Corners CollapseIntersections::cornersOf(const CollapsingMesh& mesh, omUInt32 triangle) {
  Corners corners;
  for (omUInt32 k = 0; k < 3; ++k) {
    const omUInt32 vertex = mesh.topology.start(3 * triangle + k);
    corners.points[k] = mesh.positions[vertex];
    corners.numbers[k] = mesh.topology.originOf(vertex);
  }
  return corners;
}

bool CollapseIntersections::cross(const Corners& a, const Corners& b) {
  return trianglesCrossBeyondShared({a.points[0], a.points[1], a.points[2]}, {a.numbers[0], a.numbers[1], a.numbers[2]},
                                    {b.points[0], b.points[1], b.points[2]},
                                    {b.numbers[0], b.numbers[1], b.numbers[2]});
}

CollapseIntersections::Box CollapseIntersections::boxOfEight(const CollapsingMesh& mesh, std::size_t node) const {
  Box box;
  const std::size_t end = std::min((node + 1) * s_width, _triangles.size());
  for (std::size_t place = node * s_width; place < end; ++place)
    if (mesh.topology.isAlive(3 * _triangles[place])) box.add(boxOf(cornersOf(mesh, _triangles[place]).points));
  return box;
}

CollapseIntersections::Box CollapseIntersections::boxOfNodes(std::size_t level, std::size_t node) const {
  Box box;
  const std::vector<Box>& below = _levels[level - 1];
  for (std::size_t i = node * s_width; i < std::min((node + 1) * s_width, below.size()); ++i) box.add(below[i]);
  return box;
}

bool CollapseIntersections::wouldIntersect(const CollapsingMesh& mesh, const CollapsingEdge& edge,
                                           const SpatialPoint& position) {
  if (_nbLooksLeft == 0) return true;
  _moved.clear();
  _changed.clear();
  for (int end = 0; end < 2; ++end)
    for (const omUInt32 side : edge.fans[end]) {
      _changed.push_back(side / 3);
      if (edge.isGoing(mesh.topology, side)) continue;
      Corners corners = cornersOf(mesh, side / 3);
      corners.points[side % 3] = position;
      // Both ends are the same vertex then.
      corners.numbers[side % 3] = mesh.topology.originOf(edge.ends[0]);
      _moved.push_back(corners);
    }
  std::sort(_changed.begin(), _changed.end());
  for (std::size_t i = 0; i < _moved.size(); ++i)
    for (std::size_t k = 0; k < i; ++k)
      if (cross(_moved[i], _moved[k])) return true;
  return std::any_of(_moved.begin(), _moved.end(), [&](const Corners& moved) { return meetsOthers(mesh, moved); });
}

bool CollapseIntersections::meetsOthers(const CollapsingMesh& mesh, const Corners& moved) {
  const Box box = boxOf(moved.points);
  _pending.clear();
  const auto enter = [&](std::size_t level, std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < std::min(end, _levels[level].size()); ++i)
      if (_levels[level][i].meets(box)) _pending.emplace_back(level, i);
  };
  enter(_levels.size() - 1, 0, s_width);
  while (!_pending.empty()) {
    const auto [level, node] = _pending.back();
    _pending.pop_back();
    if (level > 0) {
      enter(level - 1, node * s_width, (node + 1) * s_width);
      continue;
    }
    for (std::size_t place = node * s_width; place < std::min((node + 1) * s_width, _triangles.size()); ++place) {
      const omUInt32 triangle = _triangles[place];
      if (!mesh.topology.isAlive(3 * triangle)) continue;
      if (_nbLooksLeft == 0) return true;
      --_nbLooksLeft;
      const Corners other = cornersOf(mesh, triangle);
      if (!boxOf(other.points).meets(box) || std::binary_search(_changed.begin(), _changed.end(), triangle)) continue;
      if (cross(moved, other)) return true;
    }
  }
  return false;
}

void CollapseIntersections::update(const CollapsingMesh& mesh, const std::vector<omUInt32>& sides) {
  for (const omUInt32 side : sides) {
    std::size_t node = _places[side / 3] / s_width;
    Box box = boxOfEight(mesh, node);
    for (std::size_t level = 0;;) {
      Box& old = _levels[level][node];
      if (old.low == box.low && old.high == box.high) break;
      old = box;
      if (++level == _levels.size()) break;
      node /= s_width;
      box = boxOfNodes(level, node);
    }
  }
}

}  // namespace ormix::detail

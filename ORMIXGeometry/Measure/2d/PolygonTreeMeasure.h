#pragma once

#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Measure/BaseGeometryMeasure.h>

#include <vector>

namespace ormix::geom {

/// Measures a tree of rings: a node is its exterior combined with each of its holes, in collection order, a hole being
/// measured the same way. Iterative, so that the depth of a tree is bounded by memory only.
/// \param combine how the result of a hole enters the running result of the node that owns it
/// \return false when a ring cannot be measured or a hole is null
template <class Measure, class T, class Combine>
bool measurePolygonTree(const Measure& measure, const PolygonWithHoles2d<T>& root, omReal64& value, Combine combine) {
  if (!measure.process(root.getExteriorPolygon(), value)) return false;
  if (measure.getHoleMsrPolicy() == eHMP_IgnoreHoles || !root.hasHoles()) return true;
  struct Node {
    const PolygonWithHoles2d<T>* polygon;
    std::size_t nextHole;
    omReal64 running;
  };
  std::vector<Node> path{{&root, 0, value}};
  for (;;) {
    Node& node = path.back();
    if (node.nextHole < node.polygon->getNbHoles()) {
      const PolygonWithHoles2d<T>* hole = node.polygon->getPolygonHoles()[node.nextHole++].get();
      omReal64 exterior = 0;
      if (!hole || !measure.process(hole->getExteriorPolygon(), exterior)) return false;
      path.push_back({hole, 0, exterior});
      continue;
    }
    const omReal64 result = node.running;
    path.pop_back();
    if (path.empty()) {
      value = result;
      return true;
    }
    path.back().running = combine(path.back().running, result);
  }
}

}  // namespace ormix::geom

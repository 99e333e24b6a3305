#pragma once

#include <ORMIXGeometry/Measure/BaseGeometryMeasure.h>

#include <cstddef>
#include <iterator>
#include <vector>

namespace ormix::geom {

/// Measures a tree of entities with holes: a node is its exterior combined with each of its holes, in collection order,
/// a hole being measured the same way. Iterative, so that the depth of a tree is bounded by memory only.
/// \param measureExterior measures the exterior of a node into its second argument, false when it cannot
/// \param combine how the result of a hole enters the running result of the node that owns it
/// \return false when an exterior cannot be measured or a hole is null
template <class Node, class MeasureExterior, class Combine>
bool measureHoleTree(const Node& root, eHoleMsrPolicy policy, omReal64& value, MeasureExterior measureExterior,
                     Combine combine) {
  if (!measureExterior(root, value)) return false;
  if (policy == eHMP_IgnoreHoles || !root.hasHoles()) return true;
  struct Step {
    const Node* node;
    std::size_t nextHole;
    omReal64 running;
  };
  std::vector<Step> path{{&root, 0, value}};
  for (;;) {
    Step& step = path.back();
    if (step.nextHole < step.node->getNbHoles()) {
      const Node* hole = std::next(step.node->beginHole(), static_cast<std::ptrdiff_t>(step.nextHole++))->get();
      omReal64 exterior = 0;
      if (!hole || !measureExterior(*hole, exterior)) return false;
      path.push_back({hole, 0, exterior});
      continue;
    }
    const omReal64 result = step.running;
    path.pop_back();
    if (path.empty()) {
      value = result;
      return true;
    }
    path.back().running = combine(path.back().running, result);
  }
}

}  // namespace ormix::geom

#pragma once

#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <sstream>
#include <string>
#include <vector>

// Trees of polygons and what is asked of all of them.
namespace polygontree {

using namespace ormix;
using namespace ormix::geom;

using Node = PolygonWithHoles2d<omReal64>;
using NodePtr = boost::shared_ptr<Node>;

#if defined(__SANITIZE_ADDRESS__)
constexpr std::size_t s_nbDeepLevels = 100000;
#elif defined(__has_feature)
constexpr std::size_t s_nbDeepLevels = __has_feature(address_sanitizer) ? 100000 : 1000000;
#else
constexpr std::size_t s_nbDeepLevels = 1000000;
#endif

inline NodePtr nodeOf(std::vector<Point2dData<omReal64>> points, ePolygon2dType type) {
  const NodePtr node = boost::make_shared<Node>();
  node->getExteriorPolygon().getPointColl() = std::move(points);
  node->getExteriorPolygon().setPolygon2dType(type);
  return node;
}

inline void addHole(const NodePtr& parent, const NodePtr& hole) {
  parent->getPolygonHoles().push_back(hole);
  hole->setParent(parent);
}

/// A square region with two holes, in the first of which is an island.
inline NodePtr sampleTree() {
  const NodePtr region = nodeOf({{0, 0}, {9, 0}, {9, 9}, {0, 9}, {0, 0}}, eP2DT_Exterior);
  const NodePtr hole = nodeOf({{1, 1}, {1, 8}, {4, 8}, {1, 1}}, eP2DT_Interior);
  addHole(region, hole);
  addHole(region, nodeOf({{5, 1}, {5, 2}, {6, 2}, {5, 1}}, eP2DT_Interior));
  addHole(hole, nodeOf({{2, 5}, {2.5, 5}, {2.5, 6.25}, {2, 5}}, eP2DT_Exterior));
  return region;
}

/// A tree of `nbLevels` empty nodes, each the only hole of the one above.
inline NodePtr chain(std::size_t nbLevels) {
  NodePtr root = boost::make_shared<Node>();
  for (NodePtr last = root; nbLevels > 1; --nbLevels) {
    const NodePtr next = boost::make_shared<Node>();
    addHole(last, next);
    last = next;
  }
  return root;
}

inline std::string printed(const Node& node) {
  std::ostringstream stream;
  stream << node;
  return stream.str();
}

/// Whether every hole below has the node that holds it as its parent.
inline bool isLinked(const Node& root) {
  return visitNodes(root, [](const Node& node) {
    for (const NodePtr& hole : node.getPolygonHoles())
      if (hole && hole->getParent().get() != &node) return false;
    return true;
  });
}

}  // namespace polygontree

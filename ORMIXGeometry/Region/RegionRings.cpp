#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <ORMIXGeometry/Region/RegionRings.h>

namespace ormix::geom::detail {

namespace {

/// Appends rings, vertex by vertex.
class RingCollector {
 public:
  RingCollector(RegionRings& rings, const PixelSpacing& spacing) : _rings(rings), _spacing(spacing) {}

  void begin(bool isHole, bool isOutermost) {
    _rings.rings.push_back({_rings.xy.size(), _rings.xy.size(), isHole, isOutermost});
  }
  void add(omReal64 x, omReal64 y) {
    _rings.xy.push_back(x * _spacing.x);
    _rings.xy.push_back(y * _spacing.y);
  }
  /// Closes the ring; one without vertices is dropped.
  void end() {
    RegionRings::Ring& ring = _rings.rings.back();
    std::vector<omReal64>& xy = _rings.xy;
    if (xy.size() == ring.begin) return _rings.rings.pop_back();
    const omReal64 x = xy[ring.begin], y = xy[ring.begin + 1];
    if (xy.size() == ring.begin + 2 || xy[xy.size() - 2] != x || xy.back() != y) {
      xy.push_back(x);
      xy.push_back(y);
    }
    ring.end = xy.size();
  }

 private:
  RegionRings& _rings;
  const PixelSpacing& _spacing;
};

/// Appends the rings of an entity; false for classes that have none.
/// @{
template <class Entity>
bool collect(RingCollector&, const Entity&) {
  return false;
}
template <class T>
bool collect(RingCollector& rings, const Polygon2d<T>& polygon, bool isOutermost) {
  rings.begin(polygon.getPolygon2dType() == eP2DT_Interior, isOutermost);
  for (const Point2dData<T>& point : polygon.getPointColl())
    rings.add(static_cast<omReal64>(point.getX()), static_cast<omReal64>(point.getY()));
  rings.end();
  return true;
}
template <class T>
bool collect(RingCollector& rings, const Polygon2d<T>& polygon) {
  return collect(rings, polygon, true);
}
template <class T>
bool collect(RingCollector& rings, const PolygonWithHoles2d<T>& polygon) {
  visitNodes(polygon, [&](const PolygonWithHoles2d<T>& node) {
    return collect(rings, node.getExteriorPolygon(), &node == &polygon);
  });
  return true;
}
bool collect(RingCollector& rings, const Shape2d& shape) {
  for (const auto& polygon : shape.getPolygonWithHolesColl())
    if (polygon) collect(rings, *polygon);
  return true;
}
template <class Quadrangle>
bool collectCorners(RingCollector& rings, const Quadrangle& entity) {
  rings.begin(false, true);
  for (const auto& corner :
       {entity.topLeftCorner(), entity.topRightCorner(), entity.bottomRightCorner(), entity.bottomLeftCorner()})
    rings.add(static_cast<omReal64>(corner.getX()), static_cast<omReal64>(corner.getY()));
  rings.end();
  return true;
}
template <class T>
bool collect(RingCollector& rings, const Square2d<T>& square) {
  return collectCorners(rings, square);
}
template <class T>
bool collect(RingCollector& rings, const Rectangle2d<T>& rectangle) {
  return collectCorners(rings, rectangle);
}
template <class T>
bool collect(RingCollector& rings, const BoundingBox2d<T>& box) {
  const auto xMin = static_cast<omReal64>(box.getXMin()), xMax = static_cast<omReal64>(box.getXMax());
  const auto yMin = static_cast<omReal64>(box.getYMin()), yMax = static_cast<omReal64>(box.getYMax());
  rings.begin(false, true);
  rings.add(xMin, yMin);
  rings.add(xMax, yMin);
  rings.add(xMax, yMax);
  rings.add(xMin, yMax);
  rings.end();
  return true;
}
/// @}

}  // namespace

std::vector<RingView> RegionRings::views() const {
  std::vector<RingView> result;
  result.reserve(rings.size());
  for (const Ring& ring : rings) result.push_back({xy.data() + ring.begin, (ring.end - ring.begin) / 2});
  return result;
}

RegionRings ringsOf(const ContourRings& contours, const PixelSpacing& spacing) {
  RegionRings result;
  result.rings.reserve(contours.rings.size());
  result.xy.reserve(2 * (contours.rings.empty() ? 0 : contours.rings.back().end) + 2 * contours.rings.size());
  RingCollector collector(result, spacing);
  for (const ContourRings::Ring& ring : contours.rings) {
    collector.begin(ring.isHole, ring.parent == ContourRings::s_noParent);
    for (std::size_t at = ring.begin; at < ring.end; ++at)
      collector.add(static_cast<omReal64>(contours.corners[at].x),
                    static_cast<omReal64>(contours.startRow + contours.corners[at].y));
    collector.end();
  }
  return result;
}

std::optional<RegionRings> ringsOf(const BaseGeometryEntity2d& entity, const PixelSpacing& spacing) {
  RegionRings result;
  RingCollector collector(result, spacing);
  const bool hasRings =
      callTyped(PlanarEntityList(), entity, [&](const auto& typed) { return collect(collector, typed); });
  if (!hasRings) return std::nullopt;
  return result;
}

}  // namespace ormix::geom::detail

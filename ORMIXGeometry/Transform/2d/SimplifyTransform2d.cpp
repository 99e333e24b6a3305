#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/ClassList.h>
#include <ORMIXGeometry/Message/TransformMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXGeometry/Transform/2d/SimplifyTransform2d.h>
#include <ORMIXGeometry/Transform/GeometryTransform.ipp>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <cmath>
#include <string>
#include <type_traits>

ORMIX_GEOMETRY_TRANSFORM2D_LEVELS(, SimplifyTransform2d)

namespace ormix::geom {

namespace {

/// The entities that are simplified.
using SimplifiedList = JoinedLists<ScalarClassList<Polygon2d, PolygonWithHoles2d>, ClassList<Shape2d>>;

/// Calls `visit` with each run of vertices of an entity and whether it is a ring even if it is not closed.
/// @{
template <class T, class Visit>
void visitRings(Polygon2d<T>& polygon, Visit&& visit) {
  visit(polygon.getPointColl(), false);
}
template <class T, class Visit>
void visitRings(PolygonWithHoles2d<T>& polygon, Visit&& visit) {
  visitNodes(polygon, [&visit](PolygonWithHoles2d<T>& node) {
    visit(node.getExteriorPolygon().getPointColl(), true);
    return true;
  });
}
template <class Visit>
void visitRings(Shape2d& shape, Visit&& visit) {
  for (const auto& polygon : shape.getPolygonWithHolesColl())
    if (polygon) visitRings(*polygon, visit);
}
template <class Visit>
void visitRings(BaseGeometryEntity2d& entity, Visit&& visit) {
  forEachClass(SimplifiedList(), [&](auto tag) {
    using Class = typename decltype(tag)::Type;
    if (auto* const typed = dynamic_cast<Class*>(&entity)) visitRings(*typed, visit);
  });
}
/// @}

bool isSupported(const BaseGeometryEntity2d& entity) {
  bool result = false;
  forEachClass(SimplifiedList(),
               [&](auto tag) { result |= dynamic_cast<const typename decltype(tag)::Type*>(&entity) != nullptr; });
  return result;
}

std::string failureText(const SimplifiedPaths& result) {
  using Message = eTransformMessage;
  return result.outcome == ePO_Crossing
             ? formatMessage<Message>(Message::eTM_SelfIntersectionRefinement, result.crossing.x, result.crossing.y)
             : formatMessage<Message>(Message::eTM_SelfIntersectionTable);
}

std::string unsupportedText(const std::string& entityType) {
  return formatMessage<eTransformMessage>(eTransformMessage::eTM_TransformFailed,
                                          std::string(SimplifyTransform2d::s_className), entityType);
}

/// The rings of entities that are simplified together: all are added, then all are reduced, in the same order.
class RingSet {
 public:
  /// Adds the rings of an entity, which must stay as it is until it is reduced.
  template <class Entity>
  void add(const Entity& entity) {
    visitRings(const_cast<Entity&>(entity), [this](const auto& points, bool isRing) { addRing(points, isRing); });
  }

  BoolResult simplify(omReal64 tolerance, ePathSimplification method) {
    if (!(tolerance >= 0 && std::isfinite(tolerance)))
      return failure("The tolerance of a simplification is " + std::to_string(tolerance) +
                     ", which is negative or not finite");
    for (std::size_t i = 0; i < _paths.size(); ++i)
      if (!_paths[i].xy && _paths[i].nbPoints > 0) _paths[i].xy = _converted.data() + _starts[i];
    _result = simplifyPaths(_paths, tolerance, method);
    return _result.outcome == ePO_Simplified ? BoolResult() : failure(failureText(_result));
  }

  /// Leaves out the vertices of an entity that are not kept; needs no memory.
  template <class Entity>
  void reduce(Entity& entity) {
    visitRings(entity, [this](auto& points, bool) { reduceRing(points, points); });
  }
  /// The same from a polygon to another one.
  template <class T>
  void reduce(const Polygon2d<T>& polygon, Polygon2d<T>& result) {
    const std::size_t nbKept = _result.ends[_path];
    result.getPointColl().resize(nbKept + 1);
    reduceRing(polygon.getPointColl(), result.getPointColl());
  }

 private:
  template <class T>
  void addRing(const std::vector<Point2dData<T>>& points, bool isRing) {
    const bool isRepeating = points.size() > 1 && points.front() == points.back();
    PathView path{nullptr, points.size() - (isRepeating ? 1 : 0), isRing || isRepeating};
    _starts.push_back(_converted.size());
    if constexpr (std::is_same_v<T, omReal64>) {
      path.xy = coordinates(points);
    } else {
      const T* const xy = coordinates(points);
      _converted.insert(_converted.end(), xy, xy + 2 * path.nbPoints);
    }
    _paths.push_back(path);
  }

  template <class T>
  void reduceRing(const std::vector<Point2dData<T>>& points, std::vector<Point2dData<T>>& result) {
    const bool isRepeating = points.size() > 1 && points.front() == points.back();
    const std::size_t begin = _path == 0 ? 0 : _result.ends[_path - 1];
    const std::size_t nbKept = _result.ends[_path++] - begin;
    const omUInt32* const kept = _result.kept.data() + begin;
    for (std::size_t i = 0; i < nbKept; ++i) result[i] = points[kept[i]];
    if (isRepeating) result[nbKept] = result[0];
    result.resize(nbKept + (isRepeating ? 1 : 0));
  }

  std::vector<PathView> _paths;
  std::vector<omReal64> _converted;  ///< coordinates that are no omReal64
  std::vector<std::size_t> _starts;  ///< for each path, where its coordinates begin there
  SimplifiedPaths _result;
  std::size_t _path = 0;  ///< the next one to be reduced
};

template <class Entity>
BoolResult simplifyInSitu(Entity& entity, omReal64 tolerance, ePathSimplification method) {
  RingSet rings;
  rings.add(entity);
  BoolResult result = rings.simplify(tolerance, method);
  if (result) rings.reduce(entity);
  return result;
}

/// Writes the simplified entity to `result`.
/// @{
template <class Entity>
BoolResult simplifyInto(const Entity& entity, Entity& result, omReal64 tolerance, ePathSimplification method) {
  result = entity;
  return simplifyInSitu(result, tolerance, method);
}
template <class T>
BoolResult simplifyInto(const Polygon2d<T>& polygon, Polygon2d<T>& result, omReal64 tolerance,
                        ePathSimplification method) {
  RingSet rings;
  rings.add(polygon);
  BoolResult simplified = rings.simplify(tolerance, method);
  if (!simplified) return simplified;
  result.setPolygon2dType(polygon.getPolygon2dType());
  rings.reduce(polygon, result);
  return simplified;
}
/// @}

template <class Entity>
GeometryEntity2dPtr simplifiedCopy(const Entity& entity, omReal64 tolerance) {
  const auto result = boost::make_shared<Entity>();
  if (!simplifyInto(entity, *result, tolerance, ePS_KeepTopology)) return {};
  return result;
}

template <class Entity>
Entity simplifiedOrThrow(const Entity& entity, omReal64 tolerance, ePathSimplification method) {
  Entity result;
  const BoolResult simplified = simplifyInto(entity, result, tolerance, method);
  if (!simplified) logAndThrow(simplified.getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return result;
}

}  // namespace

template <class T>
BoolResult SimplifyTransform2d::processInSitu(Polygon2d<T>& polygon) const {
  return simplifyInSitu(polygon, _tolerance, ePS_KeepTopology);
}
template <class T>
BoolResult SimplifyTransform2d::processInSitu(PolygonWithHoles2d<T>& polygon) const {
  return simplifyInSitu(polygon, _tolerance, ePS_KeepTopology);
}
BoolResult SimplifyTransform2d::processInSitu(Shape2d& shape) const {
  return simplifyInSitu(shape, _tolerance, ePS_KeepTopology);
}

template <class T>
GeometryEntity2dPtr SimplifyTransform2d::process(const Polygon2d<T>& polygon) const {
  return simplifiedCopy(polygon, _tolerance);
}
template <class T>
GeometryEntity2dPtr SimplifyTransform2d::process(const PolygonWithHoles2d<T>& polygon) const {
  return simplifiedCopy(polygon, _tolerance);
}
GeometryEntity2dPtr SimplifyTransform2d::process(const Shape2d& shape) const {
  return simplifiedCopy(shape, _tolerance);
}

template <class T>
Polygon2d<T> SimplifyTransform2d::simplify(const Polygon2d<T>& polygon, omReal64 tolerance,
                                           ePathSimplification method) {
  return simplifiedOrThrow(polygon, tolerance, method);
}
template <class T>
PolygonWithHoles2d<T> SimplifyTransform2d::simplify(const PolygonWithHoles2d<T>& polygon, omReal64 tolerance,
                                                    ePathSimplification method) {
  return simplifiedOrThrow(polygon, tolerance, method);
}
Shape2d SimplifyTransform2d::simplify(const Shape2d& shape, omReal64 tolerance, ePathSimplification method) {
  return simplifiedOrThrow(shape, tolerance, method);
}

GeometryEntity2dPtr SimplifyTransform2d::simplify(const BaseGeometryEntity2d& entity, omReal64 tolerance,
                                                  ePathSimplification method) {
  if (!isSupported(entity))
    logAndThrow(unsupportedText(toString(entity.getEntity2dType())), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  GeometryEntity2dPtr result;
  forEachClass(SimplifiedList(), [&](auto tag) {
    using Class = typename decltype(tag)::Type;
    if (const auto* const typed = dynamic_cast<const Class*>(&entity))
      result = boost::make_shared<Class>(simplifiedOrThrow(*typed, tolerance, method));
  });
  return result;
}

GeometryEntity2dPtrColl SimplifyTransform2d::simplifyAll(const GeometryEntity2dPtrColl& entities, omReal64 tolerance,
                                                         ePathSimplification method) {
  GeometryEntity2dPtrColl result;
  result.reserve(entities.size());
  for (const GeometryEntity2dPtr& entity : entities) {
    if (!entity || !isSupported(*entity))
      logAndThrow(unsupportedText(entity ? toString(entity->getEntity2dType()) : "null"), __PRETTY_FUNCTION__, __FILE__,
                  __LINE__);
    result.push_back(boost::static_pointer_cast<BaseGeometryEntity2d>(entity->duplicateShared()));
  }
  RingSet rings;
  for (const GeometryEntity2dPtr& entity : result) rings.add(*entity);
  const BoolResult simplified = rings.simplify(tolerance, method);
  if (!simplified) logAndThrow(simplified.getMessage(), __PRETTY_FUNCTION__, __FILE__, __LINE__);
  for (const GeometryEntity2dPtr& entity : result) rings.reduce(*entity);
  return result;
}

#define ORMIX_GEOMETRY_INSTANTIATE_SIMPLIFY_OF(Class, T)                                               \
  template ORMIX_GEOMETRY_API BoolResult SimplifyTransform2d::processInSitu(Class<T>&) const;          \
  template ORMIX_GEOMETRY_API GeometryEntity2dPtr SimplifyTransform2d::process(const Class<T>&) const; \
  template ORMIX_GEOMETRY_API Class<T> SimplifyTransform2d::simplify(const Class<T>&, omReal64, ePathSimplification);
#define ORMIX_GEOMETRY_INSTANTIATE_SIMPLIFY(T)         \
  ORMIX_GEOMETRY_INSTANTIATE_SIMPLIFY_OF(Polygon2d, T) \
  ORMIX_GEOMETRY_INSTANTIATE_SIMPLIFY_OF(PolygonWithHoles2d, T)
ORMIX_GEOMETRY_INSTANTIATE_SIMPLIFY(omInt32)
ORMIX_GEOMETRY_INSTANTIATE_SIMPLIFY(omUInt32)
ORMIX_GEOMETRY_INSTANTIATE_SIMPLIFY(omReal32)
ORMIX_GEOMETRY_INSTANTIATE_SIMPLIFY(omReal64)
#undef ORMIX_GEOMETRY_INSTANTIATE_SIMPLIFY
#undef ORMIX_GEOMETRY_INSTANTIATE_SIMPLIFY_OF

}  // namespace ormix::geom

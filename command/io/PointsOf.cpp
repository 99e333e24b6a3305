#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>
#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <command/io/PointsOf.h>

namespace ormix::command {

namespace {

using namespace geom;

using PointEntityList = ScalarClassList<Point2d, PointCloud2d, Polygon2d>;
using SpatialPointEntityList = ScalarClassList<Point3d, PointCloud3d, Mesh3d>;

template <class T>
void add(PointSet& set, const Point2dData<T>& point) {
  set.values.push_back(omReal64(point.getX()));
  set.values.push_back(omReal64(point.getY()));
}
template <class T>
void add(PointSet& set, const Point3dData<T>& point) {
  set.values.push_back(omReal64(point.getX()));
  set.values.push_back(omReal64(point.getY()));
  set.values.push_back(omReal64(point.getZ()));
}
template <class Points>
void addAll(PointSet& set, const Points& points) {
  for (const auto& point : points) add(set, point);
}

template <class T>
void addPoints(PointSet& set, const Point2d<T>& point) {
  add(set, Point2dData<T>(point.getX(), point.getY()));
}
template <class T>
void addPoints(PointSet& set, const Point3d<T>& point) {
  add(set, Point3dData<T>(point.getX(), point.getY(), point.getZ()));
}
template <class T>
void addPoints(PointSet& set, const PointCloud2d<T>& cloud) {
  addAll(set, cloud.getCollection());
}
template <class T>
void addPoints(PointSet& set, const PointCloud3d<T>& cloud) {
  addAll(set, cloud.getCollection());
}
template <class T>
void addPoints(PointSet& set, const Polygon2d<T>& polygon) {
  addAll(set, polygon.getPointColl());
  if (polygon.getNbPoints() > 1 && isClosed(polygon)) set.values.resize(set.values.size() - 2);
}
template <class T>
void addPoints(PointSet& set, const Mesh3d<T>& mesh) {
  addAll(set, mesh.getVertexColl());
}

}  // namespace

std::optional<PointSet> pointsOf(const BaseSerializationObject& object) {
  PointSet set;
  const auto take = [&](const auto& entity) { return addPoints(set, entity), true; };
  set.dimension = 2;
  if (geom::detail::callTyped(PointEntityList(), object, take)) return set;
  set.dimension = 3;
  if (geom::detail::callTyped(SpatialPointEntityList(), object, take)) return set;
  return std::nullopt;
}

}  // namespace ormix::command

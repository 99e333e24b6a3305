#pragma once

#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXGeometry/Enumeration.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXMath/Location/PreparedRings.h>

#include <array>
#include <string_view>
#include <type_traits>

namespace ormix::geom {

/// Where a point is to a region.
enum ePointLocation {
  ePL_Outside,   ///< not in the region
  ePL_Boundary,  ///< on an edge or a vertex of a ring
  ePL_Inside     ///< in the region
};

/// Where a point is to the region of a polygon, of a polygon with its holes and their islands, or of the boundaries of
/// a shape (of its pixels where it has no boundaries): inside where it is inside an odd number of rings. Rings count
/// whether they are closed or not, orientations and roles do not matter, and null holes and boundaries are ignored.
/// Exact for every type of coordinate: no rounded number decides. What has no vertices, and a point that is not finite,
/// is outside. Linear in the number of vertices; for many points see PreparedPolygon2d.
/// @{
template <class T>
ORMIX_GEOMETRY_API ePointLocation locate(const Polygon2d<T>& polygon, const Point2dData<omReal64>& point);
template <class T>
ORMIX_GEOMETRY_API ePointLocation locate(const PolygonWithHoles2d<T>& polygon, const Point2dData<omReal64>& point);
ORMIX_GEOMETRY_API ePointLocation locate(const Shape2d& shape, const Point2dData<omReal64>& point);
/// @}

/// The same for a point of another type: the entity may be any of those above, or a PreparedPolygon2d.
/// @{
template <class Entity, class T, std::enable_if_t<!std::is_same_v<T, omReal64>, int> = 0>
ePointLocation locate(const Entity& entity, const Point2dData<T>& point) {
  return locate(entity, Point2dData<omReal64>(point.getX(), point.getY()));
}
template <class Entity, class T>
ePointLocation locate(const Entity& entity, const Point2d<T>& point) {
  return locate(entity, point.getCoords());
}
/// @}

/// A copy of the rings of a region, sorted so that it can be asked for the location of many points; answers are those
/// of locate(). Made in linear time; PreparedRings says what a question costs. Several threads may ask at once.
class ORMIX_GEOMETRY_API PreparedPolygon2d {
 public:
  /// \throw ORMIXGeometryException, logged first, when a coordinate is not finite
  /// @{
  template <class T>
  explicit PreparedPolygon2d(const Polygon2d<T>& polygon);
  template <class T>
  explicit PreparedPolygon2d(const PolygonWithHoles2d<T>& polygon);
  explicit PreparedPolygon2d(const Shape2d& shape);
  /// @}

  ePointLocation locate(const Point2dData<omReal64>& point) const;
  template <class T>
  ePointLocation locate(const Point2dData<T>& point) const {
    return locate(Point2dData<omReal64>(point.getX(), point.getY()));
  }
  template <class T>
  ePointLocation locate(const Point2d<T>& point) const {
    return locate(point.getCoords());
  }

 private:
  template <class Entity>
  void prepare(const Entity& entity);

  PreparedRings _rings;
};

/// The answer of a prepared polygon.
inline ePointLocation locate(const PreparedPolygon2d& polygon, const Point2dData<omReal64>& point) {
  return polygon.locate(point);
}

}  // namespace ormix::geom

namespace ormix {

/// Texts of ePointLocation.
template <>
struct EnumerationNames<geom::ePointLocation> {
  static constexpr std::string_view typeName = "ePointLocation";  ///< name of the enumeration
  /// Names of the enumerators, in order of their values.
  static constexpr std::array<std::string_view, 3> names{"ePL_Outside", "ePL_Boundary", "ePL_Inside"};
};

}  // namespace ormix

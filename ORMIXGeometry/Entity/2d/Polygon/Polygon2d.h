#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2dType.h>

#include <string>
#include <vector>

namespace ormix::geom {

/// The region bounded by one ring of vertices, stored in the order along the ring. The ring may be stored open (the
/// last vertex differs from the first) or closed (the last vertex repeats the first): see isClosed() and
/// closePolygon(). Closure, orientation and simplicity are not checked; each measure and transform says what it
/// expects.
template <class T>
class ORMIX_GEOMETRY_API Polygon2d : public Entity2d<Polygon2d<T>, BaseTypedGeometryEntity2d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Polygon2d";  ///< registered name
  static constexpr eEntity2dType s_entity2dType = eE2DT_Polygon;        ///< returned by getEntity2dType()

  using PointColl = std::vector<Point2dData<T>>;  ///< the vertices, contiguous

  /// Without vertices, in the role eP2DT_Exterior.
  Polygon2d() = default;

  ePolygon2dType getPolygon2dType() const { return _polygon2dType; }  ///< the role of the ring
  /// Sets the role of the ring; the vertices stay in their order.
  void setPolygon2dType(const ePolygon2dType& type) { _polygon2dType = type; }

  bool isEmpty() const { return _pointColl.empty(); }  ///< whether there are no vertices
  /// The number of stored vertices; a last vertex that repeats the first is counted.
  std::size_t getNbPoints() const { return _pointColl.size(); }

  /// The stored vertices; they may be changed in any way through non-const access.
  /// @{
  const PointColl& getPointColl() const { return _pointColl; }
  PointColl& getPointColl() { return _pointColl; }
  typename PointColl::const_iterator beginPoint() const { return _pointColl.begin(); }
  typename PointColl::iterator beginPoint() { return _pointColl.begin(); }
  typename PointColl::const_iterator endPoint() const { return _pointColl.end(); }
  typename PointColl::iterator endPoint() { return _pointColl.end(); }
  /// @}

  /// Removes the vertices and keeps the role.
  void clear() { _pointColl.clear(); }

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_polygon2dType", self._polygon2dType) && item("_pointColl", self._pointColl);
  }

  // The vertices come first, so that an assignment that finds no memory for them leaves the role too.
  PointColl _pointColl;
  ePolygon2dType _polygon2dType = eP2DT_Exterior;
};

/// Prints the vertices, "[[0, 0], [4, 0], [4, 3]]".
template <class T>
std::ostream& operator<<(std::ostream& stream, const Polygon2d<T>& polygon);

/// Whether there are at least two vertices and the last equals the first exactly; reals are compared without tolerance.
template <class T>
bool isClosed(const Polygon2d<T>& polygon);

/// Closes the ring: appends its first vertex if the last one differs. A single vertex is repeated, an empty polygon
/// stays empty. No vertex is removed.
///
/// Before that, the end vertices may be made equal: if there are at least three vertices p[0] … p[n-1], and p[0] and
/// p[n-1] have the same x, then p[n-1] is set to p[0] where p[n-2] has this x too, and afterwards p[0] is set to p[n-1]
/// where p[1] has this x. Only x is compared, not y; both ends are treated differently, and an end vertex of an open
/// ring may be moved. All of this is intended.
template <class T>
void closePolygon(Polygon2d<T>& polygon);

/// Reads a ring from the coordinate list of a WKT polygon, such as "1 1, 4 1, 4 5", and closes it with closePolygon();
/// the role is kept. A text of spaces only, or an empty one, gives an empty polygon.
///
/// Numbers are those of Boost's WKT reader in the classic locale, independent of the global locale: an optional sign
/// and decimal digits; for reals also a decimal point and exponent, or "nan", "inf" and "infinity" in upper or lower
/// case. Reals are rounded to the nearest value; too small ones become zero. Coordinates are separated by spaces, not
/// by tabs or line ends; a comma after the last point is allowed.
///
/// Stricter than that reader: a point must have exactly two coordinates, the text must be one ring, and a negative
/// number is an error for unsigned coordinates. Linear in the length of the text, which is not copied.
/// \throw boost::geometry::read_wkt_exception (<boost/geometry/io/wkt/read.hpp>) for any other text, for instance with
/// a fraction for an integer type; the message has the invalid word, and the polygon is empty afterwards
template <class T>
void fromString(Polygon2d<T>& polygon, const std::string& text);

/// Converts each vertex, see cast() of Point2dData, and copies the role.
template <class TOut, class TIn>
Polygon2d<TOut> cast(const Polygon2d<TIn>& polygon);
/// The same into an existing polygon, whose memory is reused.
/// \param result may be `polygon` itself
template <class TOut, class TIn>
void cast(const Polygon2d<TIn>& polygon, Polygon2d<TOut>& result);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(extern, Polygon2d)

#pragma once

#include <ORMIXGeometry/Entity/2d/Entity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2dType.h>

#include <string>
#include <vector>

namespace ormix::geom {

/// The region bounded by one ring of vertices, in ring order. The ring may be stored open (its last vertex differs from
/// its first) or closed (its last vertex repeats its first): see `isClosed` and `closePolygon`. Nothing enforces
/// closure, orientation or simplicity; measures and transforms say what they expect.
template <class T>
class ORMIX_GEOMETRY_API Polygon2d : public Entity2d<Polygon2d<T>, BaseTypedGeometryEntity2d<T>> {
 public:
  static constexpr const char* s_className = "ormix::geom::Polygon2d";
  static constexpr eEntity2dType s_entity2dType = eE2DT_Polygon;

  using PointColl = std::vector<Point2dData<T>>;

  /// Exterior and empty.
  Polygon2d() = default;

  ePolygon2dType getPolygon2dType() const { return _polygon2dType; }
  void setPolygon2dType(const ePolygon2dType& type) { _polygon2dType = type; }

  bool isEmpty() const { return _pointColl.empty(); }
  /// The number of stored vertices; one that closes the ring counts.
  std::size_t getNbPoints() const { return _pointColl.size(); }

  /// The vertices themselves, to be read or changed at will.
  const PointColl& getPointColl() const { return _pointColl; }
  PointColl& getPointColl() { return _pointColl; }
  typename PointColl::const_iterator beginPoint() const { return _pointColl.begin(); }
  typename PointColl::iterator beginPoint() { return _pointColl.begin(); }
  typename PointColl::const_iterator endPoint() const { return _pointColl.end(); }
  typename PointColl::iterator endPoint() { return _pointColl.end(); }

  /// Removes the vertices; the role stays.
  void clear() { _pointColl.clear(); }

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_polygon2dType", self._polygon2dType) && item("_pointColl", self._pointColl);
  }

  ePolygon2dType _polygon2dType = eP2DT_Exterior;
  PointColl _pointColl;
};

/// The vertices: "[[0, 0], [4, 0], [4, 3]]".
template <class T>
std::ostream& operator<<(std::ostream& stream, const Polygon2d<T>& polygon);

/// Whether there are at least two vertices and the last equals the first exactly, without tolerance for reals too.
template <class T>
bool isClosed(const Polygon2d<T>& polygon);

/// Makes the ring closed by appending its first vertex where the last one differs; a single vertex is repeated, an
/// empty polygon stays empty. No vertex is ever removed.
///
/// Where the ends of at least three vertices p[0] … p[n-1] lie on one vertical x = p[0].x, the seam is snapped first:
/// when p[n-2] lies on it too, p[n-1] becomes p[0]; then, when p[1] lies on it, p[0] becomes p[n-1]. Only x is
/// compared, never y, and the snapping may so move a vertex of a ring that was closed otherwise. This asymmetry is
/// intended.
template <class T>
void closePolygon(Polygon2d<T>& polygon);

/// Reads a ring from the coordinate list of a WKT polygon, "1 1, 4 1, 4 5", and closes it with `closePolygon`; the role
/// stays. A text without any number gives an empty polygon.
///
/// What counts as a number is what Boost's WKT reader takes in the classic locale, whatever the global one is: an
/// optional sign with decimal digits, for reals also a point, a decimal exponent, or "nan", "inf" and "infinity" in any
/// case. Reals are rounded to the nearest value; one too small becomes a zero. Only the space separates, not tabs or
/// line ends, and a comma at the very end is allowed.
///
/// Beyond that reader a point must have exactly two coordinates, the text must hold one ring, and a negative number
/// never wraps into an unsigned one. Linear in the text, which is not copied.
/// \throw boost::geometry::read_wkt_exception (<boost/geometry/io/wkt/read.hpp>) for any other text, a fraction for an
///        integer type among them; it names the offending word, and the polygon is then empty
template <class T>
void fromString(Polygon2d<T>& polygon, const std::string& text);

/// Converts each vertex as points are cast and copies the role.
template <class TOut, class TIn>
Polygon2d<TOut> cast(const Polygon2d<TIn>& polygon);
/// The same into an existing polygon, whose memory is used again. \param result may be `polygon` itself
template <class TOut, class TIn>
void cast(const Polygon2d<TIn>& polygon, Polygon2d<TOut>& result);

}  // namespace ormix::geom

ORMIX_GEOMETRY_ENTITY2D_TEMPLATE_LEVELS(extern, Polygon2d)

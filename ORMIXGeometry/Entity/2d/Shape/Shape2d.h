#pragma once

#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>

#include <boost/smart_ptr/shared_ptr.hpp>
#include <iosfwd>
#include <vector>

ORMIX_GEOMETRY_ENTITY2D_LEVELS(extern, Shape2d, BaseGeometryEntity2d)

namespace ormix::geom {

/// A region of an image in two representations: its pixels, and the polygons that bound its connected parts. Pixel (x,
/// y) is the square [x, x + 1) × [y, y + 1), so that boundaries run on the edges of pixels. A shape made by
/// `labelShapes` has both; otherwise neither is derived from the other, and nothing checks that they agree. Measures
/// and transforms use the polygons; a transform leaves the pixels as they are.
///
/// Copies are deep: the polygons are copied too. A polygon may be null: counts and transforms ignore it, measures fail
/// on it, and a shape with it cannot be archived.
class ORMIX_GEOMETRY_API Shape2d : public Entity2d<Shape2d, BaseGeometryEntity2d> {
  using Base = Entity2d<Shape2d, BaseGeometryEntity2d>;

 public:
  static constexpr const char* s_className = "ormix::geom::Shape2d";  ///< registered name
  static constexpr eEntity2dType s_entity2dType = eE2DT_Shape;        ///< returned by getEntity2dType()

  /// The boundaries, one polygon with its holes for each connected part.
  using PolygonWithHolesColl = std::vector<boost::shared_ptr<PolygonWithHoles2d<omReal32>>>;

  /// No pixels, no polygons.
  Shape2d() = default;
  /// Copies are deep; moves take over pixels and polygons.
  /// @{
  Shape2d(const Shape2d& other);
  Shape2d(Shape2d&& other) noexcept;
  Shape2d& operator=(const Shape2d& other);
  Shape2d& operator=(Shape2d&& other) noexcept;
  /// @}
  ~Shape2d() override;

  /// The pixels themselves; they may be changed.
  /// @{
  const RowIntersections& getRowIntersections() const { return _rowIntersections; }
  RowIntersections& getRowIntersections() { return _rowIntersections; }
  /// @}
  /// The runs of the row y; valid until the pixels are changed.
  /// \throw ORMIXGeometryException, logged, when y is not in [getStartY(), getEndY())
  RowIntersections::Row getRowIntersections(omUInt64 y) const { return _rowIntersections.getRow(y); }
  /// The y of the first row, and the y after the last one; both 0 without pixels.
  /// @{
  omUInt64 getStartY() const { return _rowIntersections.getStartRow(); }
  omUInt64 getEndY() const { return _rowIntersections.getEndRow(); }
  /// @}
  /// The number of pixels; linear in the runs.
  omUInt64 getNbPixels() const { return _rowIntersections.getNbPixels(); }
  /// Removes all pixels.
  void clearRowIntersections() { _rowIntersections.clear(); }

  /// The polygons themselves; they may be changed, added and removed.
  /// @{
  const PolygonWithHolesColl& getPolygonWithHolesColl() const { return _polygonWithHolesColl; }
  PolygonWithHolesColl& getPolygonWithHolesColl() { return _polygonWithHolesColl; }
  /// @}
  /// Replaces the polygons by copies of these.
  void setPolygonWithHolesColl(const PolygonWithHolesColl& polygons);
  /// Removes all polygons.
  void clearPolygonWithHolesColl() { _polygonWithHolesColl.clear(); }
  /// Sums over the polygons, with all their holes; modulo 2^32 as those of PolygonWithHoles2d.
  /// @{
  omUInt32 getNbTotPolygons() const;
  omUInt32 getNbTotPoints() const;
  /// @}

  /// Removes pixels and polygons.
  void clear();

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_rowIntersections", self._rowIntersections) &&
           item("_polygonWithHolesColl", self._polygonWithHolesColl);
  }

  RowIntersections _rowIntersections;
  PolygonWithHolesColl _polygonWithHolesColl;
};

/// Prints the polygons, "[[exterior=[[0, 0], [4, 0], [4, 3]], holes=[]], null]"; the pixels are not printed.
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const Shape2d& shape);

}  // namespace ormix::geom

#pragma once

#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Transform/2d/GeometryTransform2d.h>
#include <ORMIXMath/Simplification/SimplifyPaths.h>

ORMIX_GEOMETRY_TRANSFORM2D_LEVELS(extern, SimplifyTransform2d)

namespace ormix::geom {

/// Leaves out vertices of polygons, polygons with holes and the boundaries of shapes, so that what was left out lies
/// within the tolerance of the edge that replaces it. Other entities are not supported.
///
/// By Douglas and Peucker's method; where rings would cross or touch themselves or each other, or pass each other's
/// vertices, vertices are taken back until they do not: valid entities stay valid. Rings keep their roles, orientations
/// and at least three vertices, holes stay inside, and the kept vertices their order. The result does not depend on the
/// vertex with which a ring begins, and is simplified already. Tolerance 0 leaves out only what lies on a line or
/// repeats. simplifyPaths() says all of it.
///
/// A `Polygon2d` that is not closed is a path, whose ends stay; the rings of polygons with holes and of shapes are
/// rings whether they repeat their first vertex or not. A ring that was closed still is. The pixels of a shape stay.
///
/// Fails, the entity untouched, where the tolerance is negative or not finite, a coordinate is not finite, or edges of
/// the entity cross that would be in the result. Null holes and boundaries are ignored. O(n log n) as a rule.
class ORMIX_GEOMETRY_API SimplifyTransform2d : public GeometryTransform2d<SimplifyTransform2d> {
 public:
  static constexpr const char* s_className = "ormix::geom::SimplifyTransform2d";  ///< registered name
  static constexpr eTransform2dType s_transform2dType = eT2DT_Simplify;

  /// Tolerance 0.
  SimplifyTransform2d() = default;
  /// \param tolerance in the unit of the coordinates
  explicit SimplifyTransform2d(omReal64 tolerance) : _tolerance(tolerance) {}

  omReal64 getTolerance() const { return _tolerance; }
  void setTolerance(omReal64 tolerance) { _tolerance = tolerance; }

  /// What the visits of applyInSitu() call. A failed result says why.
  /// @{
  template <class T>
  BoolResult processInSitu(Polygon2d<T>& polygon) const;
  template <class T>
  BoolResult processInSitu(PolygonWithHoles2d<T>& polygon) const;
  BoolResult processInSitu(Shape2d& shape) const;
  /// @}
  /// What the visits of apply() call; null where it fails.
  /// @{
  template <class T>
  GeometryEntity2dPtr process(const Polygon2d<T>& polygon) const;
  template <class T>
  GeometryEntity2dPtr process(const PolygonWithHoles2d<T>& polygon) const;
  GeometryEntity2dPtr process(const Shape2d& shape) const;
  /// @}

  /// The simplified entity.
  /// \param method simplifyPaths() describes the others, of which ePS_EachAlone may leave crossings
  /// \throw ORMIXGeometryException, logged first, where it fails
  /// @{
  template <class T>
  static Polygon2d<T> simplify(const Polygon2d<T>& polygon, omReal64 tolerance,
                               ePathSimplification method = ePS_KeepTopology);
  template <class T>
  static PolygonWithHoles2d<T> simplify(const PolygonWithHoles2d<T>& polygon, omReal64 tolerance,
                                        ePathSimplification method = ePS_KeepTopology);
  static Shape2d simplify(const Shape2d& shape, omReal64 tolerance, ePathSimplification method = ePS_KeepTopology);
  static GeometryEntity2dPtr simplify(const BaseGeometryEntity2d& entity, omReal64 tolerance,
                                      ePathSimplification method = ePS_KeepTopology);
  /// @}

  /// The entities of a collection simplified together, of whatever classes and coordinate types: their rings stay apart
  /// from each other as those of one entity do, and the borders that neighbours share, vertex by vertex, remain shared.
  /// \throw ORMIXGeometryException, logged first, where it fails, and for null and entities that are not supported
  static GeometryEntity2dPtrColl simplifyAll(const GeometryEntity2dPtrColl& entities, omReal64 tolerance,
                                             ePathSimplification method = ePS_KeepTopology);

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_tolerance", self._tolerance);
  }

  omReal64 _tolerance = 0;
};

}  // namespace ormix::geom

#pragma once

#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Measure/BaseGeometryMeasure.h>
#include <ORMIXGeometry/Transform/2d/GeometryTransform2d.h>
#include <ORMIXGeometry/Transform/2d/PlanarDerivationTable.h>
#include <ORMIXGeometry/Transform/DerivedTransform.h>

ORMIX_GEOMETRY_DERIVED_TRANSFORM2D_LEVELS(extern, CentroidTransform2d)

namespace ormix::geom {

/// The centroid of a planar entity, a `Point2d<omReal64>`.
///
/// Of areas: the area is that of each ring by its role, whichever way round it is stored, less that of the holes where
/// the policy says so, and the edge from the last vertex to the first needs not be stored. Where the area is 0, as of a
/// ring that is folded flat, it is the centroid of the edges, and where they have no length, of the vertices. Of a
/// segment it is its middle, of a cloud the mean of its points, of what has a centre the centre. A shape without
/// boundaries has that of its pixels, whose centres are at half numbers.
///
/// Computed about the first vertex: to 1e-14 of the size, wherever it lies, as far as omReal64 has the number. An
/// area counts as 0 within the rounding of its sum, 1e-15 of length times extent, and if its centroid is outside.
///
/// Vectors, lines and parabolas have none, nor has what has no points, a null hole that counts, or a number that is
/// not finite, or beyond about 1e60 in a ring. In place for `Point2d<omReal64>`, left as it is. Linear in the vertices.
class ORMIX_GEOMETRY_API CentroidTransform2d : public DerivedTransform<CentroidTransform2d, PlanarTransforms> {
 public:
  static constexpr const char* s_className = "ormix::geom::CentroidTransform2d";  ///< registered name
  static constexpr eTransform2dType s_transform2dType = eT2DT_Centroid;

  template <class Entity>
  struct Supports : std::bool_constant<s_planarDerivationsOf<Entity>.centroid> {};
  template <class Entity>
  using Result = Point2d<omReal64>;

  CentroidTransform2d() = default;

  /// Whether the area of holes counts; eHMP_ProcessHoles unless set otherwise.
  /// @{
  eHoleMsrPolicy getHoleMsrPolicy() const { return _holeMsrPolicy; }
  void setHoleMsrPolicy(eHoleMsrPolicy policy) { _holeMsrPolicy = policy; }
  /// @}

  /// The centroid of an entity.
  /// \throw ORMIXGeometryException, logged first, where there is none
  /// @{
  template <class Entity, std::enable_if_t<Supports<Entity>::value, int> = 0>
  static Result<Entity> centroid(const Entity& entity) {
    return derivedOf(entity);
  }
  static Point2d<omReal64> centroid(const BaseGeometryEntity2d& entity) {
    return static_cast<const Point2d<omReal64>&>(*derivedOfAny(entity));
  }
  /// @}

  /// The same without an exception.
  /// \return false, `result` unspecified, where there is none
  template <class Entity>
  bool derive(const Entity& entity, Result<Entity>& result) const;

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    return item("_holeMsrPolicy", self._holeMsrPolicy);
  }

  eHoleMsrPolicy _holeMsrPolicy = eHMP_ProcessHoles;
};

}  // namespace ormix::geom

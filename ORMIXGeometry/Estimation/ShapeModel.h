#pragma once

#include <ORMIXGeometry/Estimation/FramedModel.h>
#include <ORMIXMath/Algebra/PointTypes.h>

/// \file
/// Lines, circles, cylinders, cones and tori of space as models of distances; not installed.

namespace ormix::geom::detail {

/// The kinds of shapes with an axis, and what their sizes are.
enum eShapeKind {
  eSK_Line,      ///< none
  eSK_Circle,    ///< radius
  eSK_Cylinder,  ///< radius
  eSK_Cone,      ///< half angle; the point is the apex
  eSK_Torus      ///< major and minor radius
};

/// Distances from a shape around an axis, signed where it is a surface, positive outside. Of a line and a circle a
/// sample has two equations: across the line, from the circle in its plane and along its axis.
///
/// State: a point and the unit vector of the axis in the frame, then the sizes. Unknowns: shifts of the point across
/// the axis, and along it where that matters; two turns of the axis about the point; the sizes. Reported: point, axis,
/// sizes. Where the point may lie anywhere on the axis it stays in the plane of the shifts, and has no variance along
/// the axis.
class ORMIX_GEOMETRY_API ShapeModel : public FramedModel<3> {
 public:
  ShapeModel(eShapeKind kind, const SampleView& fitted);

  /// The state of what is reported.
  State stateOf(const SpatialPoint& point, const SpatialPoint& axis, const std::array<omReal64, 2>& sizes) const;

  void evaluate(const State& state, std::size_t first, std::size_t nb, const DistanceBlock& block) const override;
  bool move(const State& state, const Step& step, State& moved) const override;
  omReal64 report(const State& state, omReal64* params, omReal64* jacobian) const override;

 private:
  std::size_t nbShifts() const { return _kind == eSK_Line || _kind == eSK_Cylinder ? 2 : 3; }
  std::size_t nbSizes() const { return _kind == eSK_Line ? 0 : _kind == eSK_Torus ? 2 : 1; }

  eShapeKind _kind;
};

/// A model of one kind, as fitWithReport() makes it.
template <eShapeKind kind>
struct ShapeModelOf : ShapeModel {
  explicit ShapeModelOf(const SampleView& fitted) : ShapeModel(kind, fitted) {}
};

}  // namespace ormix::geom::detail

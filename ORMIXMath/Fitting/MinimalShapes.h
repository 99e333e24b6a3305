#pragma once

#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXMath/Export.h>
#include <ORMIXMath/Fitting/SpatialShapes.h>
#include <ORMIXMath/Shape/EllipsoidQuadric.h>

#include <array>
#include <cstddef>

/// \file
/// Shapes through as few points as determine them, for robust loops, which draw many such sets: fast, and exact to
/// about half the digits; not installed.
///
/// Samples are those points, of dimension 3 (2 of an ellipse), finite. Functions return how many shapes they found,
/// which are the first elements of the array. Nothing is allocated; constant time.

namespace ormix::detail {

/// An ellipse as its estimator has it.
struct PlanarEllipse {
  omReal64 centerX, centerY, major, minor, direction;
};

/// Whether the conic through five points is an ellipse, and which.
ORMIX_MATH_API bool ellipseThrough(const SampleView& five, PlanarEllipse& ellipse);

/// Whether the quadric through nine points is an ellipsoid, and which.
ORMIX_MATH_API bool ellipsoidThrough(const SampleView& nine, EllipsoidParameters& ellipsoid);

/// All cylinders through five points, but pairs that are nearly equal: at most six.
///
/// The axis d of a cylinder through the origin and q1 to q4 satisfies, with u = (q1 d, q2 d, q3 d), one quadratic and
/// one cubic homogeneous equation. The first is a conic, run through by an angle, along which the second changes sign.
ORMIX_MATH_API std::size_t cylindersThrough(const SampleView& five, std::array<SpatialCylinder, 6>& found);

/// Some of the cones through six points: those that Newton's method reaches from the cylinders through five of them.
ORMIX_MATH_API std::size_t conesThrough(const SampleView& six, std::array<SpatialCone, 6>& found);

/// Some of the tori through seven points: those that Newton's method reaches from cylinders through five of them, as
/// bent tubes.
ORMIX_MATH_API std::size_t toriThrough(const SampleView& seven, std::array<SpatialTorus, 12>& found);

}  // namespace ormix::detail

#pragma once

#include <ORMIXGeometry/Estimation/FitReport.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXGeometry/Transform/2d/BaseGeometryTransform2d.h>
#include <ORMIXGeometry/Transform/3d/BaseGeometryTransform3d.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <iosfwd>

/// \file
/// How sure what follows from fitted models is: their images, sizes and distances.
/// \code
/// FitReport moved;
/// UncertainValue gap;
/// BoolResult result = transformed(circleReport, rigidReport, moved);  // with the uncertainty of both
/// if (result) result = distance(moved, otherReport, gap);             // std::cout << gap: 4.109 ± 0.031 (k = 2)
/// \endcode
/// A report is of a point, line, circle, ellipse or arc of the plane, or a plan, line, circle, sphere, ellipsoid,
/// cylinder, cone or torus of space, as the fits write them; other models are refused. Cylinders, cones and arcs are
/// reported without their ends, which are only where the samples end: they have images, but neither sizes nor
/// distances. Covariances are propagated through the library's own measures and transforms
/// by central differences along the principal axes of the covariance, by a sixteenth of a standard deviation: to first
/// order in the covariance, as GUM2008 has it. Two reports are taken as independent. An unknown covariance (NaN) makes
/// unknown uncertainties.
///
/// On failure the message says why, and the output is unchanged: a model that is not known or has other parameters, or
/// a direction of length 0, or that a measure, a transform or the distance does not support.

namespace ormix::geom {

/// A value and its standard deviation, which may be NaN where it is unknown.
struct UncertainValue {
  omReal64 value = 0;                ///< in the unit of the samples, its square or its cube
  omReal64 standardUncertainty = 0;  ///< one standard deviation
};

/// Prints it as withUncertainty() does, with k = 2.
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const UncertainValue& value);

/// The report on the image of the model: its parameters and their covariance, without residuals. The transform is
/// exact.
/// @{
ORMIX_GEOMETRY_API BoolResult transformed(const FitReport& report, const BaseGeometryTransform2d& transform,
                                          FitReport& image);
ORMIX_GEOMETRY_API BoolResult transformed(const FitReport& report, const BaseGeometryTransform3d& transform,
                                          FitReport& image);
/// @}
/// The same by a transform that was fitted, with its covariance, too.
ORMIX_GEOMETRY_API BoolResult transformed(const FitReport& report, const FitReport& ofTransform, FitReport& image);

/// \name Sizes and distances
/// As the measures and distance() have them of the entity: of space the area is that of the surface.
/// @{
ORMIX_GEOMETRY_API BoolResult area(const FitReport& report, UncertainValue& value);
ORMIX_GEOMETRY_API BoolResult perimeter(const FitReport& report, UncertainValue& value);
ORMIX_GEOMETRY_API BoolResult volume(const FitReport& report, UncertainValue& value);
/// Where the entities have points in common, it is 0 without uncertainty. That of parallel plans, or of a plan and a
/// line, has an unknown one: they meet after the least turn.
ORMIX_GEOMETRY_API BoolResult distance(const FitReport& a, const FitReport& b, UncertainValue& value);
/// @}

}  // namespace ormix::geom

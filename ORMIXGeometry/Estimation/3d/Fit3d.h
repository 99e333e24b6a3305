#pragma once

#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Estimation/3d/Estimation3dUtils.h>
#include <ORMIXGeometry/Estimation/FitReport.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXUtil/ProcessingResult.h>

/// \file
/// Spatial entities and transforms from measured points or pairs in one call:
/// \code
/// Sphere3d<omReal64> sphere;
/// const BoolResult result = fitSphere(toSamples(points), sphere);
/// \endcode
/// Each calls the estimator of the same name and sets the output on success. On failure the output is unchanged, and
/// the message is that of the estimator.

namespace ormix::geom {

/// Points (x, y, z), see the estimator of the entity.
/// @{
ORMIX_GEOMETRY_API BoolResult fitPlan(const SampleView& points, Plan3d& plan);
ORMIX_GEOMETRY_API BoolResult fitSphere(const SampleView& points, Sphere3d<omReal64>& sphere);
ORMIX_GEOMETRY_API BoolResult fitEllipsoid(const SampleView& points, Ellipsoid3d<omReal64>& ellipsoid);
/// The part of the side of a cylinder, or of a cone, between the outermost samples along its axis.
/// @{
ORMIX_GEOMETRY_API BoolResult fitCylinder(const SampleView& points, Cylinder3d<omReal64>& cylinder);
ORMIX_GEOMETRY_API BoolResult fitCone(const SampleView& points, Cone3d<omReal64>& cone);
/// @}
ORMIX_GEOMETRY_API BoolResult fitTorus(const SampleView& points, Torus3d<omReal64>& torus);
ORMIX_GEOMETRY_API BoolResult fitLine(const SampleView& points, Line3d& line);
ORMIX_GEOMETRY_API BoolResult fitCircle(const SampleView& points, Circle3d<omReal64>& circle);
/// @}
/// Pairs of a source and its target, either as samples (x1, y1, z1, x2, y2, z2) or as sources and targets (x, y, z) in
/// separate arrays, paired by index and not copied. See the estimator of the transform.
/// @{
ORMIX_GEOMETRY_API BoolResult fitTranslation(const SampleView& pairs, TranslationTransform3d& transform);
ORMIX_GEOMETRY_API BoolResult fitTranslation(const SampleView& sources, const SampleView& targets,
                                             TranslationTransform3d& transform);
ORMIX_GEOMETRY_API BoolResult fitRigid(const SampleView& pairs, RigidTransform3d& transform);
ORMIX_GEOMETRY_API BoolResult fitRigid(const SampleView& sources, const SampleView& targets,
                                       RigidTransform3d& transform);
ORMIX_GEOMETRY_API BoolResult fitSimilarity(const SampleView& pairs, SimilarityTransform3d& transform);
ORMIX_GEOMETRY_API BoolResult fitSimilarity(const SampleView& sources, const SampleView& targets,
                                            SimilarityTransform3d& transform);
ORMIX_GEOMETRY_API BoolResult fitHomography(const SampleView& pairs, HomographyTransform3d& transform);
/// @}

/// \name Fits with a report
/// As those of Fit2d.h.
/// @{

/// Points (x, y, z): normal x, normal y, normal z, rho. These four and not the angles of the plan, as the angles of a
/// plan across the z axis have no variance; the covariance has rank 3.
ORMIX_GEOMETRY_API BoolResult fitPlan(const SampleView& points, const FitOptions& options, Plan3d& plan,
                                      FitReport& report);
/// Points (x, y, z): center x, center y, center z, radius.
ORMIX_GEOMETRY_API BoolResult fitSphere(const SampleView& points, const FitOptions& options, Sphere3d<omReal64>& sphere,
                                        FitReport& report);
/// Points (x, y, z): center x, center y, center z, major radius, medium radius, minor radius, rotation x, rotation y,
/// rotation z. The last three are the rotation vector of the axes (its length is the angle) and not alpha, beta and
/// chi, which have no variance where beta is a right angle.
ORMIX_GEOMETRY_API BoolResult fitEllipsoid(const SampleView& points, const FitOptions& options,
                                           Ellipsoid3d<omReal64>& ellipsoid, FitReport& report);
/// Points (x, y, z): point x, point y, point z, direction x, direction y, direction z, and of a cylinder radius. The
/// point is one of the axis, in the middle of the samples, and has no variance along it. The cylinder ends at the
/// samples that were used.
/// @{
ORMIX_GEOMETRY_API BoolResult fitCylinder(const SampleView& points, const FitOptions& options,
                                          Cylinder3d<omReal64>& cylinder, FitReport& report);
ORMIX_GEOMETRY_API BoolResult fitLine(const SampleView& points, const FitOptions& options, Line3d& line,
                                      FitReport& report);
/// @}
/// Points (x, y, z): apex x, apex y, apex z, direction x, direction y, direction z, half angle. The cone ends at the
/// samples that were used.
ORMIX_GEOMETRY_API BoolResult fitCone(const SampleView& points, const FitOptions& options, Cone3d<omReal64>& cone,
                                      FitReport& report);
/// Points (x, y, z): center x, center y, center z, axis x, axis y, axis z, major radius, minor radius.
ORMIX_GEOMETRY_API BoolResult fitTorus(const SampleView& points, const FitOptions& options, Torus3d<omReal64>& torus,
                                       FitReport& report);
/// Points (x, y, z): center x, center y, center z, normal x, normal y, normal z, radius.
ORMIX_GEOMETRY_API BoolResult fitCircle(const SampleView& points, const FitOptions& options, Circle3d<omReal64>& circle,
                                        FitReport& report);
/// Pairs (x1, y1, z1, x2, y2, z2).
/// @{
ORMIX_GEOMETRY_API BoolResult fitTranslation(const SampleView& pairs, const FitOptions& options,
                                             TranslationTransform3d& transform, FitReport& report);
ORMIX_GEOMETRY_API BoolResult fitRigid(const SampleView& pairs, const FitOptions& options, RigidTransform3d& transform,
                                       FitReport& report);
ORMIX_GEOMETRY_API BoolResult fitSimilarity(const SampleView& pairs, const FitOptions& options,
                                            SimilarityTransform3d& transform, FitReport& report);
ORMIX_GEOMETRY_API BoolResult fitHomography(const SampleView& pairs, const FitOptions& options,
                                            HomographyTransform3d& transform, FitReport& report);
/// @}
/// @}

}  // namespace ormix::geom

#pragma once

#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Estimation/2d/Estimation2dUtils.h>
#include <ORMIXGeometry/Estimation/FitReport.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXUtil/ProcessingResult.h>

/// \file
/// Entities and transforms from measured points, lines or pairs in one call:
/// \code
/// Circle2d<omReal64> circle;
/// const BoolResult result = fitCircle(toSamples(points), circle);
/// \endcode
/// Each calls the estimator of the same name and sets the output on success. On failure the output is unchanged, and
/// the message is that of the estimator.

namespace ormix::geom {

/// Points (x, y), see Circle2dEstimator.
ORMIX_GEOMETRY_API BoolResult fitCircle(const SampleView& points, Circle2d<omReal64>& circle);
/// Points (x, y), see Arc2dEstimator.
ORMIX_GEOMETRY_API BoolResult fitArc(const SampleView& points, Arc2d<omReal64>& arc);
/// Points (x, y), see Ellipse2dEstimator.
ORMIX_GEOMETRY_API BoolResult fitEllipse(const SampleView& points, Ellipse2d<omReal64>& ellipse);
/// Points (x, y), see Line2dEstimator; the parameters are normalised by Line2d::setCoords.
ORMIX_GEOMETRY_API BoolResult fitLine(const SampleView& points, Line2d& line);
/// The common point of lines (theta, rho), see Line2dIntersectionEstimator.
ORMIX_GEOMETRY_API BoolResult fitIntersection(const SampleView& lines, Point2d<omReal64>& point);
/// Pairs (x1, y1, x2, y2) of a source and its target, see the estimator of the transform.
/// @{
ORMIX_GEOMETRY_API BoolResult fitTranslation(const SampleView& pairs, TranslationTransform2d& transform);
ORMIX_GEOMETRY_API BoolResult fitRigid(const SampleView& pairs, RigidTransform2d& transform);
ORMIX_GEOMETRY_API BoolResult fitSimilarity(const SampleView& pairs, SimilarityTransform2d& transform);
ORMIX_GEOMETRY_API BoolResult fitHomography(const SampleView& pairs, HomographyTransform2d& transform);
/// @}

/// \name Fits with a report
/// The entity or transform by the options (weights, orthogonal distances, losses, a robust loop), and in `report` its
/// parameters, their covariance and how the fit came about. On failure the entity is unchanged, the message is that of
/// the estimator where it is what failed, and the report holds the status, and nothing of a model.
/// @{

/// Points (x, y): center x, center y, radius.
ORMIX_GEOMETRY_API BoolResult fitCircle(const SampleView& points, const FitOptions& options, Circle2d<omReal64>& circle,
                                        FitReport& report);
/// Points (x, y): center x, center y, radius; an arc ends at the samples that were used.
ORMIX_GEOMETRY_API BoolResult fitArc(const SampleView& points, const FitOptions& options, Arc2d<omReal64>& arc,
                                     FitReport& report);
/// Points (x, y): center x, center y, major radius, minor radius, theta.
ORMIX_GEOMETRY_API BoolResult fitEllipse(const SampleView& points, const FitOptions& options,
                                         Ellipse2d<omReal64>& ellipse, FitReport& report);
/// Points (x, y): rho, theta.
ORMIX_GEOMETRY_API BoolResult fitLine(const SampleView& points, const FitOptions& options, Line2d& line,
                                      FitReport& report);
/// Lines (theta, rho).
ORMIX_GEOMETRY_API BoolResult fitIntersection(const SampleView& lines, const FitOptions& options,
                                              Point2d<omReal64>& point, FitReport& report);
/// Pairs (x1, y1, x2, y2).
/// @{
ORMIX_GEOMETRY_API BoolResult fitTranslation(const SampleView& pairs, const FitOptions& options,
                                             TranslationTransform2d& transform, FitReport& report);
ORMIX_GEOMETRY_API BoolResult fitRigid(const SampleView& pairs, const FitOptions& options, RigidTransform2d& transform,
                                       FitReport& report);
ORMIX_GEOMETRY_API BoolResult fitSimilarity(const SampleView& pairs, const FitOptions& options,
                                            SimilarityTransform2d& transform, FitReport& report);
ORMIX_GEOMETRY_API BoolResult fitHomography(const SampleView& pairs, const FitOptions& options,
                                            HomographyTransform2d& transform, FitReport& report);
/// @}
/// @}

}  // namespace ormix::geom

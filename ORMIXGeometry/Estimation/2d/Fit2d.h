#pragma once

#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Estimation/2d/Estimation2dUtils.h>
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

}  // namespace ormix::geom

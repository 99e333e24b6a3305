#pragma once

#include <ORMIXGeometry/Entity/2d/PlanarClasses.h>
#include <ORMIXGeometry/Estimation/2d/Estimation2dUtils.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXUtil/ProcessingResult.h>

/// \file
/// From measured points, lines or pairs to the entity or transform in one call:
/// \code
/// Circle2d<omReal64> circle;
/// const BoolResult result = fitCircle(toSamples(points), circle);
/// \endcode
/// Each does what the estimator of the same name does and fails as it does, the output untouched.

namespace ormix::geom {

ORMIX_GEOMETRY_API BoolResult fitCircle(const SampleView& points, Circle2d<omReal64>& circle);
ORMIX_GEOMETRY_API BoolResult fitEllipse(const SampleView& points, Ellipse2d<omReal64>& ellipse);
/// The line is normalised as by Line2d::setCoords.
ORMIX_GEOMETRY_API BoolResult fitLine(const SampleView& points, Line2d& line);
/// The common point of lines.
ORMIX_GEOMETRY_API BoolResult fitIntersection(const SampleView& lines, Point2d<omReal64>& point);
ORMIX_GEOMETRY_API BoolResult fitTranslation(const SampleView& pairs, TranslationTransform2d& transform);
ORMIX_GEOMETRY_API BoolResult fitRigid(const SampleView& pairs, RigidTransform2d& transform);
ORMIX_GEOMETRY_API BoolResult fitSimilarity(const SampleView& pairs, SimilarityTransform2d& transform);
ORMIX_GEOMETRY_API BoolResult fitHomography(const SampleView& pairs, HomographyTransform2d& transform);

}  // namespace ormix::geom

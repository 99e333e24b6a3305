#pragma once

#include <ORMIXGeometry/Entity/3d/SpatialClasses.h>
#include <ORMIXGeometry/Estimation/3d/Estimation3dUtils.h>
#include <ORMIXGeometry/Export.h>
#include <ORMIXMath/Estimation/SampleView.h>
#include <ORMIXUtil/ProcessingResult.h>

/// \file
/// From measured spatial points or pairs to the entity or transform in one call:
/// \code
/// Sphere3d<omReal64> sphere;
/// const BoolResult result = fitSphere(toSamples(points), sphere);
/// \endcode
/// Each does what the estimator of the same name does and fails as it does, the output untouched. Where sources and
/// targets are taken apart, they are samples of dimension 3 each and pairs by their index; nothing is copied.

namespace ormix::geom {

ORMIX_GEOMETRY_API BoolResult fitPlan(const SampleView& points, Plan3d& plan);
ORMIX_GEOMETRY_API BoolResult fitSphere(const SampleView& points, Sphere3d<omReal64>& sphere);
ORMIX_GEOMETRY_API BoolResult fitEllipsoid(const SampleView& points, Ellipsoid3d<omReal64>& ellipsoid);
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

}  // namespace ormix::geom

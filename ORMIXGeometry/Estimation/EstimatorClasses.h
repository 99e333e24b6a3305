#pragma once

#include <ORMIXGeometry/Entity/ClassList.h>
#include <ORMIXGeometry/Export.h>

// Every estimator and the report of fits, declared once: the first declaration decides the visibility of what is
// instantiated for a class before it is defined.

namespace ormix::geom {

/// Estimators of entities and transforms of the plane.
/// @{
class ORMIX_GEOMETRY_API Arc2dEstimator;
class ORMIX_GEOMETRY_API Circle2dEstimator;
class ORMIX_GEOMETRY_API Ellipse2dEstimator;
class ORMIX_GEOMETRY_API HomographyTransform2dEstimator;
class ORMIX_GEOMETRY_API Line2dEstimator;
class ORMIX_GEOMETRY_API Line2dIntersectionEstimator;
class ORMIX_GEOMETRY_API RigidTransform2dEstimator;
class ORMIX_GEOMETRY_API SimilarityTransform2dEstimator;
class ORMIX_GEOMETRY_API TranslationTransform2dEstimator;
/// @}

/// Estimators of entities and transforms of space.
/// @{
class ORMIX_GEOMETRY_API Circle3dEstimator;
class ORMIX_GEOMETRY_API Cone3dEstimator;
class ORMIX_GEOMETRY_API Cylinder3dEstimator;
class ORMIX_GEOMETRY_API Ellipsoid3dEstimator;
class ORMIX_GEOMETRY_API HomographyTransform3dEstimator;
class ORMIX_GEOMETRY_API Line3dEstimator;
class ORMIX_GEOMETRY_API Plan3dEstimator;
class ORMIX_GEOMETRY_API RigidTransform3dEstimator;
class ORMIX_GEOMETRY_API SimilarityTransform3dEstimator;
class ORMIX_GEOMETRY_API Sphere3dEstimator;
class ORMIX_GEOMETRY_API Torus3dEstimator;
class ORMIX_GEOMETRY_API TranslationTransform3dEstimator;
/// @}

/// What a fit answers besides the entity.
class ORMIX_GEOMETRY_API FitReport;

/// All estimators. An estimator that is missing here does not compile.
using EstimatorList = ClassList<Circle2dEstimator, Ellipse2dEstimator, HomographyTransform2dEstimator, Line2dEstimator,
                                Line2dIntersectionEstimator, RigidTransform2dEstimator, SimilarityTransform2dEstimator,
                                TranslationTransform2dEstimator, Ellipsoid3dEstimator, HomographyTransform3dEstimator,
                                Plan3dEstimator, RigidTransform3dEstimator, SimilarityTransform3dEstimator,
                                Sphere3dEstimator, TranslationTransform3dEstimator, Arc2dEstimator, Circle3dEstimator,
                                Cone3dEstimator, Cylinder3dEstimator, Line3dEstimator, Torus3dEstimator>;

/// All results of estimations that are objects themselves.
using EstimationResultList = ClassList<FitReport>;

}  // namespace ormix::geom

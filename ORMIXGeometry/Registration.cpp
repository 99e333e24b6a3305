#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>
#include <ORMIXGeometry/Estimation/2d/Arc2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Circle2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Ellipse2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/HomographyTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Line2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/Line2dIntersectionEstimator.h>
#include <ORMIXGeometry/Estimation/2d/RigidTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/SimilarityTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/TranslationTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Circle3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Cone3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Cylinder3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Ellipsoid3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/HomographyTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Line3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Plan3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/RigidTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/SimilarityTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Sphere3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/Torus3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/TranslationTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/FitReport.h>
#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>
#include <ORMIXGeometry/Measure/2d/HuMoments2dO3.h>
#include <ORMIXGeometry/Measure/2d/HuMomentsMsr2d.h>
#include <ORMIXGeometry/Measure/2d/Moments2dO3.h>
#include <ORMIXGeometry/Measure/2d/MomentsMsr2d.h>
#include <ORMIXGeometry/Measure/2d/PerimeterMsr2d.h>
#include <ORMIXGeometry/Measure/3d/AreaMsr3d.h>
#include <ORMIXGeometry/Measure/3d/VolumeMsr3d.h>
#include <ORMIXGeometry/Tools/RTree/RTree.h>
#include <ORMIXGeometry/Transform/2d/AnisotropicScaleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/CentroidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/ConvexHullTransform2d.h>
#include <ORMIXGeometry/Transform/2d/EnvelopeTransform2d.h>
#include <ORMIXGeometry/Transform/2d/HomographyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/MinEnclosingCircleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RigidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RotationTransform2d.h>
#include <ORMIXGeometry/Transform/2d/ScaleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimilarityTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimplifyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>
#include <ORMIXGeometry/Transform/3d/AnisotropicScaleTransform3d.h>
#include <ORMIXGeometry/Transform/3d/CentroidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/ConvexHullTransform3d.h>
#include <ORMIXGeometry/Transform/3d/EnvelopeTransform3d.h>
#include <ORMIXGeometry/Transform/3d/HomographyTransform3d.h>
#include <ORMIXGeometry/Transform/3d/MinEnclosingSphereTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RigidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RotationTransform3d.h>
#include <ORMIXGeometry/Transform/3d/ScaleTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SimilarityTransform3d.h>
#include <ORMIXGeometry/Transform/3d/TranslationTransform3d.h>
#include <ORMIXUtil/Object/DynamicRegistrator.h>

// Every class of the library is registered here while the library is loaded, and taken back when it is closed.

namespace ormix::geom {

namespace {

template <class List>
struct Registrators;
template <class... Class>
struct Registrators<ClassList<Class...>> : DynamicRegistrator<Class>... {};

const Registrators<JoinedLists<PlanarEntityList, SpatialEntityList>> g_entities;
const Registrators<JoinedLists<PlanarMeasureList, PlanarMeasureResultList, SpatialMeasureList>> g_measures;
const Registrators<JoinedLists<PlanarTransformList, SpatialTransformList>> g_transforms;
const Registrators<JoinedLists<EstimatorList, EstimationResultList>> g_estimators;
const Registrators<RTreeList> g_indexes;

}  // namespace

}  // namespace ormix::geom

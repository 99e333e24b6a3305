#pragma once

#include <ORMIXGeometry/Entity/2d/Arc/Arc2d.h>
#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXGeometry/Entity/2d/Ellipse/Ellipse2d.h>
#include <ORMIXGeometry/Entity/2d/Line/Line2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2d.h>
#include <ORMIXGeometry/Entity/3d/Circle/Circle3d.h>
#include <ORMIXGeometry/Entity/3d/Cone/Cone3d.h>
#include <ORMIXGeometry/Entity/3d/Cylinder/Cylinder3d.h>
#include <ORMIXGeometry/Entity/3d/Ellipsoid/Ellipsoid3d.h>
#include <ORMIXGeometry/Entity/3d/Line/Line3d.h>
#include <ORMIXGeometry/Entity/3d/Plan/Plan3d.h>
#include <ORMIXGeometry/Entity/3d/Sphere/Sphere3d.h>
#include <ORMIXGeometry/Entity/3d/Torus/Torus3d.h>
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
#include <ORMIXGeometry/Transform/2d/HomographyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RigidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimilarityTransform2d.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>
#include <ORMIXGeometry/Transform/3d/HomographyTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RigidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SimilarityTransform3d.h>
#include <ORMIXGeometry/Transform/3d/TranslationTransform3d.h>

#include <boost/numeric/ublas/vector.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>

#include <algorithm>
#include <cmath>
#include <type_traits>

/// \file
/// What the parameters of each estimator are those of: `makeModel(ClassTag<Estimator>(), params)`, a new entity or
/// transform.

namespace ormix::python {

template <class Estimator>
using TagOf = geom::ClassTag<Estimator>;

inline auto makeModel(TagOf<geom::Circle2dEstimator>, const RealVector& p) {
  auto circle = boost::make_shared<geom::Circle2d<omReal64>>();
  circle->setCoords({p(0), p(1)}, p(2));
  return circle;
}
inline auto makeModel(TagOf<geom::Ellipse2dEstimator>, const RealVector& p) {
  auto ellipse = boost::make_shared<geom::Ellipse2d<omReal64>>();
  ellipse->setCoords({p(0), p(1)}, p(2), p(3), p(4));
  return ellipse;
}
inline auto makeModel(TagOf<geom::Line2dEstimator>, const RealVector& p) {
  auto line = boost::make_shared<geom::Line2d>();
  line->setCoords(p(1), p(0));
  return line;
}
inline auto makeModel(TagOf<geom::Line2dIntersectionEstimator>, const RealVector& p) {
  auto point = boost::make_shared<geom::Point2d<omReal64>>();
  point->setCoords(p(0) / p(2), p(1) / p(2));
  return point;
}
inline auto makeModel(TagOf<geom::Plan3dEstimator>, const RealVector& p) {
  auto plan = boost::make_shared<geom::Plan3d>();
  plan->setCoords(p(2), p(0), p(1));
  return plan;
}
inline auto makeModel(TagOf<geom::Sphere3dEstimator>, const RealVector& p) {
  auto sphere = boost::make_shared<geom::Sphere3d<omReal64>>();
  sphere->setCoords({p(0), p(1), p(2)}, p(3));
  return sphere;
}
inline auto makeModel(TagOf<geom::Arc2dEstimator>, const RealVector& p) {
  return boost::make_shared<geom::Arc2d<omReal64>>(geom::Point2dData<omReal64>(p(0), p(1)), p(2), p(3), p(4));
}
/// The three numbers from an index on.
inline geom::Point3dData<omReal64> tripleOf(const RealVector& p, std::size_t at) {
  return {p(at), p(at + 1), p(at + 2)};
}
/// Between the points of the axis at these distances along it.
inline geom::Point3dData<omReal64> alongAxis(const RealVector& p, omReal64 at) {
  return {p(0) + at * p(3), p(1) + at * p(4), p(2) + at * p(5)};
}
/// As long as wide, around the point of the axis: samples say where a cylinder ends, parameters do not.
inline auto makeModel(TagOf<geom::Cylinder3dEstimator>, const RealVector& p) {
  return boost::make_shared<geom::Cylinder3d<omReal64>>(alongAxis(p, -p(6)), alongAxis(p, p(6)), p(6));
}
/// From the apex on, of height 1.
inline auto makeModel(TagOf<geom::Cone3dEstimator>, const RealVector& p) {
  return boost::make_shared<geom::Cone3d<omReal64>>(tripleOf(p, 0), alongAxis(p, 1), 0, std::tan(p(6)));
}
inline auto makeModel(TagOf<geom::Torus3dEstimator>, const RealVector& p) {
  return boost::make_shared<geom::Torus3d<omReal64>>(tripleOf(p, 0), tripleOf(p, 3), p(6), p(7));
}
inline auto makeModel(TagOf<geom::Line3dEstimator>, const RealVector& p) {
  return boost::make_shared<geom::Line3d>(tripleOf(p, 0), tripleOf(p, 3));
}
inline auto makeModel(TagOf<geom::Circle3dEstimator>, const RealVector& p) {
  return boost::make_shared<geom::Circle3d<omReal64>>(tripleOf(p, 0), tripleOf(p, 3), p(6));
}
inline auto makeModel(TagOf<geom::Ellipsoid3dEstimator>, const RealVector& p) {
  auto ellipsoid = boost::make_shared<geom::Ellipsoid3d<omReal64>>();
  ellipsoid->setCoords({p(0), p(1), p(2)}, p(3), p(4), p(5), p(6), p(7), p(8));
  return ellipsoid;
}

/// The parameters of a transform are the first that its estimator computes, in the same order; that of translations of
/// space has more.
template <class Transform>
auto makeTransform(const RealVector& params) {
  using Math = std::decay_t<decltype(Transform().getGeometricTransform())>;
  Math math;
  RealVector own(Math::s_nbParams);
  std::copy_n(params.begin(), own.size(), own.begin());
  math.setParams(own);
  return boost::make_shared<Transform>(math);
}
/// @{
inline auto makeModel(TagOf<geom::TranslationTransform2dEstimator>, const RealVector& p) {
  return makeTransform<geom::TranslationTransform2d>(p);
}
inline auto makeModel(TagOf<geom::RigidTransform2dEstimator>, const RealVector& p) {
  return makeTransform<geom::RigidTransform2d>(p);
}
inline auto makeModel(TagOf<geom::SimilarityTransform2dEstimator>, const RealVector& p) {
  return makeTransform<geom::SimilarityTransform2d>(p);
}
inline auto makeModel(TagOf<geom::HomographyTransform2dEstimator>, const RealVector& p) {
  return makeTransform<geom::HomographyTransform2d>(p);
}
inline auto makeModel(TagOf<geom::TranslationTransform3dEstimator>, const RealVector& p) {
  return makeTransform<geom::TranslationTransform3d>(p);
}
inline auto makeModel(TagOf<geom::RigidTransform3dEstimator>, const RealVector& p) {
  return makeTransform<geom::RigidTransform3d>(p);
}
inline auto makeModel(TagOf<geom::SimilarityTransform3dEstimator>, const RealVector& p) {
  return makeTransform<geom::SimilarityTransform3d>(p);
}
inline auto makeModel(TagOf<geom::HomographyTransform3dEstimator>, const RealVector& p) {
  return makeTransform<geom::HomographyTransform3d>(p);
}
/// @}

}  // namespace ormix::python

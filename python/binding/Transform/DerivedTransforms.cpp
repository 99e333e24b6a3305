#include "../Frame/Arrays.h"
#include "../Frame/Enumerations.h"
#include "ApplyTransform.h"
#include "Transforms.h"

#include <ORMIXGeometry/Transform/2d/CentroidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/ConvexHullTransform2d.h>
#include <ORMIXGeometry/Transform/2d/EnvelopeTransform2d.h>
#include <ORMIXGeometry/Transform/2d/MinEnclosingCircleTransform2d.h>
#include <ORMIXGeometry/Transform/3d/CentroidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/ConvexHullTransform3d.h>
#include <ORMIXGeometry/Transform/3d/EnvelopeTransform3d.h>
#include <ORMIXGeometry/Transform/3d/MinEnclosingSphereTransform3d.h>

#include <boost/smart_ptr/make_shared_object.hpp>

namespace ormix::python {
namespace {

using namespace geom;

template <class Transform, class Base>
void bindDerived(py::module_& module, const char* name, const char* doc) {
  ClassOf<Transform, Base>(module, name, doc).def(py::init<>());
}

template <class Transform>
Transform centroidTransform(eHoleMsrPolicy policy) {
  Transform transform;
  transform.setHoleMsrPolicy(policy);
  return transform;
}

template <class Transform, class Base>
void bindCentroid(py::module_& module, const char* name, const char* doc) {
  ClassOf<Transform, Base> centroid(module, name, doc);
  centroid.attr("__match_args__") = py::make_tuple("hole_policy");
  centroid
      .def(py::init([](eHoleMsrPolicy policy) {
             return boost::make_shared<Transform>(centroidTransform<Transform>(policy));
           }),
           enumerator("hole_policy", eHMP_ProcessHoles))
      .def_property("hole_policy", &Transform::getHoleMsrPolicy,
                    py::cpp_function(&Transform::setHoleMsrPolicy, ChangingCall()), "Whether holes count.");
}

// Whether entities are of space; an empty sequence is of the plane.
bool areSpatial(const EntityArgument& entities) {
  return entities.size() > 0 && entities[0].getCoordinateDimension() == eCD_3d;
}

// One point as a tuple, many as an array of rows.
template <class Space, class Transform>
py::object centroidsIn(const EntityArgument& entities, eHoleMsrPolicy policy) {
  using Point = typename std::conditional_t<s_isPlanar<Space>, Point2d<omReal64>, Point3d<omReal64>>;
  using Data = std::decay_t<decltype(std::declval<const Point&>().getCoords())>;
  entities.require(s_dimensionOf<Space>);
  const auto points = imagesOf<Space>(centroidTransform<Transform>(policy), entities);
  if (entities.isOne()) return py::cast(static_cast<const Point&>(*points[0]).getCoords());
  py::array_t<omReal64> rows({static_cast<py::ssize_t>(points.size()), s_dimension<Data>});
  auto* row = reinterpret_cast<Data*>(rows.mutable_data());
  for (const auto& point : points) *row++ = static_cast<const Point&>(*point).getCoords();
  return std::move(rows);
}

py::object centroids(const py::object& argument, eHoleMsrPolicy policy) {
  const EntityArgument entities(argument);
  return areSpatial(entities) ? centroidsIn<SpatialTransforms, CentroidTransform3d>(entities, policy)
                              : centroidsIn<PlanarTransforms, CentroidTransform2d>(entities, policy);
}

// Of entities of one space, which may be either.
template <class Planar, class Spatial>
py::object derivedOf(const py::object& argument) {
  const EntityArgument entities(argument);
  return areSpatial(entities) ? apply<SpatialTransforms>(Spatial(), entities)
                              : apply<PlanarTransforms>(Planar(), entities);
}

void bindClasses(py::module_& module) {
  using Planar = BaseGeometryTransform2d;
  using Spatial = BaseGeometryTransform3d;
  bindCentroid<CentroidTransform2d, Planar>(module, "CentroidTransform2d",
                                            "The centroid of a planar entity, a Point2d; see `centroid()`.");
  bindCentroid<CentroidTransform3d, Spatial>(module, "CentroidTransform3d",
                                             "The centroid of a spatial entity, a Point3d; see `centroid()`.");
  bindDerived<ConvexHullTransform2d, Planar>(module, "ConvexHullTransform2d",
                                             "The convex hull of a planar entity, a polygon; see `convex_hull()`.");
  bindDerived<ConvexHullTransform3d, Spatial>(module, "ConvexHullTransform3d",
                                              "The convex hull of a spatial entity, a mesh; see `convex_hull()`.");
  bindDerived<EnvelopeTransform2d, Planar>(module, "EnvelopeTransform2d",
                                           "The smallest box along the axes around a planar entity; see `envelope()`.");
  bindDerived<EnvelopeTransform3d, Spatial>(
      module, "EnvelopeTransform3d", "The smallest box along the axes around a spatial entity; see `envelope()`.");
  bindDerived<MinEnclosingCircleTransform2d, Planar>(
      module, "MinEnclosingCircleTransform2d",
      "The smallest circle around a planar entity; see `min_enclosing_circle()`.\n\n"
      ">>> MinEnclosingCircleTransform2d() @ og.Circle2d(center=(1, 2), radius=3)\n"
      "Circle2d(center=(1.0, 2.0), radius=3.0)");
  bindDerived<MinEnclosingSphereTransform3d, Spatial>(
      module, "MinEnclosingSphereTransform3d",
      "The smallest sphere around a spatial entity; see `min_enclosing_sphere()`.");
}

}  // namespace

void bindDerivedTransforms(py::module_& module) {
  bindClasses(module);
  module.def("centroid", &centroids, "entities"_a, py::kw_only(), enumerator("hole_policy", eHMP_ProcessHoles),
             "The centroid of one entity as a tuple, or those of a sequence as an array of shape (n, 2) or (n, 3).\n\n"
             "Of areas or volumes, less those of holes; of what has none, of the edges, surface or points.\n"
             "Error for what has no centroid, as lines and what is empty.\n\n"
             ">>> og.centroid(og.Polygon2d([[0, 0], [4, 0], [4, 2], [0, 2], [0, 0]]))\n"
             "(2.0, 1.0)\n"
             ">>> og.centroid([og.Circle2d((1, 2), 3), og.Circle2d((3, 4), 5)])\n"
             "array([[1., 2.],\n"
             "       [3., 4.]])");
  module.def(
      "convex_hull", &derivedOf<ConvexHullTransform2d, ConvexHullTransform3d>, "entities"_a,
      "The convex hull of one entity, or a list of those of a sequence: polygons in the plane, meshes in space.\n\n"
      "It is that of the stored numbers, exactly. Circles, ellipses, spheres and ellipsoids answer themselves.\n\n"
      ">>> og.convex_hull(og.Polygon2d([[0, 0], [4, 0], [1, 1], [0, 4]])).points.tolist()\n"
      "[[0.0, 0.0], [4.0, 0.0], [0.0, 4.0], [0.0, 0.0]]");
  module.def("envelope", &derivedOf<EnvelopeTransform2d, EnvelopeTransform3d>, "entities"_a,
             "The smallest box along the axes around one entity, or a list of those around each of a sequence.");
  module.def(
      "min_enclosing_circle",
      [](const py::object& entities) { return apply<PlanarTransforms>(MinEnclosingCircleTransform2d(), entities); },
      "entities"_a,
      "The smallest circle around one planar entity, or a list of those around each of a sequence.\n\n"
      ">>> og.min_enclosing_circle(og.Polygon2d([[0, 0], [2, 0], [1, 0.5]])).center\n"
      "(1.0, 0.0)");
  module.def(
      "min_enclosing_sphere",
      [](const py::object& entities) { return apply<SpatialTransforms>(MinEnclosingSphereTransform3d(), entities); },
      "entities"_a, "The smallest sphere around one spatial entity, or a list of those around each of a sequence.");
}

}  // namespace ormix::python

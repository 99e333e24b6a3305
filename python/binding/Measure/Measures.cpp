#include "Measures.h"

#include "../Frame/Calls.h"
#include "../Frame/Enumerations.h"
#include "../Frame/Meshes.h"
#include "../Frame/Object.h"
#include "MeasureEntities.h"

#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>
#include <ORMIXGeometry/Measure/2d/HuMomentsMsr2d.h>
#include <ORMIXGeometry/Measure/2d/MomentsMsr2d.h>
#include <ORMIXGeometry/Measure/2d/PerimeterMsr2d.h>
#include <ORMIXGeometry/Measure/3d/AreaMsr3d.h>
#include <ORMIXGeometry/Measure/3d/TriMeshMeasures.h>
#include <ORMIXGeometry/Measure/3d/VolumeMsr3d.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <optional>

namespace ormix::python {
namespace {

using geom::eHoleMsrPolicy;

/// The measure alone, for entities of its own space.
/// @{
template <class Value>
MeasureOfAny<Value> only(const geom::BaseTypedGeometryMeasure2d<Value>& measure) {
  return {&measure};
}
MeasureOfAny<omReal64> only(const geom::BaseTypedGeometryMeasure3d<omReal64>& measure) { return {nullptr, &measure}; }
/// @}

template <class Measure, class Base>
void bindMeasure(py::module_& module, const char* name, const char* doc) {
  ClassOf<Measure, Base> measure(module, name, doc);
  measure.attr("__match_args__") = py::make_tuple("hole_policy");
  measure
      .def(py::init([](eHoleMsrPolicy policy) {
             auto made = boost::make_shared<Measure>();
             made->setHoleMsrPolicy(policy);
             return made;
           }),
           enumerator("hole_policy", geom::eHMP_ProcessHoles))
      .def(
          "measure",
          [](const Measure& self, const py::object& entities) { return measureEntities(only(self), entities); },
          "entities"_a, "Measure one entity, or each of a sequence. Error for what is not supported.");
}

void bindMeasureClasses(py::module_& module) {
  using namespace geom;
  bindEnumeration<eHoleMsrPolicy>(module, "How a measure treats the holes of an entity.");
  ClassOf<BaseGeometryMeasure, BaseSerializationObject>(
      module, "Measure", "A measure: it computes a value from an entity without changing it.")
      .def_property("hole_policy", &BaseGeometryMeasure::getHoleMsrPolicy,
                    py::cpp_function(&BaseGeometryMeasure::setHoleMsrPolicy, ChangingCall()),
                    "How holes are measured.");
  ClassOf<BaseGeometryMeasure2d, BaseGeometryMeasure>(module, "Measure2d", "A measure of planar entities.");
  ClassOf<BaseGeometryMeasure3d, BaseGeometryMeasure>(module, "Measure3d", "A measure of spatial entities.");
  bindMeasure<AreaMsr2d, BaseGeometryMeasure2d>(
      module, "AreaMsr2d",
      "The area of planar entities, signed for rings. The areas of holes are subtracted.\n\n"
      ">>> AreaMsr2d().measure([og.Polygon2d([[0, 0], [4, 0], [4, 3], [0, 0]]), og.Circle2d((0, 0), 0)])\n"
      "array([6., 0.])");
  bindMeasure<PerimeterMsr2d, BaseGeometryMeasure2d>(module, "PerimeterMsr2d",
                                                     "The perimeter of planar entities. Those of holes are added.");
  bindMeasure<MomentsMsr2d, BaseGeometryMeasure2d>(
      module, "MomentsMsr2d",
      "The moments of planar entities up to the order 3, Moments2dO3. Those of holes are subtracted.");
  bindMeasure<HuMomentsMsr2d, BaseGeometryMeasure2d>(
      module, "HuMomentsMsr2d",
      "Hu's moment invariants of planar entities: HuMoments2dO3 of one, an array of shape (n, 7) of many.");
  bindMeasure<AreaMsr3d, BaseGeometryMeasure3d>(
      module, "AreaMsr3d", "The surface area of spatial entities. The surfaces of holes are added.");
  bindMeasure<VolumeMsr3d, BaseGeometryMeasure3d>(
      module, "VolumeMsr3d",
      "The volume of spatial entities. Those of holes are subtracted.\n\n"
      "That of a mesh far from the origin loses digits: see the C++ class.");
}

// Area or volume of a mesh of triangles that is no entity; nothing for another object.
template <class Measure>
std::optional<omReal64> measuredMesh(const py::object& object) {
  MeshArgument argument;
  if (isEntity(object) || !load(object, false, argument)) return std::nullopt;
  return argument.visit([](const auto& mesh) {
    const Reading reading;
    return std::is_same_v<Measure, geom::AreaMsr3d> ? geom::area(mesh.view()) : geom::volume(mesh.view());
  });
}

/// Measures with this policy. `Spatial` is void for what the plane alone has, `Planar` for what space alone has.
/// @{
template <class Planar, class Spatial>
py::object measureWith(const py::object& entities, eHoleMsrPolicy policy) {
  if constexpr (!std::is_void_v<Spatial>) {
    if (const auto value = measuredMesh<Spatial>(entities)) return py::float_(*value);
  }
  if constexpr (std::is_void_v<Spatial>) {
    Planar planar;
    planar.setHoleMsrPolicy(policy);
    return measureEntities(only(planar), entities);
  } else if constexpr (std::is_void_v<Planar>) {
    Spatial spatial;
    spatial.setHoleMsrPolicy(policy);
    return measureEntities(only(spatial), entities);
  } else {
    Planar planar;
    Spatial spatial;
    planar.setHoleMsrPolicy(policy);
    spatial.setHoleMsrPolicy(policy);
    return measureEntities(MeasureOfAny<omReal64>{&planar, &spatial}, entities);
  }
}
template <class Planar, class Spatial = void>
void bindFunction(py::module_& module, const char* name, const char* doc) {
  module.def(name, &measureWith<Planar, Spatial>, "entities"_a, py::kw_only(),
             enumerator("hole_policy", geom::eHMP_ProcessHoles), doc);
}
/// @}

// A getter of an entity: the measure with the default policy.
template <class Measure>
omReal64 measured(const typename Measure::Entity& entity) {
  omReal64 value = 0;
  const Measure measure;
  if (!measure.measure(entity, value)) raiseError(only(measure).failureText(entity), entity.getClassName());
  return value;
}

void bindProperties(py::module_& module) {
  using namespace geom;
  // The classes are in the module already.
  auto planar = py::reinterpret_borrow<ClassOf<BaseGeometryEntity2d, BaseGeometryEntity>>(module.attr("Entity2d"));
  planar.def_property_readonly("area", &measured<AreaMsr2d>, "The area, see `area()`.")
      .def_property_readonly("perimeter", &measured<PerimeterMsr2d>, "The perimeter, see `perimeter()`.");
  auto spatial = py::reinterpret_borrow<ClassOf<BaseGeometryEntity3d, BaseGeometryEntity>>(module.attr("Entity3d"));
  spatial.def_property_readonly("area", &measured<AreaMsr3d>, "The surface area, see `area()`.")
      .def_property_readonly("volume", &measured<VolumeMsr3d>, "The volume, see `volume()`.");
}

}  // namespace

void bindMeasures(py::module_& module) {
  using namespace geom;
  bindMeasureClasses(module);
  bindFunction<AreaMsr2d, AreaMsr3d>(
      module, "area",
      "The area of one entity, or those of a sequence of entities as an array.\n\n"
      "Of the plane the area, signed for rings, less that of holes; of space that of the surface, that of holes "
      "added.\n"
      "Meshes of triangles that are no entities, as FaceVertexTriMesh3d, are measured one by one.\n"
      "A ring is stored closed: the edge from its last vertex to its first is not added where it is missing.\n"
      "`hole_policy=\"eHMP_IgnoreHoles\"` measures the exterior only. Error, with the class, for what has none, as "
      "lines.\n\n"
      ">>> og.area([og.Polygon2d([[0, 0], [2, 0], [2, 2], [0, 2], [0, 0]]), og.Polygon2d([[0, 0], [2, 0], [0, 3], [0, "
      "0]])])\n"
      "array([4., 3.])");
  bindFunction<PerimeterMsr2d>(
      module, "perimeter",
      "The perimeter of one planar entity, or those of a sequence as an array. Those of holes are added.\n\n"
      ">>> og.perimeter(og.Polygon2d([[0, 0], [4, 0], [4, 3], [0, 3], [0, 0]]))\n"
      "14.0");
  bindFunction<void, VolumeMsr3d>(
      module, "volume",
      "The volume of one spatial entity, or those of a sequence as an array. Those of holes are subtracted.");
  bindFunction<MomentsMsr2d>(module, "moments",
                             "The moments of one planar entity, Moments2dO3, or a list of those of a sequence. Those "
                             "of holes are subtracted.\n\n"
                             ">>> og.moments(og.Polygon2d([[0, 0], [2, 0], [2, 2], [0, 2]])).centroid\n"
                             "(1.0, 1.0)");
  bindFunction<HuMomentsMsr2d>(
      module, "hu_moments",
      "Hu's invariants of one planar entity, HuMoments2dO3, or those of a sequence as an array of shape (n, 7).\n\n"
      ">>> og.hu_moments([og.Circle2d((0, 0), 1), og.Circle2d((5, 5), 3)]).shape\n"
      "(2, 7)");
  bindProperties(module);
}

}  // namespace ormix::python

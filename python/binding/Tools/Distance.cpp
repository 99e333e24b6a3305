#include "../Frame/Calls.h"
#include "../Frame/Enumerations.h"
#include "../Frame/Result.h"
#include "Tools.h"

#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>
#include <ORMIXGeometry/Tools/Distance/Hausdorff2d.h>
#include <ORMIXGeometry/Tools/Distance/Hausdorff3d.h>
#include <ORMIXGeometry/Tools/Distance/PlanarDistance.h>
#include <ORMIXGeometry/Tools/Distance/SpatialDistance.h>

#include <pybind11/stl.h>

namespace ormix::python {
namespace {

using Planar = geom::BaseGeometryEntity2d;
using Spatial = geom::BaseGeometryEntity3d;
using Prepared = geom::PreparedEntity3d;

constexpr const char* s_nearestDoc =
    "The distance of two entities of any classes and a point of each where it is taken.\n\n"
    "What has an area or a volume is filled, so that the distance inside is 0, or with policy='eIP_Boundary' only its\n"
    "boundary. Lines and vectors are refused with an Error.\n\n"
    ">>> nearest_points(Circle2d((0, 0), 1), Circle2d((5, 0), 1))\n"
    "NearestPoints2d(distance=3.0, on_a=(1.0, 0.0), on_b=(4.0, 0.0))";
constexpr const char* s_distanceDoc =
    "The distance of two entities, see `nearest_points`.\n\n"
    ">>> distance(Circle2d((0, 0), 1), Circle2d((5, 0), 1))\n"
    "3.0";

template <class Nearest>
void bindNearest(py::module_& module, const char* name) {
  Result<Nearest>(module, name, "The distance of two entities and a point of each where it is taken.")
      .value("distance", &Nearest::distance, "The least distance, at least 0.")
      .value("on_a", &Nearest::onA, "A nearest point of the first entity.")
      .value("on_b", &Nearest::onB, "A nearest point of the second entity.");
}

// nearest_points() and distance() for entities of these two classes.
template <class A, class B>
void bindDistances(py::module_& module) {
  module.def(
      "nearest_points",
      [](const A& a, const B& b, geom::eInteriorPolicy policy) { return nearestPoints(a, b, policy); }, "a"_a, "b"_a,
      enumerator("policy", geom::eIP_Filled), LongCall(), s_nearestDoc);
  module.def(
      "distance",
      [](const A& a, const B& b, geom::eInteriorPolicy policy) { return nearestPoints(a, b, policy).distance; }, "a"_a,
      "b"_a, enumerator("policy", geom::eIP_Filled), LongCall(), s_distanceDoc);
}

void bindPlanarHausdorff(py::module_& module) {
  using geom::PlanarHausdorff;
  Result<PlanarHausdorff>(module, "Hausdorff2d", "A Hausdorff distance of planar entities and where it is taken.")
      .value("distance", &PlanarHausdorff::distance, "At least 0.")
      .value("on_a", &PlanarHausdorff::onA, "A point of the first entity.")
      .value("on_b", &PlanarHausdorff::onB, "A point of the second entity.")
      .value("is_from_a", &PlanarHausdorff::isFromA, "Whether the point on a is the farthest from the other entity.")
      .value("excess", &PlanarHausdorff::excess, "The distance may be larger by this much; mostly 0.");
  using Function = PlanarHausdorff (*)(const Planar&, const Planar&, geom::eInteriorPolicy);
  module.def("hausdorff", static_cast<Function>(&geom::hausdorff), "a"_a, "b"_a,
             enumerator("policy", geom::eIP_Boundary), LongCall(),
             "How far two planar entities are from being the same: the larger of both directed distances.\n\n"
             "Boundaries are compared, or regions with policy='eIP_Filled'.\n\n"
             ">>> hausdorff(Segment2d((0, 0), (4, 0)), Segment2d((0, 1), (4, 3))).distance\n"
             "3.0");
  module.def("directed_hausdorff", static_cast<Function>(&geom::directedHausdorff), "a"_a, "b"_a,
             enumerator("policy", geom::eIP_Boundary), LongCall(),
             "The largest distance of a point of a from b, and both points.");
}

template <class Body>
void bindSpatialHausdorff(py::module_& module) {
  using Function = geom::HausdorffBounds (*)(const Body&, const Body&, const geom::HausdorffOptions&);
  const auto bind = [&module](const char* name, Function function, const char* doc) {
    module.def(
        name,
        [function](const Body& a, const Body& b, omReal64 tolerance, omReal64 relativeTolerance) {
          geom::HausdorffOptions options;
          options.tolerance = tolerance;
          options.relativeTolerance = relativeTolerance;
          return function(a, b, options);
        },
        "a"_a, "b"_a, "tolerance"_a = 0.0, "relative_tolerance"_a = 0.01, LongCall(), doc);
  };
  bind("hausdorff", &geom::hausdorff,
       "Bounds of the Hausdorff distance of two surfaces or clouds of space.\n\n"
       "They differ by at most `tolerance`, or `relative_tolerance` of the lower one, whichever is larger.");
  bind("directed_hausdorff", &geom::directedHausdorff,
       "Bounds of the largest distance of a point of a from b, see `hausdorff`.");
}

}  // namespace

void bindDistance(py::module_& module) {
  bindEnumeration<geom::eInteriorPolicy>(
      module, "What a distance is measured to: all points, so that it is 0 inside, or the boundary only.");
  bindNearest<geom::PlanarNearestPoints>(module, "NearestPoints2d");
  bindNearest<geom::SpatialNearestPoints>(module, "NearestPoints3d");
  py::class_<Prepared>(module, "PreparedEntity3d",
                       "A spatial entity made ready for many distances. It does not refer to the entity.")
      .def(py::init<const Spatial&>(), "entity"_a, LongCall());

  bindDistances<Planar, Planar>(module);
  bindDistances<Spatial, Spatial>(module);
  bindDistances<Prepared, Prepared>(module);
  bindPlanarHausdorff(module);
  using Bounds = geom::HausdorffBounds;
  Result<Bounds>(module, "HausdorffBounds", "Bounds of a Hausdorff distance of space.")
      .value("lower", &Bounds::lower, "The distance of `from_` and `to`.")
      .value("upper", &Bounds::upper, "At least the distance.")
      .value("from_", &Bounds::from, "A point of one entity as far from the other as `lower`.")
      .value("to", &Bounds::to, "The nearest point to it of the other.")
      .value("is_from_a", &Bounds::isFromA, "Whether `from_` is of the first entity.")
      .value("is_complete", &Bounds::isComplete, "Whether the bounds are as near as was asked for.");
  bindSpatialHausdorff<Spatial>(module);
  bindSpatialHausdorff<Prepared>(module);
  module.def(
      "is_within_directed_hausdorff",
      [](const Spatial& a, const Spatial& b, omReal64 limit) {
        return geom::isWithinDirectedHausdorff(Prepared(a), Prepared(b), limit);
      },
      "a"_a, "b"_a, "limit"_a, LongCall(), "Whether no point of a is farther from b than the limit.");
}

}  // namespace ormix::python

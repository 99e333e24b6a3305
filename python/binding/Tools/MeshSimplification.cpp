#include "../Frame/Arrays.h"
#include "../Frame/Calls.h"
#include "../Frame/Enumerations.h"
#include "../Frame/Errors.h"
#include "../Frame/Meshes.h"
#include "../Frame/Progress.h"
#include "../Frame/Result.h"
#include "MeshTools.h"

#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Tools/MeshSimplification/MeshSimplification.h>

#include <pybind11/stl.h>

#include <optional>

namespace ormix::python {
namespace {

using Options = MeshSimplificationOptions;
using Report = MeshSimplificationReport;

// Simplifies a copy of a mesh.
template <class Mesh, class Copy>
py::object simplified(Copy copy, const Options& options, Report* report, const Progress& progress) {
  Mesh mesh;
  const auto simplify = [&] {
    mesh = copy();
    return geom::MeshSimplification<typename Mesh::CoordinateType>::simplify(mesh, options, report);
  };
  progress.run(simplify, "MeshSimplification");
  return py::cast(std::move(mesh));
}

py::object simplifyMesh(const MeshArgument& mesh, std::optional<std::size_t> nbTriangles,
                        std::optional<omReal64> maxError, eCollapsePlacement placement, bool isMemoryless,
                        bool keepsVolume, bool avoidsIntersections, omReal64 boundaryTolerance, omReal64 boundaryWeight,
                        std::optional<omReal64> featureAngle, const py::object& lockedVertices, bool measuresDistances,
                        const py::object& callable, bool returnReport) {
  if (!nbTriangles && !maxError) throw py::type_error("simplify_mesh: nb_triangles or max_error is needed");
  Options options;
  options.nbTriangles = nbTriangles;
  options.maxError = maxError;
  options.placement = placement;
  options.isMemoryless = isMemoryless;
  options.keepsVolume = keepsVolume;
  options.avoidsIntersections = avoidsIntersections;
  options.boundaryTolerance = boundaryTolerance;
  options.boundaryWeight = boundaryWeight;
  options.featureAngle = featureAngle;
  options.measuresDistances = measuresDistances;
  const auto locked = numbersOf<omUInt32>(lockedVertices, "locked_vertices");
  options.lockedVertices.assign(locked.data(), locked.data() + locked.size());
  Progress progress(callable);
  options.progress = progress.callback();
  Report report;
  Report* const wanted = returnReport ? &report : nullptr;
  py::object result = mesh.visit([&](const auto& typed) {
    using T = typename std::decay_t<decltype(typed)>::CoordinateType;
    if (typed.mesh != nullptr)
      return simplified<geom::Mesh3d<T>>([&] { return *typed.mesh; }, options, wanted, progress);
    return simplified<geom::FaceVertexTriMesh3d<T>>([&] { return geom::toFaceVertexTriMesh3d(typed.view()); }, options,
                                                    wanted, progress);
  });
  if (!returnReport) return result;
  return py::make_tuple(result, std::move(report));
}

py::dict refusals(const Report& self) {
  py::dict result;
  for (std::size_t reason = 0; reason < s_nbCollapseRefusals; ++reason)
    result[py::str(std::string(EnumerationNames<eCollapseRefusal>::names[reason]))] = self.nbRefusals[reason];
  return result;
}

void bindReport(py::module_& module) {
  Result<SampledDistance>(module, "SampledDistance", "Distances of samples of one surface from another.")
      .value("greatest", &SampledDistance::greatest, "The greatest one.")
      .value("mean", &SampledDistance::mean, "The mean of all samples.")
      .value("nb_samples", &SampledDistance::nbSamples, "How many samples were measured.");
  Result<Report>(module, "MeshSimplificationReport", "What `simplify_mesh` did.")
      .value("nb_triangles_before", &Report::nbTrianglesBefore, "Triangles of the mesh given.")
      .value("nb_triangles_after", &Report::nbTrianglesAfter, "Triangles of the result.")
      .value("nb_collapses", &Report::nbCollapses, "How many edges collapsed.")
      .value("nb_refusals", &refusals, "How often a place for a vertex was refused, by the name of the reason.")
      .value("greatest_error", &Report::greatestError, "Of all collapses, see `max_error`.")
      .value("to_input", &Report::toInput, "Distances of samples of the result from the input.")
      .value("from_input", &Report::fromInput, "Distances of samples of the input from the result.")
      .value("area_before", &Report::areaBefore, "The area of the mesh given.")
      .value("area_after", &Report::areaAfter, "The area of the result.")
      .value("volume_before", &Report::volumeBefore, "The signed volume of the mesh given.")
      .value("volume_after", &Report::volumeAfter, "The signed volume of the result.");
}

}  // namespace

void bindMeshSimplification(py::module_& module) {
  bindEnumeration<eCollapsePlacement>(module, "Where the vertex is put that an edge becomes.");
  bindReport(module);
  const Options defaults;
  module.def(
      "simplify_mesh", &simplifyMesh, "mesh"_a, "nb_triangles"_a = py::none(), "max_error"_a = py::none(),
      py::kw_only(), "placement"_a = defaults.placement, "is_memoryless"_a = defaults.isMemoryless,
      "keeps_volume"_a = defaults.keepsVolume, "avoids_intersections"_a = defaults.avoidsIntersections,
      "boundary_tolerance"_a = defaults.boundaryTolerance, "boundary_weight"_a = defaults.boundaryWeight,
      "feature_angle"_a = py::none(), "locked_vertices"_a = py::tuple(),
      "measures_distances"_a = defaults.measuresDistances, "progress"_a = py::none(), "return_report"_a = false,
      "The mesh with fewer triangles, made by collapsing edges to vertices. The topology stays: what is closed\n"
      "remains closed, and no triangle is turned. The mesh given stays as it is. Of a Mesh3d it is a Mesh3d, else a\n"
      "FaceVertexTriMesh3d.\n\n"
      "`nb_triangles`: collapses end when there are at most so many; more are left where no edge can collapse.\n"
      "`max_error`: the greatest error of a collapse, in the unit of the coordinates. One of both is needed.\n"
      "`placement`: eCP_Best, or eCP_Ends, so that vertices are vertices of the input.\n"
      "`is_memoryless`: whether errors are those of the surface as it is now: twice the time, a tenth less error.\n"
      "`keeps_volume`: whether each collapse keeps the volume. `avoids_intersections`: whether triangles are kept\n"
      "from intersecting, in several times the time.\n"
      "`boundary_tolerance`: how far boundaries may move; `boundary_weight`: of their planes beside the surface.\n"
      "`feature_angle`: edges sharper than this, in radians, are kept as lines.\n"
      "`locked_vertices`: indices of vertices that stay where they are.\n"
      "`progress`: called with the fraction done, at most 20 times a second; what it raises ends the call, and so\n"
      "does False. Ctrl-C works with and without it.\n"
      "`return_report`: whether to return (mesh, report), with a MeshSimplificationReport; `measures_distances`:\n"
      "whether it has the distances, which may take longer than all the rest.\n\n"
      ">>> ball = surface_nets(np.ones((9, 9, 9), bool))[0].exterior\n"
      ">>> mesh, report = simplify_mesh(ball, nb_triangles=100, return_report=True)\n"
      ">>> mesh.nb_triangles, mesh.is_closed, report.nb_triangles_before\n"
      "(100, True, 972)");
}

}  // namespace ormix::python

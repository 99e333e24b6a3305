#include "../Frame/Calls.h"
#include "../Frame/Errors.h"
#include "../Frame/Meshes.h"
#include "../Frame/Result.h"
#include "MeshTools.h"

#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Tools/Mesh/Repair.h>

#include <pybind11/stl.h>

#include <boost/smart_ptr/make_shared_object.hpp>

#include <optional>

namespace ormix::python {
namespace {

using geom::RepairOptions;
using geom::RepairReport;

// A mesh of half-edges becomes one, all others index triples.
template <class T>
py::object repaired(const TypedMesh<T>& typed, const RepairOptions& options, RepairReport& report) {
  if (typed.mesh != nullptr) {
    auto result = boost::make_shared<geom::Mesh3d<T>>();
    check([&] {
      const Reading reading;
      result->setMesh3dType(typed.mesh->getMesh3dType());
      return geom::repair(*typed.mesh, *result, options, report);
    }());
    return py::cast(result);
  }
  geom::FaceVertexTriMesh3d<T> result;
  check([&] {
    const Reading reading;
    result = geom::toFaceVertexTriMesh3d(typed.view());
    return geom::repair(result, options, report);
  }());
  return py::cast(std::move(result));
}

py::object repair(const MeshArgument& mesh, bool mergesVertices, omReal64 tolerance, bool dropsTriangles,
                  bool orientsTriangles, bool splitsVertices, bool fillsLoops, std::optional<std::size_t> longestLoop,
                  bool dropsVertices, bool returnReport) {
  RepairOptions options;
  options.mergesVertices = mergesVertices;
  options.tolerance = tolerance;
  options.dropsTriangles = dropsTriangles;
  options.orientsTriangles = orientsTriangles;
  options.splitsVertices = splitsVertices;
  options.fillsLoops = fillsLoops;
  options.longestLoop = longestLoop.value_or(options.longestLoop);
  options.dropsVertices = dropsVertices;
  RepairReport report;
  py::object result = mesh.visit([&](const auto& typed) { return repaired(typed, options, report); });
  if (!returnReport) return result;
  return py::make_tuple(result, std::move(report));
}

void bindReport(py::module_& module) {
  Result<RepairReport>(module, "RepairReport", "What `repair` found and changed.")
      .value("nb_merged_vertices", &RepairReport::nbMergedVertices, "Vertices that became an earlier one.")
      .value("nb_not_finite", &RepairReport::nbNotFinite, "Triangles dropped: a coordinate is NaN or infinite.")
      .value("nb_degenerate", &RepairReport::nbDegenerate, "Triangles dropped: equal corners.")
      .value("nb_duplicate", &RepairReport::nbDuplicate, "Triangles dropped: the corners of an earlier one.")
      .value("nb_fins", &RepairReport::nbFins, "Triangles dropped: joined only by edges of three triangles and more.")
      .value("nb_single", &RepairReport::nbSingle, "Triangles dropped: joined to none.")
      .value("nb_flat", &RepairReport::nbFlat, "Triangles taken out: corners on one line, exactly.")
      .value("nb_turned", &RepairReport::nbTurned, "Triangles turned.")
      .value("nb_cut_edges", &RepairReport::nbCutEdges, "Edges cut open since no orientation agrees there.")
      .value("nb_separated_edges", &RepairReport::nbSeparatedEdges, "Edges whose triangles were paired by angle.")
      .value("nb_split_vertices", &RepairReport::nbSplitVertices, "Vertices added where sheets touch.")
      .value("nb_split_edges", &RepairReport::nbSplitEdges, "Edges halved since two of them had the same ends.")
      .value("nb_filled_loops", &RepairReport::nbFilledLoops, "Boundary loops closed.")
      .value("nb_added_triangles", &RepairReport::nbAddedTriangles, "Triangles added.")
      .value("nb_added_vertices", &RepairReport::nbAddedVertices, "Vertices added amid edges.")
      .value("nb_open_loops", &RepairReport::nbOpenLoops, "Boundary loops left open; `log` has why.")
      .value("nb_unused_vertices", &RepairReport::nbUnusedVertices, "Vertices dropped.")
      .value("area_before", &RepairReport::areaBefore, "The area of the mesh given.")
      .value("area_after", &RepairReport::areaAfter, "The area of the mesh repaired.")
      .value("volume_before", &RepairReport::volumeBefore, "The signed volume of the mesh given.")
      .value("volume_after", &RepairReport::volumeAfter, "The signed volume of the mesh repaired.")
      .value("is_closed", &RepairReport::isClosed, "Whether every edge of the result has two triangles.")
      .value("log", &RepairReport::log, "What was done and what was not, a list of lines.");
}

}  // namespace

void bindMeshRepair(py::module_& module) {
  bindReport(module);
  module.def(
      "repair", &repair, "mesh"_a, py::kw_only(), "merges_vertices"_a = true, "tolerance"_a = 0.0,
      "drops_triangles"_a = true, "orients_triangles"_a = true, "splits_vertices"_a = true, "fills_loops"_a = true,
      "longest_loop"_a = py::none(), "drops_vertices"_a = true, "return_report"_a = false,
      "A mesh made closed, manifold and consistently oriented, as far as that can be. The mesh given stays as it is.\n"
      "Of a Mesh3d it is a Mesh3d, else a FaceVertexTriMesh3d.\n\n"
      "`merges_vertices`: merge vertices of open edges that are equal, or at most `tolerance` apart.\n"
      "`drops_triangles`: drop degenerate, duplicate, flat and not finite triangles, fins and single triangles.\n"
      "`orients_triangles`: orient neighbours consistently, and closed shells outwards.\n"
      "`splits_vertices`: give sheets that meet in an edge or a vertex vertices of their own.\n"
      "`fills_loops`: close boundary loops of at most `longest_loop` edges.\n"
      "`drops_vertices`: drop vertices that no triangle uses.\n"
      "`return_report`: whether to return (mesh, report), with a RepairReport.\n\n"
      ">>> points = [[0, 0, 0], [1, 0, 0], [0, 1, 0], [0, 0, 1]]\n"
      ">>> mesh, report = repair((points, [[0, 2, 1], [0, 1, 3], [0, 3, 2]]), return_report=True)\n"
      ">>> mesh.nb_triangles, report.nb_filled_loops\n"
      "(4, 1)");
}

}  // namespace ormix::python

#include "../Frame/Calls.h"
#include "../Frame/Dtypes.h"
#include "../Frame/Enumerations.h"
#include "../Frame/Errors.h"
#include "../Frame/Meshes.h"
#include "../Frame/Result.h"
#include "MeshTools.h"

#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Tools/MeshFiles/MeshFile.h>

#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <optional>

namespace ormix::python {
namespace {

using geom::MeshReport;
using geom::TriangleDefects;
using Path = std::filesystem::path;

// What was read, with its report where that is wanted; a file that could not be read as a whole is an error where not.
template <class Mesh>
py::object answer(Mesh mesh, MeshReport& report, bool returnReport) {
  if (returnReport) return py::make_tuple(py::cast(std::move(mesh)), std::move(report));
  if (!report.message.empty()) raiseError(report.message, "MeshReport", "path");
  return py::cast(std::move(mesh));
}

py::object readMesh(const Path& path, const py::object& dtype, bool removesDegenerate, bool removesDuplicate,
                    bool returnReport) {
  return callWithDtype(AllDtypes(), dtype, [&](auto coordinate) {
    MeshReport report;
    auto mesh = [&] {
      const Reading reading;
      return geom::readMesh<decltype(coordinate)>(path.string(), {removesDegenerate, removesDuplicate}, report);
    }();
    return answer(std::move(mesh), report, returnReport);
  });
}

py::object readTriangles(const Path& path, const py::object& dtype, bool removesDegenerate, bool removesDuplicate,
                         bool returnReport) {
  return callWithDtype(AllDtypes(), dtype, [&](auto coordinate) {
    MeshReport report;
    auto mesh = [&] {
      const Reading reading;
      return geom::readFaceVertexTriMesh<decltype(coordinate)>(path.string(), {removesDegenerate, removesDuplicate},
                                                               report);
    }();
    return answer(std::move(mesh), report, returnReport);
  });
}

void writeMesh(const Path& path, const MeshArgument& mesh, std::optional<geom::eMeshFileFormat> format,
               const std::string& name, bool movesToPositiveOctant, bool hasShortestDigits) {
  const geom::MeshWriteOptions options{format, name, movesToPositiveOctant, hasShortestDigits};
  check(mesh.visit([&](const auto& typed) {
    const Reading reading;
    if (typed.mesh != nullptr) return geom::writeMesh(path.string(), *typed.mesh, options);
    if (typed.faces != nullptr) return geom::writeMesh(path.string(), *typed.faces, options);
    return geom::writeMesh(path.string(), geom::toFaceVertexTriMesh3d(typed.view()), options);
  }));
}

void bindReport(py::module_& module) {
  bindEnumeration<geom::eMeshFileFormat>(module, "The formats of files of meshes.");
  bindEnumeration<geom::eStlStop>(module, "Why a reader of a file of a mesh stopped.");
  Result<TriangleDefects>(module, "TriangleDefects", "Properties of triangles with merged vertices as a surface.")
      .value("nb_degenerate", &TriangleDefects::nbDegenerate, "Triangles with equal corners.")
      .value("nb_duplicate", &TriangleDefects::nbDuplicate, "Triangles whose corners an earlier one has as well.")
      .value("nb_edges", &TriangleDefects::nbEdges, "Undirected edges.")
      .value("nb_boundary_edges", &TriangleDefects::nbBoundaryEdges, "Edges of one triangle.")
      .value("nb_non_manifold_edges", &TriangleDefects::nbNonManifoldEdges, "Edges of three triangles and more.")
      .value("nb_flipped_neighbours", &TriangleDefects::nbFlippedNeighbours,
             "Edges of two triangles that have them in the same direction.")
      .value("nb_boundary_loops", &TriangleDefects::nbBoundaryLoops, "Chains of boundary edges.")
      .value("nb_components", &TriangleDefects::nbComponents, "Sets of triangles that are connected by edges.");
  Result<MeshReport>(module, "MeshReport", "The contents of a file of a mesh, and its defects.")
      .value("format", &MeshReport::format, "The format that was recognised, an eMeshFileFormat.")
      .value("nb_bytes", &MeshReport::nbBytes, "The length of the file.")
      .value("nb_solids", &MeshReport::nbSolids, "Solids begun, objects of an OBJ file; 1 for other files.")
      .value("nb_triangles", &MeshReport::nbTriangles, "Triangles in the file, after polygons were cut.")
      .value("nb_polygons", &MeshReport::nbPolygons, "Faces of more than three corners.")
      .value("nb_skipped_faces", &MeshReport::nbSkippedFaces, "Faces that were left out.")
      .value("nb_kept", &MeshReport::nbKept, "Triangles in the mesh.")
      .value("nb_vertices", &MeshReport::nbVertices, "Different corners of an STL file, vertices of others.")
      .value("nb_merged_vertices", &MeshReport::nbMergedVertices, "Corners found equal to an earlier one, of STL.")
      .value("nb_separated", &MeshReport::nbSeparated, "Kept triangles that got vertices of their own.")
      .value("defects", &MeshReport::defects, "Of the triangles in the file, TriangleDefects.")
      .value("stop", &MeshReport::stop, "Why reading stopped, an eStlStop.")
      .value("stop_offset", &MeshReport::stopOffset, "The byte at which reading stopped.")
      .value("stop_line", &MeshReport::stopLine, "Its line, counted from 1; 0 for a binary file.")
      .value("message", &MeshReport::message, "Why the file could not be read as a whole; empty when it was.");
}

}  // namespace

void bindMeshFiles(py::module_& module) {
  bindReport(module);
  module
      .def(
          "read_mesh", &readMesh, "path"_a, "dtype"_a = "float64", py::kw_only(), "removes_degenerate"_a = false,
          "removes_duplicate"_a = false, "return_report"_a = false,
          "The mesh of an STL, OBJ, PLY or OFF file, whichever it is, as a Mesh3d. Deviations from the formats that "
          "are\n"
          "common in practice are tolerated. All triangles are kept in their order; those that a Mesh3d cannot share "
          "get\n"
          "vertices of their own. Equal corners of STL files become one vertex.\n\n"
          "`dtype`: of the coordinates; those of STL files are float32 in the file.\n"
          "`removes_degenerate`, `removes_duplicate`: omit triangles with equal corners, or those of an earlier one.\n"
          "`return_report`: whether to return (mesh, report), with a MeshReport. Then a file that cannot be read as a\n"
          "whole is no error: the mesh has what was read, and the report's `message` says what was wrong.\n\n"
          ">>> import tempfile, os\n"
          ">>> path = os.path.join(tempfile.mkdtemp(), 'triangle.ply')\n"
          ">>> write_mesh(path, (np.eye(3), [[0, 1, 2]]))\n"
          ">>> read_mesh(path).nb_triangles\n"
          "1")
      .def(
          "read_face_vertex_tri_mesh", &readTriangles, "path"_a, "dtype"_a = "float64", py::kw_only(),
          "removes_degenerate"_a = false, "removes_duplicate"_a = false, "return_report"_a = false,
          "The same as a FaceVertexTriMesh3d over the vertices of the file, none of which is separated: what `repair`\n"
          "takes. Arguments as of `read_mesh`.")
      .def("write_mesh", &writeMesh, "path"_a, "mesh"_a, py::kw_only(), "format"_a = py::none(), "name"_a = "mesh",
           "moves_to_positive_octant"_a = false, "has_shortest_digits"_a = true,
           "Write a mesh to a file. One that exists is replaced when the new one is complete. STL holds float32; the "
           "other\n"
           "formats hold every coordinate.\n\n"
           "`format`: an eMeshFileFormat; without one as the extension of the path says.\n"
           "`name`: of the solid or object.\n"
           "`moves_to_positive_octant`: whether to translate the mesh as STL originally required.\n"
           "`has_shortest_digits`: whether texts have the fewest digits that read back as the same coordinate instead "
           "of\n"
           "six decimals.");
}

}  // namespace ormix::python

#include "../Frame/Calls.h"
#include "../Frame/Enumerations.h"
#include "../Frame/Result.h"
#include "../Region/Arguments.h"
#include "Tools.h"

#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Entity/2d/Skeleton/Skeleton2d.h>
#include <ORMIXGeometry/Tools/Skeleton/ComputeSkeleton.h>
#include <ORMIXGeometry/Tools/Skeleton/PruneSkeleton.h>
#include <ORMIXGeometry/Tools/Skeleton/SkeletonPaths.h>
#include <ORMIXGeometry/Tools/Skeleton/SkeletonRegion.h>
#include <ORMIXGeometry/Tools/Skeleton/SkeletonWidths.h>

#include <pybind11/stl.h>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <optional>

namespace ormix::python {
namespace {

using geom::Skeleton2d;
using geom::SkeletonPath;
using geom::SkeletonReport;
using SkeletonPtr = boost::shared_ptr<Skeleton2d>;

constexpr const char* s_computeDoc =
    "The skeleton (medial axis) of a region: of a polygon with its holes, a box, a square, a rectangle, a shape, or "
    "of\n"
    "pixels along their edges.\n\n"
    "`pruning` is the threshold of `prune_skeleton`, 0 for none; `merge_length` the length up to which edges are "
    "shrunk\n"
    "to a vertex, in units of the grid of coordinates. With `report=True` the answer is (skeleton, report).\n\n"
    ">>> skeleton = compute_skeleton(Polygon2d([[0, 0], [10, 0], [10, 2], [0, 2]]))\n"
    ">>> round(longest_path(skeleton).length, 3)\n"
    "10.828";

const geom::BaseGeometryEntity2d& regionOf(const geom::BaseGeometryEntity2d& entity) { return entity; }
const geom::RowIntersections& regionOf(const PixelsArgument& pixels) { return pixels.get(); }

template <class Region>
void bindCompute(py::module_& module) {
  module.def(
      "compute_skeleton",
      [](const Region& region, omReal64 pruning, PixelConnectivity connectivity, omReal64 mergeLength,
         bool wantsReport) -> py::object {
        geom::SkeletonOptions options;
        options.axis.mergeLength = mergeLength;
        options.pruning = pruning;
        options.connectivity = connectivity;
        SkeletonReport report;
        SkeletonPtr skeleton;
        {
          const Reading reading;
          skeleton = boost::make_shared<Skeleton2d>(geom::computeSkeleton(regionOf(region), options, &report));
        }
        if (!wantsReport) return py::cast(skeleton);
        return py::make_tuple(skeleton, report);
      },
      "region"_a, "pruning"_a = 0.0, "connectivity"_a = PixelConnectivity{geom::ePC_8},
      "merge_length"_a = MedialAxisOptions().mergeLength, "report"_a = false, s_computeDoc);
}

// A path may have been made from another skeleton.
void requirePathOf(const Skeleton2d& skeleton, const SkeletonPath& path) {
  for (const geom::SkeletonStep& step : path.steps)
    if (step.edgeIdx >= skeleton.getNbEdges()) throw py::index_error("the path is not one of this skeleton");
  if (path.startVertexIdx >= skeleton.getNbVertices() || path.endVertexIdx >= skeleton.getNbVertices())
    throw py::index_error("the path is not one of this skeleton");
}

void bindReports(py::module_& module) {
  Result<SkeletonReport>(module, "SkeletonReport", "What `compute_skeleton` found and did.")
      .value("grid_unit", &SkeletonReport::gridUnit, "Distance of neighbours of the grid of coordinates.")
      .value("nb_moved_points", &SkeletonReport::nbMovedPoints, "Vertices that are not on the grid.")
      .value("greatest_move", &SkeletonReport::greatestMove, "How far at most one was moved.")
      .value("nb_split_edges", &SkeletonReport::nbSplitEdges, "Edges divided where vertices of others lie on them.")
      .value("nb_components", &SkeletonReport::nbComponents, "Connected parts of the interior of the region.")
      .value("nb_cycles", &SkeletonReport::nbCycles, "Cycles of the axis.")
      .value("nb_attempts", &SkeletonReport::nbAttempts, "Diagrams made until one passed all checks.")
      .value("area_error", &SkeletonReport::areaError, "Relative error of the area of all cells.");
  Result<geom::PruningReport>(module, "PruningReport", "What `prune_skeleton` did.")
      .value("nb_pruned_edges", &geom::PruningReport::nbPrunedEdges, "Edges that were removed.")
      .value("distance_bound", &geom::PruningReport::distanceBound,
             "No point that was removed is farther from the circles that stay.");
  using Counts = geom::SkeletonCounts;
  Result<Counts>(module, "SkeletonCounts", "Numbers of a whole skeleton.")
      .value("nb_components", &Counts::nbComponents, "Connected parts.")
      .value("nb_cycles", &Counts::nbCycles, "Independent cycles.")
      .value("nb_end_points", &Counts::nbEndPoints, "Vertices with one edge.")
      .value("nb_branch_points", &Counts::nbBranchPoints, "Vertices with three edges or more.")
      .value("length", &Counts::length, "Of all edges.");
  using Widths = geom::SkeletonWidths;
  Result<Widths>(module, "SkeletonWidths", "Widths of a region along its skeleton, weighted by length.")
      .value("mean", &Widths::mean, "The mean.")
      .value("least", &Widths::least, "The least width.")
      .value("greatest", &Widths::greatest, "The greatest width.")
      .hidden(
          "histogram", [](const Widths& self) { return copyOf(self.histogram); },
          "The length at the widths of each of equal intervals from the least to the greatest.");
  Result<SkeletonPath>(module, "SkeletonPath", "Edges of a skeleton that follow each other.")
      .value("length", &SkeletonPath::length, "Of all edges.")
      .value("start_vertex", &SkeletonPath::startVertexIdx, "Index of the vertex where it begins.")
      .value("end_vertex", &SkeletonPath::endVertexIdx, "Index of the vertex where it ends.")
      .hidden(
          "edges",
          [](const SkeletonPath& self) {
            std::vector<omUInt32> edges;
            for (const geom::SkeletonStep& step : self.steps) edges.push_back(step.edgeIdx);
            return copyOf(edges);
          },
          "The indices of its edges in order.");
}

void bindPaths(py::module_& module) {
  module.def("counts_of", &geom::countsOf, "skeleton"_a, LongCall(),
             "Numbers of components, cycles, ends and branches.");
  module.def("branches_of", &geom::branchesOf, "skeleton"_a, LongCall(),
             "The paths between end points and branch points, and cycles without branches.");
  module.def("longest_path", &geom::longestPath, "skeleton"_a, LongCall(),
             "The longest path that visits no vertex twice; of a worm-like region its middle line.");
  module.def(
      "widths_along",
      [](const Skeleton2d& skeleton, const std::optional<SkeletonPath>& path, std::size_t nbBins) {
        if (nbBins > 1'000'000) throw py::value_error("nb_bins: at most 1,000,000 were wanted");
        if (!path) return geom::widthsAlong(skeleton, nbBins);
        requirePathOf(skeleton, *path);
        return geom::widthsAlong(skeleton, *path, nbBins);
      },
      "skeleton"_a, "path"_a = py::none(), "nb_bins"_a = 0,
      "The widths of the region along a path, or along all edges, with a histogram of `nb_bins` intervals.");
  module.def(
      "sample_path",
      [](const Skeleton2d& skeleton, const SkeletonPath& path, omReal64 step) {
        requirePathOf(skeleton, path);
        const auto circles = [&] {
          const Reading reading;
          return geom::samplePath(skeleton, path, step);
        }();
        py::array_t<omReal64> rows(std::vector<py::ssize_t>{static_cast<py::ssize_t>(circles.size()), 3});
        omReal64* row = rows.mutable_data();
        for (const auto& circle : circles) {
          *row++ = circle.centerX();
          *row++ = circle.centerY();
          *row++ = circle.getRadius();
        }
        return rows;
      },
      "skeleton"_a, "path"_a, "step"_a,
      "Points at equal distances along a path, at most `step` apart, each with the radius of the circle that touches\n"
      "the boundary: an array of shape (n, 3).");
}

}  // namespace

void bindSkeleton(py::module_& module) {
  bindReports(module);
  bindCompute<geom::BaseGeometryEntity2d>(module);
  bindCompute<PixelsArgument>(module);
  bindPaths(module);
  module.def(
      "erosion_thickness", [](const Skeleton2d& skeleton) { return copyOf(geom::erosionThickness(skeleton)); },
      "skeleton"_a, "The greatest erosion thickness on each edge; infinite on cycles.");
  module.def(
      "prune_skeleton",
      [](const Skeleton2d& skeleton, omReal64 threshold, bool wantsReport) -> py::object {
        geom::PruningReport report;
        SkeletonPtr pruned;
        {
          const Reading reading;
          pruned = boost::make_shared<Skeleton2d>(geom::pruneSkeleton(skeleton, threshold, &report));
        }
        if (!wantsReport) return py::cast(pruned);
        return py::make_tuple(pruned, report);
      },
      "skeleton"_a, "threshold"_a, "report"_a = false,
      "The skeleton without branches that reach by at most `threshold` beyond the rest. 1.5 to 2.5 pixels remove what\n"
      "the steps of a mask's boundary make. With `report=True` the answer is (skeleton, report).");
  module.def("region_of", &geom::regionOf, "skeleton"_a, "tolerance"_a, LongCall(),
             "The region of a skeleton again, one polygon with its holes for each component.");
}

}  // namespace ormix::python

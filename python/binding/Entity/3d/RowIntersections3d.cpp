#include "../../Frame/Calls.h"
#include "../../Frame/Errors.h"
#include "../../Frame/Images.h"
#include "../../Frame/Print.h"
#include "../Entities.h"
#include "../Runs.h"

#include <pybind11/stl.h>
#include <array>
#include <optional>
#include <string>

namespace ormix::python {
namespace {

using geom::RowIntersections;
using geom::RowIntersections3d;
using Extent = std::array<omUInt64, 3>;  // depth, height, width

RowIntersections3d fromMask(const py::object& mask) {
  const VolumeArray array = volumeArrayOf(mask, "mask");
  const Reading reading;
  return std::visit([](const auto& view) { return geom::toRowIntersections3d(view); }, array.view);
}

omUInt64 endSlice(const RowIntersections3d& voxels) { return voxels.zOffset + voxels.rowIntersectionsColl.size(); }

// The size of the volume from (0, 0, 0) that holds all voxels.
Extent extentOf(const RowIntersections3d& voxels) {
  Extent extent{endSlice(voxels), 0, 0};
  for (const RowIntersections& rows : voxels.rowIntersectionsColl) {
    extent[1] = std::max(extent[1], rows.getEndRow());
    for (const geom::PixelRun& run : rows.getRunColl()) extent[2] = std::max<omUInt64>(extent[2], run.end);
  }
  return extent;
}

py::array toMask(const RowIntersections3d& voxels, const std::optional<Extent>& shape) {
  const auto [depth, height, width] = shape.value_or(extentOf(voxels));
  const py::module_ numpy = py::module_::import("numpy");
  const py::array mask = numpy.attr("zeros")(py::make_tuple(depth, height, width), "bool");
  auto* const data = static_cast<omUInt8*>(const_cast<void*>(mask.data()));
  const BoolResult result = [&, depth = depth, height = height, width = width]() -> BoolResult {
    const Reading reading;
    for (std::size_t i = 0; i < voxels.rowIntersectionsColl.size(); ++i) {
      const RowIntersections& rows = voxels.rowIntersectionsColl[i];
      const omUInt64 z = voxels.zOffset + i;
      if (rows.getRunColl().empty()) continue;
      if (z >= depth)
        return failure("Slice " + std::to_string(z) + " lies outside the mask of " + std::to_string(depth) + " slices");
      const geom::MaskView<omUInt8> view{data + z * height * width, width, height, width};
      if (BoolResult written = geom::toMask(rows, view); !written) return written;
    }
    return {};
  }();
  check(result, "RowIntersections3d", "shape");
  return mask;
}

}  // namespace

void bindRowIntersections3d(py::module_& module) {
  py::class_<RowIntersections3d> voxels(
      module, "RowIntersections3d",
      "A set of voxels as runs along x of rows of slices. Voxel (x, y, z) is the unit cube from that corner on. A set\n"
      "does not change.\n\n"
      "runs: array of shape (n, 4) of integers, z, y, begin and end of each run, in any order; a run has the voxels\n"
      "    begin <= x < end. Runs of a row have no voxels in common.\n\n"
      ">>> RowIntersections3d([[7, 0, 2, 5]])\n"
      "RowIntersections3d(runs=[[7, 0, 2, 5]])");
  voxels.attr("__match_args__") = py::make_tuple("runs");
  voxels.def(py::init<>())
      .def(py::init([](const py::object& runs) { return voxelsOfRuns(runs); }), "runs"_a)
      .def_static(
          "of_slices",
          [](const std::vector<RowIntersections>& slices, omUInt64 start) {
            if (start > std::numeric_limits<omUInt64>::max() - slices.size())
              throw py::value_error("start_slice: there are no such slices");
            return RowIntersections3d(start, slices);
          },
          "slices"_a, "start_slice"_a = 0, "The set with these slices of pixels, from start_slice on.")
      .def_static("from_mask", &fromMask, "mask"_a,
                  "The voxels of a mask that are not zero.\n\n"
                  "mask: array [z, y, x] of bool or integers, of any strides.\n\n"
                  ">>> RowIntersections3d.from_mask(np.ones((2, 1, 3), dtype=bool)).runs.tolist()\n"
                  "[[0, 0, 0, 3], [1, 0, 0, 3]]")
      .def("to_mask", &toMask, "shape"_a = py::none(),
           "The voxels as a mask of bool.\n\n"
           "shape: depth, height and width; by default as much as the voxels take, from (0, 0, 0). Error for voxels\n"
           "    beyond it.\n\n"
           ">>> RowIntersections3d([[0, 1, 0, 2]]).to_mask().tolist()\n"
           "[[[False, False], [True, True]]]")
      .def_property_readonly(
          "runs", [](const RowIntersections3d& self) { return runsOf(self); },
          "The runs in order, as an array of its own of shape (n, 4): z, y, begin, end.")
      .def_property_readonly(
          "slices", [](const RowIntersections3d& self) { return self.rowIntersectionsColl; },
          "Copies of the slices, each a RowIntersections.")
      .def_readonly("start_slice", &RowIntersections3d::zOffset, "The z of the first slice.")
      .def_property_readonly("end_slice", &endSlice, "The z after the last slice.")
      .def_property_readonly(
          "nb_slices", [](const RowIntersections3d& self) { return self.rowIntersectionsColl.size(); },
          "The number of slices, those without runs included.")
      .def_property_readonly(
          "nb_voxels", [](const RowIntersections3d& self) { return geom::getNbVoxels(self); },
          "The number of voxels. Linear in the runs.")
      .def(
          "__eq__", [](const RowIntersections3d& a, const RowIntersections3d& b) { return a == b; }, py::is_operator(),
          "Whether slices, rows and runs are the same.")
      .def("__repr__", &print)
      .def(
          "copy", [](const RowIntersections3d& self) { return self; }, "A copy.")
      .def("__copy__", [](const RowIntersections3d& self) { return self; })
      .def(
          "__deepcopy__", [](const RowIntersections3d& self, const py::dict&) { return self; }, "memo"_a)
      .def(py::pickle(
          [](const RowIntersections3d& self) { return py::make_tuple(self.zOffset, self.rowIntersectionsColl); },
          [](const py::tuple& state) {
            return RowIntersections3d(state[0].cast<omUInt64>(), state[1].cast<std::vector<RowIntersections>>());
          }));
  voxels.attr("__hash__") = py::none();
}

}  // namespace ormix::python

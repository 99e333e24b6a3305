#include "../Frame/Arrays.h"
#include "../Frame/Calls.h"
#include "../Frame/Errors.h"
#include "Arguments.h"
#include "Regions.h"

#include <ORMIXGeometry/Entity/2d/Shape/Shape2dConstructor.h>
#include <ORMIXGeometry/Entity/3d/Shape/Shape3dConstructor.h>

#include <pybind11/stl.h>

#include <optional>
#include <utility>

namespace ormix::python {
namespace {

// What both constructors do alike: rows or slices of the library's constructor and the number of the next one.
template <class Constructor>
struct Sequential {
  Constructor constructor;
  omUInt64 next = 0;
};
using Rows = Sequential<geom::Shape2dConstructor>;
using Slices = Sequential<geom::Shape3dConstructor>;

// The runs of a row: of a mask of one dimension, or of pairs of columns.
geom::RowIntersections::RunColl runsOf(const py::object& row) {
  const py::array array = py::array::ensure(row);
  if (array && array.ndim() == 1 && array.size() > 0) {
    const auto mask = array.attr("reshape")(1, -1).cast<PixelsArgument>();
    return mask.get().getRunColl();
  }
  PyErr_Clear();
  const auto columns = matrixOf<omUInt32>(row, 2, "row");
  geom::RowIntersections::RunColl runs;
  for (py::ssize_t i = 0; i < columns.shape(0); ++i) runs.push_back({columns.at(i, 0), columns.at(i, 1)});
  return runs;
}

void addRow(Rows& self, const py::object& row, std::optional<omUInt64> y) {
  const geom::RowIntersections::RunColl runs = runsOf(row);
  const omUInt64 number = y.value_or(self.next);
  const Changing changing;
  check(self.constructor.addRow(number, runs), "Shape2dConstructor", "y");
  self.next = number + 1;
}

void addSlice(Slices& self, const PixelsArgument& slice, std::optional<omUInt64> z) {
  const omUInt64 number = z.value_or(self.next);
  const Changing changing;
  check(self.constructor.addSlice(number, slice.get()), "Shape3dConstructor", "z");
  self.next = number + 1;
}

template <class Class>
void addCommon(Class& constructor) {
  using Self = typename Class::type;
  constructor
      .def(
          "take_finished", [](Self& self) { return self.constructor.takeFinished(); }, ChangingCall(),
          "The regions that nothing which is still to come can touch and that were not taken before, in the order of\n"
          "their first pixels.")
      .def(
          "finish", [](Self& self) { return self.constructor.finish(); }, ChangingCall(),
          "All regions that were not taken yet; nothing can be added after that.");
}

}  // namespace

void bindConstructors(py::module_& module) {
  py::class_<Rows> rows(module, "Shape2dConstructor",
                        "Makes the connected regions of an image from its rows, which arrive one after the other, so\n"
                        "that the image need not fit into memory.\n\n"
                        "`connectivity`: 8 or 4; `tolerance`: of the polygons, as of `label`.\n\n"
                        ">>> image = iter([[1, 1, 0], [0, 0, 0], [0, 1, 0]])\n"
                        ">>> for shape in Shape2dConstructor().shapes(image):\n"
                        "...     print(shape.nb_pixels)\n"
                        "2\n"
                        "1");
  rows.def(py::init([](PixelConnectivity connectivity, omReal64 tolerance) {
             return Rows{geom::Shape2dConstructor(connectivity, tolerance)};
           }),
           "connectivity"_a = PixelConnectivity{geom::ePC_8}, "tolerance"_a = 0.0)
      .def("add_row", &addRow, "row"_a, "y"_a = py::none(),
           "Add a row: a mask of one dimension, or runs [begin, end) as an array of shape (n, 2). `y` must be above "
           "that\n"
           "of the rows before; without it, it is the next one. Rows that are left out have no pixels.");
  addCommon(rows);

  py::class_<Slices> slices(
      module, "Shape3dConstructor",
      "Makes the connected regions of a volume from its slices, which arrive one after the other,\n"
      "so that the volume need not fit into memory.\n\n"
      "`connectivity`: 26 or 6; `surface`: the surfaces of the shapes, as of `label_shapes3d`.");
  slices
      .def(py::init([](VoxelConnectivity connectivity, geom::eShapeSurface surface) {
             return Slices{geom::Shape3dConstructor(connectivity, surface)};
           }),
           "connectivity"_a = VoxelConnectivity{geom::eVC_26}, "surface"_a = geom::eSS_None)
      .def("add_slice", &addSlice, "slice"_a, "z"_a = py::none(),
           "Add a slice: a mask or another set of pixels. `z` must be above that of the slices before; without it, it "
           "is\n"
           "the next one. Slices that are left out have no voxels.");
  addCommon(slices);
}

}  // namespace ormix::python

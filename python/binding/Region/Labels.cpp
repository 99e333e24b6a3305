#include "../Frame/Calls.h"
#include "Arguments.h"
#include "Regions.h"

#include "../Frame/Arrays.h"

#include <ORMIXGeometry/Entity/2d/Shape/ConnectedComponents.h>
#include <ORMIXGeometry/Entity/2d/Shape/LabelShapes.h>
#include <ORMIXGeometry/Entity/2d/Shape/LabelledRows.h>

#include <pybind11/stl.h>

namespace ormix::python {
namespace {

geom::Shape2dPtrColl label(const PixelsArgument& mask, PixelConnectivity connectivity, omReal64 tolerance) {
  return geom::labelShapes(mask.get(), connectivity, tolerance);
}

std::vector<geom::LabelledRows> labelledRows(const MaskArray& labels) {
  return std::visit([](const auto& view) { return geom::labelledRows(view); }, labels.view);
}

geom::Shape2dPtrColl shapesOfLabels(const py::object& values, PixelConnectivity connectivity, omReal64 tolerance) {
  const MaskArray labels = maskArrayOf(values, "labels", Pixels::Labels);
  const Reading reading;
  return geom::shapesOfLabels(labelledRows(labels), connectivity, tolerance);
}

py::dict labelledRowsOf(const py::object& values) {
  const MaskArray labels = maskArrayOf(values, "labels", Pixels::Labels);
  std::vector<geom::LabelledRows> rows = [&labels] {
    const Reading reading;
    return labelledRows(labels);
  }();
  py::dict result;
  for (geom::LabelledRows& row : rows) result[py::int_(row.label)] = std::move(row.rows);
  return result;
}

constexpr const char* s_labelDoc =
    "The connected regions of a mask as shapes, in the order of their first pixels, row by row.\n\n"
    "`mask`: an array of bool or integers, indexed [y, x], in which all but 0 is inside, or another set of pixels.\n"
    "`connectivity`: 8 or 4, with which neighbours pixels are one region; or an ePixelConnectivity.\n"
    "`tolerance`: of the polygons, in pixels: 0 for the exact boundary, else that of SimplifyTransform2d.\n\n"
    ">>> shapes = label([[1, 0, 0], [0, 1, 0], [0, 0, 0]], connectivity=4)\n"
    ">>> len(shapes), shapes[1].nb_pixels\n"
    "(2, 1)";

}  // namespace

void bindLabels(py::module_& module) {
  const PixelConnectivity eight{geom::ePC_8};
  for (const char* name : {"label", "label_shapes"})
    module.def(name, &label, "mask"_a, "connectivity"_a = eight, "tolerance"_a = 0.0, LongCall(), s_labelDoc);
  module
      .def("shapes_of_labels", &shapesOfLabels, "labels"_a, "connectivity"_a = eight, "tolerance"_a = 0.0,
           "One shape for each label of an image of labels, in ascending order of the labels; 0 is the background.\n"
           "The pixels of a label need not be connected; the connectivity tells its parts apart.\n\n"
           "`labels`: an array of integers, indexed [y, x], with values of 32 bits.\n\n"
           ">>> [shape.nb_pixels for shape in shapes_of_labels([[7, 3], [3, 3]])]\n"
           "[3, 1]")
      .def("labelled_rows", &labelledRowsOf, "labels"_a,
           "A dictionary from each label of an image but 0, in ascending order, to its pixels.\n\n"
           ">>> {label: rows.nb_pixels for label, rows in labelled_rows([[7, 3], [3, 3]]).items()}\n"
           "{3: 3, 7: 1}")
      .def(
          "make_shape",
          [](const PixelsArgument& pixels, PixelConnectivity connectivity, omReal64 tolerance) {
            return geom::makeShape(pixels.get(), connectivity, tolerance);
          },
          "pixels"_a, "connectivity"_a = eight, "tolerance"_a = 0.0, LongCall(),
          "The shape of a set of pixels, which need not be connected: the pixels and the polygons that bound their\n"
          "parts. Arguments as of `label`.")
      .def(
          "connected_components",
          [](const PixelsArgument& pixels, PixelConnectivity connectivity) {
            return geom::connectedComponents(pixels.get(), connectivity);
          },
          "pixels"_a, "connectivity"_a = eight, LongCall(),
          "The connected parts of a set of pixels, in the order of their first pixels: as `label`, without polygons.")
      .def(
          "components_of",
          [](const PixelsArgument& pixels, PixelConnectivity connectivity) {
            const geom::RunComponents components = [&] {
              const Reading reading;
              return geom::componentsOf(pixels.get(), connectivity);
            }();
            return py::make_tuple(components.nbComponents, copyOf(components.componentOfRun));
          },
          "pixels"_a, "connectivity"_a = eight,
          "The number of connected parts, and for each run of the set, in order, to which of them it belongs.\n\n"
          ">>> components_of([[1, 0, 1], [1, 0, 1]])\n"
          "(2, array([0, 1, 0, 1], dtype=uint32))");
}

}  // namespace ormix::python

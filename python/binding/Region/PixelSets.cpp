#include "../Frame/Calls.h"
#include "../Frame/Errors.h"
#include "Arguments.h"
#include "Regions.h"

#include <ORMIXGeometry/Entity/2d/Shape/RowMorphology.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowSetOperations.h>

#include <algorithm>
#include <cmath>

namespace ormix::python {
namespace {

using Pixels = geom::RowIntersections;

// Adding up numbers of rows in integers might overflow.
omReal64 real(omUInt64 number) { return static_cast<omReal64>(number); }

// The rows from the first to the last one of both sets.
void checkRowsOfBoth(const Pixels& a, const Pixels& b) {
  if (a.getNbRows() == 0 || b.getNbRows() == 0) return;
  checkNbRows(real(std::max(a.getEndRow(), b.getEndRow())) - real(std::min(a.getStartRow(), b.getStartRow())));
}

Pixels unite(const PixelsArgument& a, const PixelsArgument& b) {
  checkRowsOfBoth(a.get(), b.get());
  const Reading reading;
  return geom::unite(a.get(), b.get());
}

Pixels exclude(const PixelsArgument& a, const PixelsArgument& b) {
  checkRowsOfBoth(a.get(), b.get());
  const Reading reading;
  return geom::exclude(a.get(), b.get());
}

Pixels complement(const PixelsArgument& pixels, const BoxArgument& box) {
  checkNbRows(box.box.getYMax() - box.box.getYMin());
  const Reading reading;
  return geom::complement(pixels.get(), box.box);
}

// A neighbourhood that is higher than the set grows it to so many rows, and nothing of it is left inside the set. Each
// row that is added takes up to 112 bytes.
void checkGrowth(const Pixels& pixels, omReal64 halfHeight) {
  constexpr omReal64 mostHalfHeight = 0x1p24;
  if (pixels.getNbRows() == 0) return;
  if (halfHeight > mostHalfHeight) throw py::value_error("dilate: at most 16777216 rows are added on each side");
  checkNbRows(real(pixels.getNbRows()) + 2 * halfHeight);
}
bool erodesAll(const Pixels& pixels, omReal64 halfHeight) { return 2 * halfHeight >= real(pixels.getNbRows()); }

Pixels dilateByBox(const PixelsArgument& pixels, omUInt32 halfWidth, omUInt32 halfHeight) {
  checkGrowth(pixels.get(), halfHeight);
  const Reading reading;
  return geom::dilate(pixels.get(), halfWidth, halfHeight);
}

Pixels dilateByDisk(const PixelsArgument& pixels, omReal64 radius) {
  checkGrowth(pixels.get(), radius);
  const Reading reading;
  return geom::dilate(pixels.get(), radius);
}

Pixels erodeByBox(const PixelsArgument& pixels, omUInt32 halfWidth, omUInt32 halfHeight) {
  if (erodesAll(pixels.get(), halfHeight)) return {};
  const Reading reading;
  return geom::erode(pixels.get(), halfWidth, halfHeight);
}

Pixels erodeByDisk(const PixelsArgument& pixels, omReal64 radius) {
  if (radius >= 0 && radius < 0x1p32 && erodesAll(pixels.get(), std::floor(radius))) return {};
  const Reading reading;
  return geom::erode(pixels.get(), radius);
}

void bindMorphology(py::module_& module) {
  module
      .def("dilate", &dilateByDisk, "pixels"_a, "radius"_a,
           "The pixels whose centers are at most `radius` away from that of a pixel of the set, decided exactly; with\n"
           "`half_width` and `half_height` those in a box of 2 half_width + 1 columns and 2 half_height + 1 rows "
           "around\n"
           "one. Columns and rows below 0 are left out. The size of the set is not limited by a mask's.\n\n"
           ">>> dilate([[0, 0, 0], [0, 1, 0]], radius=1).nb_pixels\n"
           "5")
      .def("dilate", &dilateByBox, "pixels"_a, "half_width"_a, "half_height"_a)
      .def("erode", &erodeByDisk, "pixels"_a, "radius"_a,
           "The pixels for which all pixels at most `radius` away, from center to center, are in the set; with\n"
           "`half_width` and `half_height` all in the box around it. What lies outside of a mask is background.\n\n"
           ">>> erode(np.ones((5, 7), bool), radius=1).nb_pixels\n"
           "15")
      .def("erode", &erodeByBox, "pixels"_a, "half_width"_a, "half_height"_a)
      .def(
          "fill_holes",
          [](const PixelsArgument& pixels, PixelConnectivity connectivity) {
            return geom::fillHoles(pixels.get(), connectivity);
          },
          "pixels"_a, "connectivity"_a = PixelConnectivity{geom::ePC_8}, LongCall(),
          "The pixels and their holes, which are those parts of the background that nothing leads out of. The\n"
          "connectivity is that of the pixels; their background has the other one.\n\n"
          ">>> fill_holes([[1, 1, 1], [1, 0, 1], [1, 1, 1]]).nb_pixels\n"
          "9");
}

}  // namespace

void bindPixelSets(py::module_& module) {
  module
      .def("unite", &unite, "a"_a, "b"_a,
           "The pixels of a or b.\n\n"
           "As everywhere, a set of pixels is given as `RowIntersections`, as a mask, an array of bool or integers in\n"
           "which all but 0 is inside, or as a `Shape2d`, whose pixels are taken. Time and memory are those of the "
           "runs;\n"
           "results of the set operations are without adjacent runs, so that equal sets compare equal.\n\n"
           ">>> unite([[1, 0, 0]], [[0, 0, 1]]).nb_pixels\n"
           "2")
      .def(
          "intersect",
          [](const PixelsArgument& a, const PixelsArgument& b) { return geom::intersect(a.get(), b.get()); }, "a"_a,
          "b"_a, LongCall(), "The pixels of both a and b.")
      .def(
          "subtract", [](const PixelsArgument& a, const PixelsArgument& b) { return geom::subtract(a.get(), b.get()); },
          "a"_a, "b"_a, LongCall(), "The pixels of a that are not in b.")
      .def("exclude", &exclude, "a"_a, "b"_a, "The pixels that are in one of a and b, and not in both.")
      .def("complement", &complement, "pixels"_a, "box"_a,
           "The pixels of a box that are not in the set. The box is an entity or (x_min, y_min, x_max, y_max), whole\n"
           "numbers from 0 on: the columns from x_min to x_max - 1 and the rows from y_min to y_max - 1.\n\n"
           ">>> complement([[1, 0, 0]], box=(0, 0, 3, 1)).nb_pixels\n"
           "2")
      .def(
          "translate",
          [](const PixelsArgument& pixels, omInt64 dx, omInt64 dy) { return geom::translate(pixels.get(), dx, dy); },
          "pixels"_a, "dx"_a, "dy"_a, LongCall(),
          "The pixels moved by dx columns and dy rows. An error if one came to lie left of column 0 or above row 0.")
      .def(
          "normalized", [](const PixelsArgument& pixels) { return geom::normalized(pixels.get()); }, "pixels"_a,
          LongCall(), "The same pixels, with adjacent runs joined and without rows that have no runs at either end.");
  bindMorphology(module);
}

}  // namespace ormix::python

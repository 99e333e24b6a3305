#include "../Frame/Calls.h"
#include "Arguments.h"
#include "Regions.h"

#include <ORMIXGeometry/Region/PerimeterEstimators.h>

namespace ormix::python {

void bindPerimeters(py::module_& module) {
  const PixelConnectivity eight{geom::ePC_8};
  const geom::PixelSpacing one;
  module
      .def(
          "corner_count_perimeter",
          [](const PixelsArgument& pixels, PixelConnectivity connectivity, const geom::PixelSpacing& spacing) {
            return geom::cornerCountPerimeter(pixels.get(), connectivity, spacing);
          },
          "pixels"_a, "connectivity"_a = eight, "spacing"_a = one, LongCall(),
          "The length of the boundary of a set of pixels, holes included, by the steps and corners of the path "
          "through\n"
          "the centers of its boundary pixels. Good on all shapes.")
      .def(
          "crofton_perimeter",
          [](const PixelsArgument& pixels, const geom::PixelSpacing& spacing) {
            return geom::croftonPerimeter(pixels.get(), spacing);
          },
          "pixels"_a, "spacing"_a = one, LongCall(),
          "The same by crossings with lines of pixels in four directions. The best on disks.")
      .def(
          "minimum_length_perimeter",
          [](const PixelsArgument& pixels, PixelConnectivity connectivity, const geom::PixelSpacing& spacing) {
            return geom::minimumLengthPerimeter(pixels.get(), connectivity, spacing);
          },
          "pixels"_a, "connectivity"_a = eight, "spacing"_a = one, LongCall(),
          "The same by the shortest path between the centers of the boundary pixels and of their neighbours outside. "
          "The\n"
          "best on straight sides.")
      .def(
          "edge_perimeter",
          [](const PixelsArgument& pixels, const geom::PixelSpacing& spacing) {
            return geom::edgePerimeter(pixels.get(), spacing);
          },
          "pixels"_a, "spacing"_a = one, LongCall(),
          "The length along the edges of the pixels, up to 4/pi times too long for shapes that are not along the "
          "axes.\n\n"
          ">>> edge_perimeter(np.ones((2, 3), bool))\n"
          "10.0");
}

}  // namespace ormix::python

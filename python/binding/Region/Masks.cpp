#include "../Frame/Calls.h"
#include "../Frame/Dtypes.h"
#include "Arguments.h"
#include "Regions.h"

#include <pybind11/stl.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ormix::python {
namespace {

using Pixels = geom::RowIntersections;
using Shape = std::pair<py::ssize_t, py::ssize_t>;
using Offset = std::pair<omInt64, omInt64>;

// An image that is being painted; its pixel (0, 0) is the one at `offset`.
template <class T>
struct Canvas {
  T* data;
  omInt64 width;
  omInt64 height;
  Offset offset;

  Canvas(py::array& image, const Offset& firstPixel)
      : data(static_cast<T*>(image.mutable_data())),
        width(image.shape(1)),
        height(image.shape(0)),
        offset(firstPixel) {}

  void paint(const Pixels& pixels, T value) const {
    for (omUInt64 y = pixels.getStartRow(); y < pixels.getEndRow(); ++y) {
      const Pixels::Row runs = pixels.getRow(y);
      if (runs.empty()) continue;
      // Modulo 2^64: what is negative is large, too.
      const omUInt64 row = y - static_cast<omUInt64>(offset.second);
      const omInt64 left = runs[0].begin - offset.first;
      const omInt64 right = runs[runs.size() - 1].end - offset.first;
      if (row >= static_cast<omUInt64>(height) || left < 0 || right > width)
        throw py::value_error("shape: pixel (" +
                              std::to_string(left < 0 ? runs[0].begin : runs[runs.size() - 1].end - 1) + ", " +
                              std::to_string(y) + ") lies outside the image of " + std::to_string(width) +
                              " columns and " + std::to_string(height) + " rows");
      T* const to = data + static_cast<omInt64>(row) * width - offset.first;
      for (const geom::PixelRun& run : runs) std::fill(to + run.begin, to + run.end, value);
    }
  }
};

// Small enough that differences to columns do not overflow.
void checkOffset(const Offset& offset) {
  constexpr omInt64 most = omInt64{1} << 62;
  for (const omInt64 step : {offset.first, offset.second})
    if (step < -most || step > most) throw py::value_error("offset: at most 2^62 columns and rows");
}

py::array zeros(const Shape& shape, const py::object& dtype) {
  return py::module_::import("numpy").attr("zeros")(py::make_tuple(shape.first, shape.second), dtype);
}

// The rows and columns from the offset up to the last pixel.
Shape shapeFrom(const Pixels& pixels, const Offset& offset) {
  omUInt32 right = 0;
  for (const geom::PixelRun& run : pixels.getRunColl()) right = std::max(right, run.end);
  const auto size = [](omUInt64 end, omInt64 begin) {
    return static_cast<py::ssize_t>(std::max(static_cast<omInt64>(end) - begin, omInt64{0}));
  };
  return {size(pixels.getEndRow(), offset.second), size(right, offset.first)};
}

py::array toMask(const PixelsArgument& pixels, const std::optional<Shape>& shape, const Offset& offset) {
  checkOffset(offset);
  py::array mask = zeros(shape ? *shape : shapeFrom(pixels.get(), offset), py::dtype::of<bool>());
  const Canvas<bool> canvas(mask, offset);
  const Reading reading;
  canvas.paint(pixels.get(), true);
  return mask;
}

// Regions with their labels: those of a dictionary, or of a sequence, numbered from 1.
struct Regions {
  std::vector<omInt64> labels;
  std::vector<PixelsArgument> pixels;
};

Regions regionsOf(const py::object& values) {
  Regions regions;
  const auto add = [&regions](omInt64 label, py::handle value) {
    PixelsArgument pixels;
    if (!load(value, true, pixels))
      throw py::type_error("regions: item " + std::to_string(regions.labels.size()) + " is no set of pixels");
    regions.labels.push_back(label);
    regions.pixels.push_back(std::move(pixels));
  };
  if (py::isinstance<py::dict>(values)) {
    for (const auto& item : values.cast<py::dict>()) add(labelOf(item.first), item.second);
  } else {
    omInt64 label = 0;
    for (const py::handle item : values) add(++label, item);
  }
  return regions;
}

py::array toLabels(const py::object& values, const Shape& shape, const Offset& offset, const py::object& dtype) {
  checkOffset(offset);
  using LabelDtypes = Dtypes<omInt32, omUInt8, omUInt16, omUInt32, omInt64>;
  return callWithDtype(LabelDtypes(), dtype, [&](auto zero) {
    using T = decltype(zero);
    const Regions regions = regionsOf(values);
    for (const omInt64 label : regions.labels)
      if (label < static_cast<omInt64>(std::numeric_limits<T>::min()) ||
          label > static_cast<omInt64>(std::numeric_limits<T>::max()))
        throw py::value_error("dtype: label " + std::to_string(label) + " is no value of " +
                              py::cast<std::string>(py::str(py::dtype::of<T>())));
    py::array image = zeros(shape, py::dtype::of<T>());
    const Canvas<T> canvas(image, offset);
    const Reading reading;
    for (std::size_t i = 0; i < regions.pixels.size(); ++i)
      canvas.paint(regions.pixels[i].get(), static_cast<T>(regions.labels[i]));
    return image;
  });
}

}  // namespace

void bindMasks(py::module_& module) {
  module
      .def(
          "to_row_intersections", [](const PixelsArgument& mask) { return mask.get(); }, "mask"_a,
          "The pixels of a mask that are not 0, as runs. The mask is an array of bool or integers, indexed [y, x]; it "
          "is\n"
          "read where it is if its rows are contiguous, and copied if not.\n\n"
          ">>> to_row_intersections([[0, 1, 1], [1, 0, 0]]).nb_pixels\n"
          "3")
      .def("to_mask", &toMask, "pixels"_a, "shape"_a = py::none(), "offset"_a = Offset(0, 0),
           "An array of bool of the shape (height, width) that is True at the pixels. Its pixel [0, 0] is the one at\n"
           "`offset`, (x, y); without a shape it ends with the last pixels.\n\n"
           "ValueError for pixels outside of it.\n\n"
           ">>> to_mask(label([[0, 1, 1], [0, 1, 0]])[0], offset=(1, 0))\n"
           "array([[ True,  True],\n"
           "       [ True, False]])")
      .def("to_labels", &toLabels, "regions"_a, "shape"_a, "offset"_a = Offset(0, 0), "dtype"_a = "int32",
           "An image of labels of the shape (height, width): the pixels of the first region are 1, those of the second "
           "2,\n"
           "and so on, and all others 0. Of a dictionary from labels to regions each has its label. Where regions "
           "share\n"
           "pixels, the later one has them. ValueError for pixels outside of the image.\n\n"
           ">>> to_labels(label([[1, 0, 1]]), shape=(1, 3))\n"
           "array([[1, 0, 2]], dtype=int32)");
}

}  // namespace ormix::python

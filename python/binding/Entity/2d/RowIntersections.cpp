#include "../../Frame/Calls.h"
#include "../../Frame/Errors.h"
#include "../../Frame/Images.h"
#include "../../Frame/Print.h"
#include "../Entities.h"
#include "../Runs.h"

#include <pybind11/stl.h>
#include <optional>
#include <string>
#include <utility>

namespace ormix::python {
namespace {

using geom::RowIntersections;

// The same runs with empty rows from `startRow` to `endRow`, as far as they are given.
RowIntersections withRows(const RowIntersections& pixels, std::optional<omUInt64> startRow,
                          std::optional<omUInt64> endRow) {
  if (!startRow && !endRow) return pixels;
  const bool hasRows = pixels.getNbRows() > 0;
  const omUInt64 start = startRow.value_or(hasRows ? pixels.getStartRow() : endRow.value_or(0));
  const omUInt64 end = endRow.value_or(hasRows ? pixels.getEndRow() : start);
  if (start > end || (hasRows && (start > pixels.getStartRow() || end < pixels.getEndRow())))
    throw py::value_error("the rows from start_row to end_row, " + std::to_string(start) + " to " +
                          std::to_string(end) + ", are not those of the runs");
  if (end - start > s_mostRows)
    throw py::value_error(std::to_string(end - start) + " rows are too many, at most " + std::to_string(s_mostRows) +
                          " are made");
  std::vector<omUInt32> nbRuns(static_cast<std::size_t>(end - start), 0);
  for (omUInt64 y = pixels.getStartRow(); y < pixels.getEndRow(); ++y)
    nbRuns[static_cast<std::size_t>(y - start)] = static_cast<omUInt32>(pixels.getRow(y).size());
  RowIntersections rows;
  check(rows.setRows(start, nbRuns, pixels.getRunColl()), "RowIntersections", "runs");
  return rows;
}

RowIntersections fromMask(const py::object& mask) {
  const MaskArray array = maskArrayOf(mask, "mask");
  const Reading reading;
  return std::visit([](const auto& view) { return geom::toRowIntersections(view); }, array.view);
}

// Height and width of the image from (0, 0) that holds all pixels.
std::pair<omUInt64, omUInt64> extentOf(const RowIntersections& pixels) {
  omUInt64 width = 0;
  for (const geom::PixelRun& run : pixels.getRunColl()) width = std::max<omUInt64>(width, run.end);
  return {pixels.getEndRow(), width};
}

template <class T>
void writeMask(const RowIntersections& pixels, py::array& mask, omUInt32 value) {
  if (static_cast<omUInt32>(static_cast<T>(value)) != value)
    throw py::value_error("value: " + std::to_string(value) + " is too large for the array");
  const auto height = static_cast<std::size_t>(mask.shape(0));
  const auto width = static_cast<std::size_t>(mask.shape(1));
  const geom::MaskView<T> view{static_cast<T*>(mask.mutable_data()), width, height, width};
  const BoolResult result = [&] {
    const Reading reading;
    return geom::toMask(pixels, view, static_cast<T>(value));
  }();
  check(result, "RowIntersections", "shape");
}

py::array toMask(const RowIntersections& pixels, const std::optional<std::pair<omUInt64, omUInt64>>& shape,
                 const py::object& dtype, omUInt32 value) {
  const auto [height, width] = shape.value_or(extentOf(pixels));
  const py::module_ numpy = py::module_::import("numpy");
  const py::dtype type = py::dtype::from_args(dtype);
  py::array mask = numpy.attr("zeros")(py::make_tuple(height, width), type);
  const char kind = type.kind();
  const py::ssize_t size = type.itemsize();
  if (!type.attr("isnative").cast<bool>() || !(kind == 'b' || (kind == 'u' && size <= 4) || (kind == 'i' && size == 4)))
    throw py::type_error("dtype: bool, uint8, uint16, uint32 or int32 was wanted, not " +
                         py::cast<std::string>(type.attr("name")));
  if (kind == 'b' && value != 1) throw py::value_error("value: of a mask of bool it is 1");
  if (kind == 'i')
    writeMask<omInt32>(pixels, mask, value);
  else if (size == 1)
    writeMask<omUInt8>(pixels, mask, value);
  else if (size == 2)
    writeMask<omUInt16>(pixels, mask, value);
  else
    writeMask<omUInt32>(pixels, mask, value);
  return mask;
}

bool contains(const RowIntersections& pixels, const std::pair<omInt64, omInt64>& pixel) {
  if (pixel.first < 0 || pixel.second < 0) return false;
  const auto x = static_cast<omUInt64>(pixel.first);
  const auto y = static_cast<omUInt64>(pixel.second);
  if (y < pixels.getStartRow() || y >= pixels.getEndRow()) return false;
  const RowIntersections::Row row = pixels.getRow(y);
  const auto* next =
      std::partition_point(row.begin(), row.end(), [&](const geom::PixelRun& run) { return run.end <= x; });
  return next != row.end() && next->begin <= x;
}

}  // namespace

void bindRowIntersections(py::module_& module) {
  py::class_<RowIntersections> pixels(
      module, "RowIntersections",
      "A set of pixels as runs of rows. Pixel (x, y) is the square from (x, y) to (x + 1, y + 1). A set does not "
      "change.\n\n"
      "runs: array of shape (n, 3) of integers, y, begin and end of each run, in any order; a run has the pixels\n"
      "    begin <= x < end. Runs of a row have no pixels in common.\n"
      "start_row, end_row: the first row and the one after the last, where there are empty rows at the ends.\n\n"
      ">>> RowIntersections([[0, 2, 5], [1, 0, 3]])\n"
      "RowIntersections(runs=[[0, 2, 5], [1, 0, 3]], start_row=0, end_row=2)");
  pixels.attr("__match_args__") = py::make_tuple("runs", "start_row", "end_row");
  pixels.def(py::init<>())
      .def(py::init([](const py::object& runs, std::optional<omUInt64> startRow, std::optional<omUInt64> endRow) {
             return withRows(pixelsOfRuns(runs), startRow, endRow);
           }),
           "runs"_a, "start_row"_a = py::none(), "end_row"_a = py::none())
      .def_static("from_mask", &fromMask, "mask"_a,
                  "The pixels of a mask that are not zero.\n\n"
                  "mask: array [y, x] of bool or integers, of any strides.\n\n"
                  ">>> RowIntersections.from_mask(np.eye(2, dtype=bool)).runs.tolist()\n"
                  "[[0, 0, 1], [1, 1, 2]]")
      .def("to_mask", &toMask, "shape"_a = py::none(), "dtype"_a = "bool", "value"_a = 1,
           "The pixels as a mask.\n\n"
           "shape: height and width; by default as much as the pixels take, from (0, 0).\n"
           "dtype: bool, uint8, uint16, uint32 or int32.\n"
           "value: that of the pixels inside. Error for pixels beyond the shape.\n\n"
           ">>> RowIntersections([[1, 0, 2]]).to_mask(dtype='uint8').tolist()\n"
           "[[0, 0], [1, 1]]")
      .def_property_readonly(
          "runs", [](const RowIntersections& self) { return runsOf(self); },
          "The runs in order, as an array of its own of shape (n, 3): y, begin, end.")
      .def_property_readonly("start_row", &RowIntersections::getStartRow, "The first row; 0 where there are none.")
      .def_property_readonly("end_row", &RowIntersections::getEndRow, "The row after the last one.")
      .def_property_readonly("nb_rows", &RowIntersections::getNbRows,
                             "The number of rows, those without runs included.")
      .def_property_readonly(
          "nb_runs", [](const RowIntersections& self) { return self.getRunColl().size(); }, "The number of runs.")
      .def_property_readonly("nb_pixels", &RowIntersections::getNbPixels, "The number of pixels. Linear in the runs.")
      .def("__contains__", &contains, "pixel"_a, "Whether the pixel (x, y) is in the set.")
      .def(
          "__eq__", [](const RowIntersections& a, const RowIntersections& b) { return a == b; }, py::is_operator(),
          "Whether rows and runs are the same.")
      .def("__repr__", &print)
      .def(
          "copy", [](const RowIntersections& self) { return self; }, "A copy.")
      .def("__copy__", [](const RowIntersections& self) { return self; })
      .def(
          "__deepcopy__", [](const RowIntersections& self, const py::dict&) { return self; }, "memo"_a)
      .def(py::pickle(
          [](const RowIntersections& self) {
            return py::make_tuple(runsOf(self), self.getStartRow(), self.getEndRow());
          },
          [](const py::tuple& state) {
            return withRows(pixelsOfRuns(state[0]), state[1].cast<omUInt64>(), state[2].cast<omUInt64>());
          }));
  pixels.attr("__hash__") = py::none();
}

}  // namespace ormix::python

#include "../Frame/Calls.h"
#include "../Frame/Errors.h"
#include "../Frame/Progress.h"
#include "MeasuredRegions.h"
#include "RegionColumns.h"
#include "Regions.h"

#include <ORMIXGeometry/Region/RegionTable.h>
#include <ORMIXUtil/Exception/BaseException.h>

#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ormix::python {
namespace {

using geom::RegionProperties;

struct Measuring {
  geom::PixelSpacing spacing;
  geom::RegionOptions options;
};

// Measures all regions in one loop, within which Python runs. `take` is called with the index of each and what was
// measured.
template <class Take>
void measure(const MeasuredRegions& regions, const Measuring& measuring, const py::object& callable, Take take) {
  Progress progress(callable);
  const ProgressCallback goOn = progress.callback();
  const auto nbRegions = static_cast<omReal64>(regions.regions.size());
  std::string failed;
  bool isStopped = false;
  {
    const Reading reading;
    for (std::size_t i = 0; i < regions.regions.size() && !isStopped && failed.empty(); ++i) {
      const MeasuredRegion& region = regions.regions[i];
      try {
        take(i, region.pixels != nullptr ? regionProperties(*region.pixels, measuring.spacing, measuring.options)
                                         : regionProperties(*region.entity, measuring.spacing, measuring.options));
      } catch (const BaseException& error) {
        failed = "Region " + std::to_string(region.label) + ": " + error.getMessage();
      }
      isStopped = !goOn(static_cast<omReal64>(i + 1) / nbRegions);
    }
  }
  progress.check();
  if (!failed.empty()) raiseError(failed, "RegionProperties");
  if (isStopped) raiseError("Region properties: stopped by the progress callback", "RegionProperties");
}

// Which columns are wanted.
class Selection {
 public:
  // All, or those named: a column, or what several begin with, "centroid".
  explicit Selection(const std::optional<std::vector<std::string>>& properties) {
    if (!properties) {
      for (const RegionCount& count : s_regionCounts) counts.push_back(&count);
      for (const RegionColumn& column : s_regionColumns) columns.push_back(&column);
      return;
    }
    for (const std::string& property : *properties)
      if (add(property) == 0 && property != "label")
        throw py::value_error("properties: there is no \"" + property + "\"");
  }

  // What is measured for them.
  geom::RegionOptions options(geom::ePixelConnectivity connectivity) const {
    geom::RegionOptions wanted;
    wanted.connectivity = connectivity;
    wanted.allPerimeters = has(Group::Perimeters);
    wanted.moments = has(Group::Moments);
    wanted.hull = has(Group::Hull);
    wanted.circles = has(Group::Circles);
    return wanted;
  }

  std::vector<const RegionCount*> counts;
  std::vector<const RegionColumn*> columns;

 private:
  static bool matches(const std::string& name, const std::string& property) {
    return name == property || name.compare(0, property.size() + 1, property + '_') == 0;
  }
  std::size_t add(const std::string& property) {
    std::size_t nbFound = 0;
    const auto addTo = [&](auto& chosen, const auto& column) {
      if (!matches(column.name, property)) return;
      ++nbFound;
      if (std::find(chosen.begin(), chosen.end(), &column) == chosen.end()) chosen.push_back(&column);
    };
    for (const RegionCount& count : s_regionCounts) addTo(counts, count);
    for (const RegionColumn& column : s_regionColumns) addTo(columns, column);
    return nbFound;
  }
  bool has(Group group) const {
    return std::any_of(columns.begin(), columns.end(), [group](const RegionColumn* c) { return c->group == group; });
  }
};

std::string nameWithUnit(const RegionColumn& column, const std::optional<std::string>& unit) {
  const std::string name = column.name;
  if (!unit || column.unit == Unit::None) return name;
  if (column.unit == Unit::Angle) return name + " [rad]";
  static constexpr std::array powers{"", "", "^2", "", "^4", "^5"};
  return name + " [" + *unit + powers[static_cast<std::size_t>(column.unit)] + ']';
}

// An array that grows no more, and its numbers.
template <class T>
struct NewColumn {
  explicit NewColumn(std::size_t size) : array(static_cast<py::ssize_t>(size)), data(array.mutable_data()) {}
  py::array_t<T> array;
  T* data;
};

py::dict regionProperties(const py::object& values, const geom::PixelSpacing& spacing,
                          const std::optional<std::string>& unit,
                          const std::optional<std::vector<std::string>>& properties, PixelConnectivity connectivity,
                          const py::object& progress) {
  const Selection selection(properties);
  const MeasuredRegions regions = measuredRegionsOf(values, connectivity);
  const std::size_t size = regions.regions.size();
  NewColumn<omInt64> labels(size);
  std::vector<NewColumn<omInt64>> counts;
  std::vector<NewColumn<omReal64>> columns;
  for (std::size_t i = 0; i < selection.counts.size(); ++i) counts.emplace_back(size);
  for (std::size_t i = 0; i < selection.columns.size(); ++i) columns.emplace_back(size);
  measure(regions, {spacing, selection.options(connectivity)}, progress, [&](std::size_t i, const RegionProperties& p) {
    labels.data[i] = regions.regions[i].label;
    for (std::size_t c = 0; c < counts.size(); ++c) counts[c].data[i] = selection.counts[c]->value(p);
    for (std::size_t c = 0; c < columns.size(); ++c) columns[c].data[i] = selection.columns[c]->value(p);
  });
  py::dict table;
  table["label"] = labels.array;
  for (std::size_t c = 0; c < counts.size(); ++c) table[selection.counts[c]->name] = counts[c].array;
  for (std::size_t c = 0; c < columns.size(); ++c)
    table[py::str(nameWithUnit(*selection.columns[c], unit))] = columns[c].array;
  return table;
}

void writeRegionTable(const std::filesystem::path& path, const py::object& values, geom::PixelSpacing spacing,
                      const std::string& unit, PixelConnectivity connectivity, const py::object& progress) {
  spacing.unit = unit;
  geom::RegionOptions options;
  options.connectivity = connectivity;
  const MeasuredRegions regions = measuredRegionsOf(values, connectivity);
  std::vector<RegionProperties> measured;
  measured.reserve(regions.regions.size());
  measure(regions, {spacing, options}, progress,
          [&](std::size_t, const RegionProperties& p) { measured.push_back(p); });
  const BoolResult result = [&] {
    const Reading reading;
    return geom::writeRegionTable(path.string(), measured, spacing);
  }();
  check(result, "RegionProperties", "path");
}

}  // namespace

void bindRegionProperties(py::module_& module) {
  const geom::PixelSpacing one;
  const PixelConnectivity eight{geom::ePC_8};
  module
      .def(
          "region_properties", &regionProperties, "regions"_a, py::kw_only(), "spacing"_a = one, "unit"_a = py::none(),
          "properties"_a = py::none(), "connectivity"_a = eight, "progress"_a = py::none(),
          "What people measure on regions: a dictionary of columns, arrays with one number for each region, which\n"
          "pandas.DataFrame takes.\n\n"
          "`regions`: a mask, an array of bool, whose connected regions are measured in the order of their first "
          "pixels;\n"
          "an image of labels, an array of integers; or shapes, sets of pixels and other entities with an area: one, "
          "a\n"
          "sequence, or a dictionary from labels.\n"
          "`spacing`: width and height of a pixel, (x, y), or one number for both. Lengths are in its unit, areas in "
          "the\n"
          "square of it, angles in radians from the x axis towards the y axis.\n"
          "`unit`: with the name of that unit, names of columns end in theirs: 'area [um^2]'.\n"
          "`properties`: which columns, by default all; a name also stands for all columns that begin with it and "
          "'_':\n"
          "'centroid'. Moments, hull and circles take most of the time, if they are wanted.\n"
          "`connectivity`: 8 or 4, with which neighbours pixels are one region.\n"
          "`progress`: called with the fraction done; stops by False or an exception.\n\n"
          "Columns:\n"
          "label: of the image or dictionary, else counted from 1\n"
          "nb_pixels; nb_parts, nb_holes: exterior and interior rings; euler_number: parts less holes\n"
          "area, hole_area, equivalent_diameter (of the disk of the same area)\n"
          "centroid_x, _y; bbox_x_min, _y_min, _x_max, _y_max; extent: area / area of the box\n"
          "perimeter: the best guess for any shape; polygon_perimeter along the edges of the pixels; "
          "crofton_perimeter;\n"
          "minimum_length_perimeter; circularity: 4 pi area / perimeter^2\n"
          "central_moment_20 to _03; hu_moment_1 to _7; equivalent_ellipse_major_radius, _minor_radius; orientation;\n"
          "eccentricity\n"
          "convex_area, convex_perimeter; solidity: area / convex_area; convexity: convex_perimeter / perimeter\n"
          "greatest_feret_length, _angle, _from_x, _from_y, _to_x, _to_y; least_feret_... alike; feret_across_length,\n"
          "_angle; smallest_rectangle_center_x, _center_y, _half_length, _half_width, _orientation; roundness\n"
          "enclosing_circle_x, _y, _radius; inscribed_circle_x, _y, _radius\n\n"
          "An error for a region without area, which names it.\n\n"
          ">>> table = region_properties(np.array([[1, 1, 0], [0, 0, 2]]), properties=['area', 'centroid'])\n"
          ">>> {name: column.tolist() for name, column in table.items()}\n"
          "{'label': [1, 2], 'area': [2.0, 1.0], 'centroid_x': [1.0, 2.5], 'centroid_y': [0.5, 1.5]}")
      .def("write_region_table", &writeRegionTable, "path"_a, "regions"_a, py::kw_only(), "spacing"_a = one,
           "unit"_a = "px", "connectivity"_a = eight, "progress"_a = py::none(),
           "Write what is measured on regions to a file of comma-separated values (RFC 4180), a line for each region.\n"
           "Names of columns end in their unit; angles are in degrees. Regions are given as to `region_properties`.");
}

}  // namespace ormix::python

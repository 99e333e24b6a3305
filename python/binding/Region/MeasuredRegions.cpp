#include "MeasuredRegions.h"

#include "../Frame/Calls.h"

#include <ORMIXGeometry/Entity/2d/Shape/ConnectedComponents.h>

#include <string>
#include <utility>

namespace ormix::python {
namespace {

using Entity = geom::BaseGeometryEntity2d;

void add(omInt64 label, py::handle value, MeasuredRegions& regions) {
  if (py::isinstance<geom::RowIntersections>(value))
    regions.regions.push_back({label, value.cast<const geom::RowIntersections*>(), nullptr});
  else if (py::isinstance<Entity>(value))
    regions.regions.push_back({label, nullptr, value.cast<const Entity*>()});
  else
    throw py::type_error("regions: item " + std::to_string(regions.regions.size()) + " is no region but " +
                         py::cast<std::string>(py::repr(py::type::handle_of(value))));
  regions.owners.push_back(py::reinterpret_borrow<py::object>(value));
}

// Of a mask its components, numbered from 1, of an image of labels its labels.
void addImage(const py::array& image, geom::ePixelConnectivity connectivity, MeasuredRegions& regions) {
  const bool isMask = image.dtype().kind() == 'b';
  const MaskArray array = maskArrayOf(image, "regions", isMask ? Pixels::Mask : Pixels::Labels);
  const Reading reading;
  if (isMask) {
    const auto pixels = std::visit([](const auto& view) { return toRowIntersections(view); }, array.view);
    for (geom::RowIntersections& part : connectedComponents(pixels, connectivity))
      regions.rows.push_back({static_cast<omInt64>(regions.rows.size()) + 1, std::move(part)});
  } else {
    regions.rows = std::visit([](const auto& view) { return labelledRows(view); }, array.view);
  }
}

bool isRegion(py::handle value) {
  return py::isinstance<geom::RowIntersections>(value) || py::isinstance<Entity>(value);
}

}  // namespace

MeasuredRegions measuredRegionsOf(const py::object& value, geom::ePixelConnectivity connectivity) {
  MeasuredRegions regions;
  if (isRegion(value)) {
    add(1, value, regions);
  } else if (py::isinstance<py::dict>(value)) {
    for (const auto& item : value.cast<py::dict>()) add(labelOf(item.first), item.second, regions);
  } else if (!py::isinstance<py::array>(value) && py::isinstance<py::sequence>(value) &&
             !py::isinstance<py::str>(value) && (py::len(value) == 0 || isRegion(value[py::int_(0)]))) {
    omInt64 label = 0;
    for (const py::handle item : value) add(++label, item, regions);
  } else {
    const py::array image = py::array::ensure(value);
    if (!image) {
      PyErr_Clear();
      throw py::type_error("regions: an image or regions were wanted");
    }
    addImage(image, connectivity, regions);
    for (const geom::LabelledRows& row : regions.rows) regions.regions.push_back({row.label, &row.rows, nullptr});
  }
  return regions;
}

}  // namespace ormix::python

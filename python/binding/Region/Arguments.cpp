#include "Arguments.h"

#include "../Frame/Arrays.h"
#include "../Frame/Calls.h"

#include <ORMIXGeometry/Entity/2d/Shape/Shape2d.h>
#include <ORMIXGeometry/Entity/3d/Shape/Shape3d.h>

#include <array>
#include <string>

namespace ormix::python {
namespace {

// The set of an object of one of the two classes, null of other objects.
template <class Runs, class Shape>
const Runs* runsOf(py::handle source) {
  if (py::isinstance<Runs>(source)) return source.cast<const Runs*>();
  if (py::isinstance<Shape>(source)) return &source.cast<const Shape&>().getRowIntersections();
  return nullptr;
}

template <class T>
bool loadBox(py::handle source, BoxArgument& argument) {
  using Box = geom::BoundingBox2d<T>;
  if (!py::isinstance<Box>(source)) return false;
  const Box& box = source.cast<const Box&>();
  const auto real = [](T coordinate) { return static_cast<omReal64>(coordinate); };
  argument.box.setCoords(real(box.getXMin()), real(box.getYMin()), real(box.getXMax()), real(box.getYMax()));
  return true;
}

}  // namespace

bool load(py::handle source, bool convert, PixelsArgument& pixels) {
  if (const auto* runs = runsOf<geom::RowIntersections, geom::Shape2d>(source)) {
    pixels = {runs, source};
    return true;
  }
  if (!convert || !(py::isinstance<py::array>(source) || py::isinstance<py::list>(source))) return false;
  const MaskArray mask = maskArrayOf(source, "mask");
  geom::RowIntersections made = [&mask] {
    const Reading reading;
    return std::visit([](const auto& view) { return toRowIntersections(view); }, mask.view);
  }();
  pixels = std::move(made);
  return true;
}

bool load(py::handle source, bool convert, VoxelsArgument& voxels) {
  if (const auto* runs = runsOf<geom::RowIntersections3d, geom::Shape3d>(source)) {
    voxels = {runs, source};
    return true;
  }
  if (!convert || !(py::isinstance<py::array>(source) || py::isinstance<py::list>(source))) return false;
  const py::array array = py::array::ensure(source);
  if (!array || array.ndim() != 3) {
    PyErr_Clear();
    return false;
  }
  const VolumeArray volume = volumeArrayOf(array, "volume");
  geom::RowIntersections3d made = [&volume] {
    const Reading reading;
    return std::visit([](const auto& view) { return toRowIntersections3d(view); }, volume.view);
  }();
  voxels = std::move(made);
  return true;
}

bool load(py::handle source, BoxArgument& box) {
  if (loadBox<omReal64>(source, box) || loadBox<omReal32>(source, box) || loadBox<omInt32>(source, box) ||
      loadBox<omUInt32>(source, box))
    return true;
  std::array<omReal64, 4> bounds;
  if (!detail::loadNumbers(source, 4, bounds.data())) return false;
  box.box.setCoords(bounds[0], bounds[1], bounds[2], bounds[3]);
  return true;
}

omInt64 labelOf(py::handle label) {
  const py::object number = py::reinterpret_steal<py::object>(PyNumber_Index(label.ptr()));
  if (!number) throw py::error_already_set();
  const omInt64 value = PyLong_AsLongLong(number.ptr());
  if (value == -1 && PyErr_Occurred() != nullptr) throw py::error_already_set();
  return value;
}

void checkNbRows(omReal64 nbRows) {
  constexpr omReal64 most = 0x1p28;
  if (nbRows > most)
    throw py::value_error("a set of " + py::cast<std::string>(py::str(py::float_(nbRows))) +
                          " rows of pixels is too large: at most 268435456 rows are made");
}

}  // namespace ormix::python

bool pybind11::detail::type_caster<ormix::geom::PixelSpacing>::load(handle source, bool) {
  std::array<double, 2> xy;
  if (!ormix::python::detail::loadNumbers(source, 2, xy.data())) {
    xy[0] = xy[1] = PyFloat_AsDouble(source.ptr());
    if (xy[0] == -1 && PyErr_Occurred() != nullptr) {
      PyErr_Clear();
      return false;
    }
  }
  value.x = xy[0];
  value.y = xy[1];
  return true;
}

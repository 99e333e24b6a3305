#pragma once

#include "../Frame/Images.h"

#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/PixelConnectivity.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>
#include <ORMIXGeometry/Entity/3d/Shape/RowIntersections3d.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelConnectivity.h>
#include <ORMIXGeometry/Region/PixelSpacing.h>

#include <string>
#include <utility>

/// \file
/// What the functions on regions take: sets of pixels in any form, connectivities by their numbers, spacings.

namespace ormix::python {

/// Pixels or voxels as an argument: a set of runs, a shape, whose set is taken, or a mask. What is a mask becomes runs;
/// nothing else is copied. It holds an object of Python: copy, move and release it with the interpreter lock only.
template <class Runs>
class RunsArgument {
 public:
  RunsArgument() = default;
  RunsArgument(Runs made) : _made(std::move(made)) {}
  /// Those of another object, or a part of it, which is kept alive.
  RunsArgument(const Runs* runs, py::handle owner) : _runs(runs), _owner(py::reinterpret_borrow<py::object>(owner)) {}

  const Runs& get() const { return _runs == nullptr ? _made : *_runs; }

 private:
  Runs _made;
  const Runs* _runs = nullptr;
  py::object _owner;
};
using PixelsArgument = RunsArgument<geom::RowIntersections>;
using VoxelsArgument = RunsArgument<geom::RowIntersections3d>;

/// The argument from Python. False for what is neither a set, a shape nor an array.
/// \param convert whether arrays are taken
/// \throw as maskArrayOf() and volumeArrayOf() for arrays that are no masks. Voxels take arrays of three dimensions only
/// and answer false for others, so that a function may have them as an overload before pixels
/// @{
bool load(py::handle source, bool convert, PixelsArgument& pixels);
bool load(py::handle source, bool convert, VoxelsArgument& voxels);
/// @}

/// A connectivity as an argument: an enumerator, its name, or the number of neighbours.
template <class Enumeration, int Fewer, int More>
struct ConnectivityArgument {
  Enumeration value{};
  operator Enumeration() const { return value; }
};
using PixelConnectivity = ConnectivityArgument<geom::ePixelConnectivity, 4, 8>;
using VoxelConnectivity = ConnectivityArgument<geom::eVoxelConnectivity, 6, 26>;

/// The box of an entity of any type of coordinates, or of four numbers (x_min, y_min, x_max, y_max).
struct BoxArgument {
  geom::BoundingBox2d<omReal64> box;
};
bool load(py::handle source, BoxArgument& box);

/// The number of a label from Python.
/// \throw py::type_error for what is no integer, OverflowError beyond 64 bits
omInt64 labelOf(py::handle label);

/// The most rows of a set of pixels that functions make, those without pixels included: each takes 8 bytes.
/// \throw py::value_error beyond that
/// \param nbRows may be rounded
void checkNbRows(omReal64 nbRows);

}  // namespace ormix::python

namespace pybind11::detail {

template <>
struct type_caster<ormix::python::PixelsArgument> {
  PYBIND11_TYPE_CASTER(ormix::python::PixelsArgument, const_name("PixelsLike"));
  bool load(handle source, bool convert) { return ormix::python::load(source, convert, value); }
};

template <>
struct type_caster<ormix::python::VoxelsArgument> {
  PYBIND11_TYPE_CASTER(ormix::python::VoxelsArgument, const_name("VoxelsLike"));
  bool load(handle source, bool convert) { return ormix::python::load(source, convert, value); }
};

template <>
struct type_caster<ormix::python::BoxArgument> {
  PYBIND11_TYPE_CASTER(ormix::python::BoxArgument, const_name("BoundingBox2dLike"));
  bool load(handle source, bool) { return ormix::python::load(source, value); }
};

template <class Enumeration, int Fewer, int More>
struct type_caster<ormix::python::ConnectivityArgument<Enumeration, Fewer, More>> {
  using Argument = ormix::python::ConnectivityArgument<Enumeration, Fewer, More>;
  PYBIND11_TYPE_CASTER(Argument, make_caster<Enumeration>::name);

  bool load(handle source, bool convert) {
    if (PyIndex_Check(source.ptr()) && !PyBool_Check(source.ptr()) && !isinstance<Enumeration>(source)) {
      const Py_ssize_t number = PyNumber_AsSsize_t(source.ptr(), nullptr);
      if (number != Fewer && number != More)
        throw value_error("connectivity: " + std::to_string(Fewer) + " or " + std::to_string(More) +
                          " neighbours were wanted, not " + pybind11::cast<std::string>(str(source)));
      value.value = static_cast<Enumeration>(number == Fewer ? 0 : 1);
      return true;
    }
    make_caster<Enumeration> caster;
    if (!caster.load(source, convert)) return false;
    value.value = cast_op<Enumeration>(caster);
    return true;
  }
  static handle cast(const Argument& argument, return_value_policy policy, handle parent) {
    return make_caster<Enumeration>::cast(argument.value, policy, parent);
  }
};

/// A number, the same for both directions, or a pair (x, y).
template <>
struct type_caster<ormix::geom::PixelSpacing> {
  PYBIND11_TYPE_CASTER(ormix::geom::PixelSpacing, const_name("Union[float, Tuple[float, float]]"));

  bool load(handle source, bool convert);
  static handle cast(const ormix::geom::PixelSpacing& spacing, return_value_policy, handle) {
    return make_tuple(spacing.x, spacing.y).release();
  }
};

}  // namespace pybind11::detail

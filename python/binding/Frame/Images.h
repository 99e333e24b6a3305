#pragma once

#include "Binding.h"

#include <ORMIXGeometry/Entity/2d/Shape/MaskView.h>
#include <ORMIXGeometry/Entity/3d/Shape/VolumeView.h>

#include <variant>

/// \file
/// Images and volumes of one channel: arrays of bool or integers, indexed [y, x] and [z, y, x].

namespace ormix::python {

/// An array as a view, which is valid as long as this lives. Call the library by `std::visit`, within `Reading`.
/// @{
struct MaskArray {
  py::array pixels;
  std::variant<geom::MaskView<const omUInt8>, geom::MaskView<const omUInt16>, geom::MaskView<const omUInt32>,
               geom::MaskView<const omInt32>>
      view;
};
struct VolumeArray {
  py::array voxels;
  std::variant<geom::VolumeView<const omUInt8>, geom::VolumeView<const omUInt16>, geom::VolumeView<const omUInt32>,
               geom::VolumeView<const omInt32>>
      view;
};
/// @}

/// What an image says: whether a pixel is inside, or the number of its region, which must not change.
enum class Pixels { Mask, Labels };

/// The array as a view, without a copy where its type and strides are the library's: bool, uint8, uint16, uint32,
/// int32; images with contiguous pixels in each row, volumes with any strides.
/// \param name names the argument in errors
/// \throw py::type_error for other things than bools or integers, py::value_error for another number of dimensions and
/// for labels that are neither of 32 bits with a sign nor without one
/// @{
MaskArray maskArrayOf(const py::handle& values, const char* name, Pixels pixels = Pixels::Mask);
VolumeArray volumeArrayOf(const py::handle& values, const char* name, Pixels pixels = Pixels::Mask);
/// @}

}  // namespace ormix::python

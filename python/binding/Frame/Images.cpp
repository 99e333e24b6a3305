#include "Images.h"

#include "RepeatedArrays.h"

#include <string>

namespace ormix::python {
namespace {

py::array arrayOf(const py::object& values) { return py::array::ensure(values); }

bool isAligned(const py::array& array) {
  return (array.flags() & py::detail::npy_api::NPY_ARRAY_ALIGNED_) != 0 && array.dtype().attr("isnative").cast<bool>();
}

// Labels of a type that the library does not read, in one that it reads.
py::array exactLabels(const py::array& labels, const char* name) {
  if (labels.size() == 0) return arrayOf(labels.attr("astype")(py::dtype::of<omInt32>()));
  const auto least = labels.attr("min")().cast<omReal64>();
  const auto greatest = labels.attr("max")().cast<omReal64>();
  const bool isUnsigned = least >= 0 && greatest < 0x1p32;
  if (!isUnsigned && !(least >= -0x1p31 && greatest < 0x1p31))
    throw py::value_error(std::string(name) + ": labels from " + py::cast<std::string>(py::str(labels.attr("min")())) +
                          " to " + py::cast<std::string>(py::str(labels.attr("max")())) + " do not fit into 32 bits");
  return arrayOf(labels.attr("astype")(isUnsigned ? py::dtype::of<omUInt32>() : py::dtype::of<omInt32>(), "C"));
}

// An aligned array of one of the types of the views. What is bool becomes omUInt8 of the same bytes.
py::array pixelsOf(const py::handle& values, py::ssize_t nbDimensions, const char* name, Pixels pixels) {
  py::array array = py::array::ensure(values);
  if (!array) {
    PyErr_Clear();
    throw py::type_error(std::string(name) + ": an array of bool or integers was wanted");
  }
  const char kind = array.dtype().kind();
  if (kind != 'b' && kind != 'i' && kind != 'u')
    throw py::type_error(std::string(name) + ": an array of bool or integers was wanted, not of " +
                         py::cast<std::string>(py::str(array.dtype())) + "; compare it first: image > threshold");
  if (array.ndim() != nbDimensions)
    throw py::value_error(std::string(name) + ": an array of " + std::to_string(nbDimensions) +
                          " dimensions was wanted, not of shape " +
                          py::cast<std::string>(py::repr(array.attr("shape"))));
  requireEnd(array, name);
  const py::ssize_t size = array.itemsize();
  const bool isKnown = isAligned(array) && (kind == 'b' || (kind == 'u' && size <= 4) || (kind == 'i' && size == 4));
  if (!isKnown) array = pixels == Pixels::Labels ? exactLabels(array, name) : arrayOf(array.attr("__ne__")(0));
  if (array.dtype().kind() == 'b') array = arrayOf(array.attr("view")(py::dtype::of<omUInt8>()));
  return array;
}

template <class T>
geom::MaskView<const T> maskView(const py::array& pixels) {
  return {static_cast<const T*>(pixels.data()), static_cast<std::size_t>(pixels.shape(1)),
          static_cast<std::size_t>(pixels.shape(0)), static_cast<std::size_t>(pixels.strides(0)) / sizeof(T)};
}

template <class T>
geom::VolumeView<const T> volumeView(const py::array& voxels) {
  const auto stride = [&](int axis) { return voxels.strides(axis) / static_cast<py::ssize_t>(sizeof(T)); };
  return {static_cast<const T*>(voxels.data()),
          static_cast<std::size_t>(voxels.shape(2)),
          static_cast<std::size_t>(voxels.shape(1)),
          static_cast<std::size_t>(voxels.shape(0)),
          stride(1),
          stride(0),
          stride(2)};
}

// Whether each step along an axis is a whole number of elements; it need not be in a field of a structured array.
bool hasWholeStrides(const py::array& array) {
  for (int axis = 0; axis < array.ndim(); ++axis)
    if (array.strides(axis) % array.itemsize() != 0) return false;
  return true;
}

bool hasContiguousRows(const py::array& pixels) {
  const py::ssize_t width = pixels.shape(1) * pixels.itemsize();
  return hasWholeStrides(pixels) && pixels.strides(1) == pixels.itemsize() && pixels.strides(0) >= width;
}

py::array contiguous(const py::array& array) { return arrayOf(array.attr("copy")("C")); }

bool isSigned(const py::array& array) { return array.dtype().kind() == 'i'; }

}  // namespace

MaskArray maskArrayOf(const py::handle& values, const char* name, Pixels pixels) {
  py::array array = pixelsOf(values, 2, name, pixels);
  if (array.size() > 0 && !hasContiguousRows(array)) array = contiguous(array);
  if (isSigned(array)) return {array, maskView<omInt32>(array)};
  if (array.itemsize() == 1) return {array, maskView<omUInt8>(array)};
  if (array.itemsize() == 2) return {array, maskView<omUInt16>(array)};
  return {array, maskView<omUInt32>(array)};
}

VolumeArray volumeArrayOf(const py::handle& values, const char* name, Pixels pixels) {
  py::array array = pixelsOf(values, 3, name, pixels);
  if (!hasWholeStrides(array)) array = contiguous(array);
  if (isSigned(array)) return {array, volumeView<omInt32>(array)};
  if (array.itemsize() == 1) return {array, volumeView<omUInt8>(array)};
  if (array.itemsize() == 2) return {array, volumeView<omUInt16>(array)};
  return {array, volumeView<omUInt32>(array)};
}

}  // namespace ormix::python

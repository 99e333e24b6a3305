#include "Arrays.h"

#include "RepeatedArrays.h"

#include <cmath>
#include <limits>

namespace ormix::python {
namespace {

// Whether an integer type holds the value exactly. Limits of 32 bits or less are exact as omReal64; beyond 2^53 several
// integers have one.
template <class T>
bool holds(omReal64 value) {
  if constexpr (sizeof(T) == 8) return std::abs(value) < 0x1p53 && value == std::trunc(value);
  return value >= static_cast<omReal64>(std::numeric_limits<T>::min()) &&
         value <= static_cast<omReal64>(std::numeric_limits<T>::max()) && value == std::trunc(value);
}

std::string dtypeName(const py::array& array) { return py::str(array.dtype()); }

py::array arrayOf(const py::handle& values, const char* name) {
  py::array array = py::array::ensure(values);
  if (!array) {
    PyErr_Clear();
    throw py::type_error(std::string(name) + ": an array of numbers was wanted");
  }
  const char kind = array.dtype().kind();
  // A list without elements is of reals for numpy.
  if (kind != 'f' && kind != 'i' && kind != 'u' && kind != 'b')
    throw py::type_error(std::string(name) + ": an array of numbers was wanted, not of " + dtypeName(array));
  requireEnd(array, name);
  return array;
}

// The numbers one after the other, without a copy where they are so. What numpy raises for want of memory is raised.
template <class T>
py::array contiguous(const py::array& array) {
  return py::array_t<T, py::array::c_style | py::array::forcecast | py::detail::npy_api::NPY_ARRAY_ALIGNED_>(array);
}

template <class T>
py::array_t<T, py::array::c_style> exactIntegers(const py::array& array, const char* name) {
  const py::array reals = contiguous<omReal64>(array);
  const std::vector<py::ssize_t> shape(reals.shape(), reals.shape() + reals.ndim());
  py::array_t<T, py::array::c_style> integers(shape);
  const auto* const from = static_cast<const omReal64*>(reals.data());
  T* const to = integers.mutable_data();
  for (py::ssize_t i = 0; i < reals.size(); ++i) {
    if (!holds<T>(from[i]))
      throw py::value_error(std::string(name) + ": element " + std::to_string(i) + " is " +
                            py::cast<std::string>(py::str(py::float_(from[i]))) + ", which is no value of " +
                            dtypeName(integers) + "; round or cast the array first");
    to[i] = static_cast<T>(from[i]);
  }
  return integers;
}

}  // namespace

template <class T>
py::array_t<T, py::array::c_style> numbersOf(const py::handle& values, const char* name) {
  const py::array array = arrayOf(values, name);
  if constexpr (std::is_integral_v<T>) {
    if (!py::isinstance<py::array_t<T>>(array)) return exactIntegers<T>(array, name);
  }
  return py::reinterpret_steal<py::array_t<T, py::array::c_style>>(contiguous<T>(array).release());
}

template <class T>
py::array_t<T, py::array::c_style> matrixOf(const py::handle& values, py::ssize_t columns, const char* name) {
  auto matrix = numbersOf<T>(values, name);
  if (matrix.size() == 0) return py::array_t<T, py::array::c_style>(std::vector<py::ssize_t>{0, columns});
  if (matrix.ndim() != 2 || matrix.shape(1) != columns)
    throw py::value_error(std::string(name) + ": an array of shape (n, " + std::to_string(columns) +
                          ") was wanted, not " + py::cast<std::string>(py::repr(matrix.attr("shape"))));
  return matrix;
}

namespace detail {

template <class T>
bool loadNumbers(py::handle source, py::ssize_t count, T* values) {
  if (!source || PyUnicode_Check(source.ptr()) || PyBytes_Check(source.ptr())) return false;
  const py::object items = py::reinterpret_steal<py::object>(PySequence_Fast(source.ptr(), ""));
  if (!items || PySequence_Fast_GET_SIZE(items.ptr()) != count) {
    PyErr_Clear();
    return false;
  }
  for (py::ssize_t i = 0; i < count; ++i) {
    const omReal64 number = PyFloat_AsDouble(PySequence_Fast_GET_ITEM(items.ptr(), i));
    if (number == -1 && PyErr_Occurred() != nullptr) {
      PyErr_Clear();
      return false;
    }
    if constexpr (std::is_integral_v<T>) {
      if (!holds<T>(number)) return false;
    }
    values[i] = static_cast<T>(number);
  }
  return true;
}

template bool loadNumbers(py::handle, py::ssize_t, omInt32*);
template bool loadNumbers(py::handle, py::ssize_t, omUInt32*);
template bool loadNumbers(py::handle, py::ssize_t, omReal32*);
template bool loadNumbers(py::handle, py::ssize_t, omReal64*);

}  // namespace detail

template py::array_t<omUInt8, py::array::c_style> numbersOf(const py::handle&, const char*);
template py::array_t<omInt32, py::array::c_style> numbersOf(const py::handle&, const char*);
template py::array_t<omUInt32, py::array::c_style> numbersOf(const py::handle&, const char*);
template py::array_t<omInt64, py::array::c_style> numbersOf(const py::handle&, const char*);
template py::array_t<omReal32, py::array::c_style> numbersOf(const py::handle&, const char*);
template py::array_t<omReal64, py::array::c_style> numbersOf(const py::handle&, const char*);
template py::array_t<omInt32, py::array::c_style> matrixOf(const py::handle&, py::ssize_t, const char*);
template py::array_t<omUInt32, py::array::c_style> matrixOf(const py::handle&, py::ssize_t, const char*);
template py::array_t<omInt64, py::array::c_style> matrixOf(const py::handle&, py::ssize_t, const char*);
template py::array_t<omReal32, py::array::c_style> matrixOf(const py::handle&, py::ssize_t, const char*);
template py::array_t<omReal64, py::array::c_style> matrixOf(const py::handle&, py::ssize_t, const char*);

}  // namespace ormix::python

#pragma once

#include "Binding.h"

#include <string>

namespace ormix::python {

/// The position of an element; a negative index counts from the end.
/// \param what names the elements in errors: "hole"
/// \throw py::index_error (IndexError)
inline std::size_t positionOf(py::ssize_t index, std::size_t size, const char* what) {
  const auto count = static_cast<py::ssize_t>(size);
  if (index < -count || index >= count)
    throw py::index_error("there is no " + std::string(what) + ' ' + std::to_string(index) + ", there are " +
                          std::to_string(size));
  return static_cast<std::size_t>(index < 0 ? index + count : index);
}

}  // namespace ormix::python

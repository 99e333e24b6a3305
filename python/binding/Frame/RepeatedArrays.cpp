#include "RepeatedArrays.h"

#include <ORMIXUtil/ScalarTypes.h>

#include <cmath>
#include <string>

namespace ormix::python {

void requireEnd(const py::array& array, const char* name) {
  constexpr omReal64 mostRepeated = 0x1p28;
  auto nbElements = omReal64{1};
  auto nbBytes = static_cast<omReal64>(array.itemsize());
  for (int axis = 0; axis < array.ndim(); ++axis) {
    nbElements *= static_cast<omReal64>(array.shape(axis));
    nbBytes += static_cast<omReal64>(array.shape(axis) - 1) * std::abs(static_cast<omReal64>(array.strides(axis)));
  }
  if (nbElements > mostRepeated && nbElements * static_cast<omReal64>(array.itemsize()) > nbBytes)
    throw py::value_error(std::string(name) + ": an array of shape " +
                          py::cast<std::string>(py::repr(array.attr("shape"))) +
                          " is too large where its strides repeat elements");
}

}  // namespace ormix::python

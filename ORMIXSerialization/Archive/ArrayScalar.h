#pragma once

#include <ORMIXSerialization/Archive/NumericArray.h>

#include <cstddef>

namespace ormix {

/// The size of an element, in bytes.
constexpr std::size_t scalarSize(eArrayScalar scalar) {
  return scalar == eArrayScalar::Int32 || scalar == eArrayScalar::UInt32 || scalar == eArrayScalar::Real32 ? 4 : 8;
}

/// Calls `function` with a zero of the element type, for the sake of its type, and returns the result.
template <class F>
auto withScalar(eArrayScalar scalar, F&& function) {
  switch (scalar) {
    case eArrayScalar::Int32:
      return function(omInt32());
    case eArrayScalar::UInt32:
      return function(omUInt32());
    case eArrayScalar::Int64:
      return function(omInt64());
    case eArrayScalar::UInt64:
      return function(omUInt64());
    case eArrayScalar::Real32:
      return function(omReal32());
    case eArrayScalar::Real64:
      break;
  }
  return function(omReal64());
}

}  // namespace ormix

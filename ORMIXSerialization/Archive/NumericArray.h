#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>

namespace ormix {

/// Element type of a numeric array in an archive.
enum class eArrayScalar { Int32, UInt32, Int64, UInt64, Real32, Real64 };

template <class T>
constexpr eArrayScalar arrayScalar() = delete;
// clang-format off
template <> constexpr eArrayScalar arrayScalar<omInt32>() { return eArrayScalar::Int32; }
template <> constexpr eArrayScalar arrayScalar<omUInt32>() { return eArrayScalar::UInt32; }
template <> constexpr eArrayScalar arrayScalar<omInt64>() { return eArrayScalar::Int64; }
template <> constexpr eArrayScalar arrayScalar<omUInt64>() { return eArrayScalar::UInt64; }
template <> constexpr eArrayScalar arrayScalar<omReal32>() { return eArrayScalar::Real32; }
template <> constexpr eArrayScalar arrayScalar<omReal64>() { return eArrayScalar::Real64; }
// clang-format on

/// A run of numbers to be written: `nbRows` rows of `nbColumns` numbers, contiguous. `nbColumns` 0 means a plain vector
/// of `nbRows` numbers, written without a second dimension.
struct NumericArrayView {
  eArrayScalar scalar;
  const void* data;
  std::size_t nbRows;
  std::size_t nbColumns;
};

/// Where an archive puts the numbers it reads, in blocks, so that neither side needs the whole twice.
class NumericArraySink {
 public:
  eArrayScalar scalar;
  std::size_t nbColumns;  ///< as in `NumericArrayView`; an array of another width is refused

  /// Told once before the first block, with a number of rows whose data are known to be there.
  virtual void reserve(std::size_t nbRows) = 0;
  /// `rows` points at `nbRows` rows of numbers of type `scalar`, suitably aligned for it.
  virtual void append(const void* rows, std::size_t nbRows) = 0;

 protected:
  NumericArraySink(eArrayScalar scalarType, std::size_t columns) : scalar(scalarType), nbColumns(columns) {}
  ~NumericArraySink() = default;
};

}  // namespace ormix

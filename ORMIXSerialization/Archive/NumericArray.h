#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>

namespace ormix {

/// Element type of a numeric array in an archive.
enum class eArrayScalar {
  Int32,   ///< `omInt32`
  UInt32,  ///< `omUInt32`
  Int64,   ///< `omInt64`
  UInt64,  ///< `omUInt64`
  Real32,  ///< `omReal32`
  Real64   ///< `omReal64`
};

/// The enumerator for an element type; does not compile for other types.
/// @{
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
/// @}

/// Numbers to be written, contiguous in memory; the caller owns them.
struct NumericArrayView {
  eArrayScalar scalar;    ///< type of the numbers
  const void* data;       ///< the first number; the rows follow each other
  std::size_t nbRows;     ///< number of rows; of numbers if `nbColumns` is 0
  std::size_t nbColumns;  ///< numbers in each row; 0 for an array of one dimension
};

/// Receives the numbers of an array that is read, in blocks, so that they are in memory only once.
class NumericArraySink {
 public:
  eArrayScalar scalar;    ///< type in which the numbers are passed; numbers of other types are converted
  std::size_t nbColumns;  ///< as in `NumericArrayView`; reading an array with other rows fails

  /// Called once before the first block, with a number of rows that the archive certainly contains (it may have more).
  virtual void reserve(std::size_t nbRows) = 0;
  /// Appends `nbRows` rows of numbers of type `scalar`, at `rows` and aligned for that type.
  virtual void append(const void* rows, std::size_t nbRows) = 0;
  /// Appends `nbRows` rows, whose numbers the caller stores in the memory that is returned, before any other call. By
  /// default null: there is no such memory, and `append` is to be called.
  virtual void* extend(std::size_t nbRows) {
    static_cast<void>(nbRows);
    return nullptr;
  }

 protected:
  /// A sink for numbers of type `scalarType` in rows of `columns`.
  NumericArraySink(eArrayScalar scalarType, std::size_t columns) : scalar(scalarType), nbColumns(columns) {}
  ~NumericArraySink() = default;
};

}  // namespace ormix

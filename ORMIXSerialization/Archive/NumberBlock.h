#pragma once

#include <ORMIXSerialization/Archive/ByteOutput.h>
#include <ORMIXSerialization/Archive/NumericArray.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <type_traits>

namespace ormix {

/// Collects numbers of type T and passes them to a sink in blocks of whole rows, of at most 64 KiB or one row.
template <class T>
class NumberBlock {
 public:
  /// \param sink     must outlive this object
  /// \param expected the number of numbers, if known; the block of a small array is smaller
  explicit NumberBlock(NumericArraySink& sink, omUInt64 expected = std::numeric_limits<omUInt64>::max())
      : _sink(sink), _width(std::max<std::size_t>(sink.nbColumns, 1)) {
    const std::size_t rows = std::max<std::size_t>(s_archiveBlockSize / sizeof(T) / _width, 1);
    const omUInt64 rowsExpected = std::max<omUInt64>(expected / _width, 1);
    _capacity = _width * static_cast<std::size_t>(std::min<omUInt64>(rows, rowsExpected));
    _numbers.reset(new T[_capacity]);
  }

  /// Appends a number; a full block is passed to the sink.
  void push(T number) {
    _numbers[_size++] = number;
    if (_size == _capacity) flush();
  }
  /// Passes the remaining numbers to the sink.
  void flush() {
    if (_size != 0) _sink.append(_numbers.get(), _size / _width);
    _size = 0;
  }

 private:
  NumericArraySink& _sink;
  std::size_t _width;
  std::size_t _capacity;
  std::size_t _size = 0;
  std::unique_ptr<T[]> _numbers;
};

/// Converts an integer to T: exactly for an integer T, to the nearest value for a real one.
/// \return false when the integer is outside the range of T
template <class T, class Integer>
bool convertInteger(Integer value, T& result) {
  if constexpr (std::is_integral_v<T>) {
    result = static_cast<T>(value);
    return static_cast<Integer>(result) == value && (result < T(0)) == (value < Integer(0));
  } else {
    result = static_cast<T>(value);
    return true;
  }
}

/// Converts a real number to the nearest value of T; NaN and infinity are kept.
/// \return false when T is an integer or the number is finite and outside the range of T
template <class T>
bool convertReal(omReal64 value, T& result) {
  if constexpr (std::is_same_v<T, omReal32>) {
    // Numbers up to the midpoint between the largest float and the next power of two round to that float; the
    // conversion of larger ones is undefined behaviour.
    constexpr omReal64 limit = 3.4028235677973366e38;
    if (value >= limit && value <= std::numeric_limits<omReal64>::max()) return false;
    if (value <= -limit && value >= std::numeric_limits<omReal64>::lowest()) return false;
    result = static_cast<omReal32>(value);
    return true;
  } else if constexpr (std::is_same_v<T, omReal64>) {
    result = value;
    return true;
  } else {
    return false;
  }
}

}  // namespace ormix

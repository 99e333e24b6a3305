#pragma once

#include <ORMIXSerialization/Archive/NumericArray.h>

#include <type_traits>
#include <vector>

namespace ormix {

/// To be specialized for a type that consists of coordinates only: with `using Scalar`, the type of the coordinates,
/// and `static constexpr std::size_t nbColumns`, their number. A vector of such values is archived as one numeric array
/// with a row for each value.
template <class P>
struct PackedCoordinates;

namespace detail {

/// Whether `PackedCoordinates` is specialized for P; checks that the values can be archived as they are in memory.
template <class P, class = void>
struct HasPackedCoordinates : std::false_type {};
template <class P>
struct HasPackedCoordinates<P, std::void_t<typename PackedCoordinates<P>::Scalar>> : std::true_type {
  using Scalar = typename PackedCoordinates<P>::Scalar;
  static_assert(std::is_trivially_copyable_v<P>, "coordinates are archived as they lie in memory");
  static_assert(sizeof(P) == PackedCoordinates<P>::nbColumns * sizeof(Scalar), "coordinates have no padding");
  static_assert(alignof(P) <= alignof(Scalar), "the archive aligns its blocks for the scalar");
};

/// Appends the blocks of an array that is read to a vector of coordinates or numbers.
template <class P>
class VectorSink final : public NumericArraySink {
 public:
  VectorSink(std::vector<P>& target, eArrayScalar scalarType, std::size_t columns)
      : NumericArraySink(scalarType, columns), _target(target) {}

  void reserve(std::size_t nbRows) override { _target.reserve(nbRows); }
  void append(const void* rows, std::size_t nbRows) override {
    const P* first = static_cast<const P*>(rows);
    _target.insert(_target.end(), first, first + nbRows);
  }
  void* extend(std::size_t nbRows) override {
    _target.resize(_target.size() + nbRows);
    return _target.data() + (_target.size() - nbRows);
  }

 private:
  std::vector<P>& _target;
};

}  // namespace detail

}  // namespace ormix

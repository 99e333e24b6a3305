#pragma once

#include <ORMIXGeometry/Measure/2d/Moments2dO3.h>

#include <array>

namespace ormix {
extern template class VersionedLevel<geom::HuMoments2dO3, BaseSerializationObject>;
extern template class RegisteredObject<geom::HuMoments2dO3, BaseSerializationObject>;
}  // namespace ormix

namespace ormix::geom {

/// The seven moment invariants of Hu (Hu1962): they are the same for a region that is translated, rotated or scaled. A
/// reflection changes the sign of the last one.
///
/// Differences and third moments that are below the rounding errors of their computation, 1e-13 of what the size of
/// the region gives, count as 0: the invariants that vanish for a symmetric region are 0 and not noise.
class ORMIX_GEOMETRY_API HuMoments2dO3 : public RegisteredObject<HuMoments2dO3, BaseSerializationObject> {
 public:
  static constexpr const char* s_className = "ormix::geom::HuMoments2dO3";  ///< registered name
  static constexpr std::size_t s_nbValues = 7;                              ///< number of invariants

  /// All 0.
  HuMoments2dO3() = default;
  /// The values, in the order of Hu.
  explicit HuMoments2dO3(const std::array<omReal64, s_nbValues>& values) : _values(values) {}
  /// The invariants of a region with these moments.
  /// \throw ORMIXGeometryException, logged first, when the mass is 0
  explicit HuMoments2dO3(const Moments2dO3& moments);

  /// The invariant with the index i in 0 … 6, in the order of Hu.
  /// \throw ORMIXGeometryException, logged first, for other indices
  omReal64 getValue(omUInt32 i) const;
  /// All of them.
  const std::array<omReal64, s_nbValues>& getValues() const { return _values; }

  /// Whether all values are equal, without a tolerance.
  /// @{
  friend bool operator==(const HuMoments2dO3& a, const HuMoments2dO3& b) { return a._values == b._values; }
  friend bool operator!=(const HuMoments2dO3& a, const HuMoments2dO3& b) { return !(a == b); }
  /// @}

 private:
  friend FieldAccess;
  template <class S, class F>
  static bool fields(S& self, F&& item) {
    auto& h = self._values;
    return item("_h1", h[0]) && item("_h2", h[1]) && item("_h3", h[2]) && item("_h4", h[3]) && item("_h5", h[4]) &&
           item("_h6", h[5]) && item("_h7", h[6]);
  }
  static BoolResult validate(const HuMoments2dO3& moments);

  std::array<omReal64, s_nbValues> _values{};
};

/// Whether each value differs by at most `tolerance`.
ORMIX_GEOMETRY_API bool compare(const HuMoments2dO3& a, const HuMoments2dO3& b, omReal64 tolerance);

/// Prints the values, "[0.16, 0, 0, 0, 0, 0, 0]".
ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream& stream, const HuMoments2dO3& moments);

}  // namespace ormix::geom

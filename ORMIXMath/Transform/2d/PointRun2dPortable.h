#pragma once

#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXMath/Transform/2d/AffineTransform2d.h>
#include <ORMIXMath/Transform/2d/Homography2d.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace ormix::detail {

/// A number that grows with the magnitude of the value: that of an integer, the bits of a real without the sign, of
/// omReal64 the upper half of them.
template <class T>
omUInt32 magnitudeWord(T value) {
  if constexpr (std::is_same_v<T, omUInt32>) {
    return value;
  } else if constexpr (std::is_same_v<T, omInt32>) {
    const auto bits = static_cast<omUInt32>(value);
    return value < 0 ? 0 - bits : bits;
  } else {
    std::conditional_t<sizeof(T) == 4, omUInt32, omUInt64> bits;
    std::memcpy(&bits, &value, sizeof bits);
    return static_cast<omUInt32>(bits >> (8 * sizeof bits - 32)) & 0x7FFFFFFFu;
  }
}

/// What a version for wider vectors has done: how many points from the front it has mapped, and whether all of their
/// images are finite. Integers are.
struct MappedPoints {
  std::size_t nbPoints;
  bool areFinite;
};

/// The operations on runs of points, one point after the other. Versions for wider vectors do the same to as many
/// points as fill their vectors and leave the others. Images go to other places, or to those of their points.
struct PointRun2dPortable {
  template <class T>
  static void apply(const AffineCoefficients2d& c, const T* xy, T* images, std::size_t nbPoints) {
    for (const T* const end = xy + 2 * nbPoints; xy != end; xy += 2, images += 2) {
      const auto x = static_cast<omReal64>(xy[0]);
      const auto y = static_cast<omReal64>(xy[1]);
      images[0] = round<T, omReal64>(c.xx * x + c.xy * y + c.tx);
      images[1] = round<T, omReal64>(c.yx * x + c.yy * y + c.ty);
    }
  }

  template <class T>
  static void apply(const HomographyCoefficients2d& h, const T* xy, T* images, std::size_t nbPoints) {
    for (const T* const end = xy + 2 * nbPoints; xy != end; xy += 2, images += 2) {
      const auto x = static_cast<omReal64>(xy[0]);
      const auto y = static_cast<omReal64>(xy[1]);
      const omReal64 w = h[6] * x + h[7] * y + h[8];
      // Dividing by zero is meant: the search for undefined images looks for what it gives.
      images[0] = round<T, omReal64>((h[0] * x + h[1] * y + h[2]) / w);
      images[1] = round<T, omReal64>((h[3] * x + h[4] * y + h[5]) / w);
    }
  }

  /// The largest magnitudeWord() of the values.
  template <class T>
  static omUInt32 largestWord(const T* values, std::size_t nbValues) {
    omUInt32 largest = 0;
    for (std::size_t index = 0; index < nbValues; ++index) {
      const omUInt32 word = magnitudeWord(values[index]);
      largest = word > largest ? word : largest;
    }
    return largest;
  }
};

}  // namespace ormix::detail

#pragma once

#include <ORMIXMath/Scalar/Round.h>
#include <ORMIXMath/Transform/3d/AffineTransform3d.h>
#include <ORMIXMath/Transform/3d/Homography3d.h>

#include <cstddef>

namespace ormix::detail {

/// The images of runs of points, one point after the other. Versions for wider vectors do the same to as many points as
/// fill their vectors and leave the others.
struct PointRun3dPortable {
  template <class T>
  static void apply(const AffineCoefficients3d& c, const T* xyz, T* out, std::size_t nbPoints) {
    for (const T* const end = xyz + 3 * nbPoints; xyz != end; xyz += 3, out += 3) {
      const auto x = static_cast<omReal64>(xyz[0]);
      const auto y = static_cast<omReal64>(xyz[1]);
      const auto z = static_cast<omReal64>(xyz[2]);
      out[0] = round<T, omReal64>(c.xx * x + c.xy * y + c.xz * z + c.tx);
      out[1] = round<T, omReal64>(c.yx * x + c.yy * y + c.yz * z + c.ty);
      out[2] = round<T, omReal64>(c.zx * x + c.zy * y + c.zz * z + c.tz);
    }
  }

  template <class T>
  static void apply(const HomographyCoefficients3d& h, const T* xyz, T* out, std::size_t nbPoints) {
    for (const T* const end = xyz + 3 * nbPoints; xyz != end; xyz += 3, out += 3) {
      const auto x = static_cast<omReal64>(xyz[0]);
      const auto y = static_cast<omReal64>(xyz[1]);
      const auto z = static_cast<omReal64>(xyz[2]);
      const omReal64 w = h[12] * x + h[13] * y + h[14] * z + h[15];
      // Dividing by zero is meant: the search for undefined images looks for what it gives.
      out[0] = round<T, omReal64>((h[0] * x + h[1] * y + h[2] * z + h[3]) / w);
      out[1] = round<T, omReal64>((h[4] * x + h[5] * y + h[6] * z + h[7]) / w);
      out[2] = round<T, omReal64>((h[8] * x + h[9] * y + h[10] * z + h[11]) / w);
    }
  }
};

}  // namespace ormix::detail

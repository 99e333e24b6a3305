#include <ORMIXMath/Transform/3d/Affine3d.h>
#include <ORMIXMath/Transform/ParametricTransform.ipp>

namespace ormix {

template class ParametricTransform<Affine3d, BaseGeometricTransform3d, 12>;

Affine3d::Affine3d(const AffineCoefficients3d& c)
    : AffineTransform3d({c.xx, c.xy, c.xz, c.tx, c.yx, c.yy, c.yz, c.ty, c.zx, c.zy, c.zz, c.tz}) {}

AffineCoefficients3d Affine3d::coefficients(const Params& p) {
  return {p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7], p[8], p[9], p[10], p[11]};
}

}  // namespace ormix

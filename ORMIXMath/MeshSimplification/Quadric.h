#pragma once

#include <ORMIXMath/Algebra/VectorArithmetic.h>

/// \file
/// Weighted sums of squared distances from planes; not installed.

namespace ormix::detail {

/// The sum of squared distances from planes, each times its weight (GarlandHeckbert1997), as a function of the
/// displacement d from a point: d · A d + 2 b · d + c. The point is the vertex that the quadric belongs to, and not an
/// origin common to all: planes through the vertex have b = 0 and c = 0 exactly, and what is small is not the
/// difference of large numbers, however large the mesh is beside its triangles.
struct Quadric {
  omReal64 xx = 0, xy = 0, xz = 0, yy = 0, yz = 0, zz = 0;  ///< the symmetric matrix A
  SpatialPoint b{0, 0, 0};
  omReal64 c = 0;

  /// Adds the plane through the point with this normal, whose squared length times `factor` is the weight.
  void addPlane(const SpatialPoint& normal, omReal64 factor) {
    const SpatialPoint scaled = normal * factor;
    xx += scaled.x * normal.x;
    xy += scaled.x * normal.y;
    xz += scaled.x * normal.z;
    yy += scaled.y * normal.y;
    yz += scaled.y * normal.z;
    zz += scaled.z * normal.z;
  }

  /// The sum of the weights, as normals have length 1.
  omReal64 weight() const { return xx + yy + zz; }

  /// Marks it as to be computed again. Only its weight remains what it is.
  void makeStale() { c = -1; }
  bool isStale() const { return c < 0; }

  SpatialPoint times(const SpatialPoint& d) const {
    return {xx * d.x + xy * d.y + xz * d.z, xy * d.x + yy * d.y + yz * d.z, xz * d.x + yz * d.y + zz * d.z};
  }

  /// The value at a displacement, 0 where rounding makes it negative.
  omReal64 at(const SpatialPoint& d) const {
    const omReal64 value = dot(d, times(d) + b * 2) + c;
    return value > 0 ? value : 0;
  }

  /// The same function as one of the displacement from the point that is displaced by `shift`.
  Quadric shifted(const SpatialPoint& shift) const {
    Quadric result = *this;
    const SpatialPoint product = times(shift);
    result.b = b + product;
    result.c = c + dot(shift, product + b * 2);
    return result;
  }

  Quadric& operator+=(const Quadric& other) {
    xx += other.xx;
    xy += other.xy;
    xz += other.xz;
    yy += other.yy;
    yz += other.yz;
    zz += other.zz;
    b = b + other.b;
    c += other.c;
    return *this;
  }
};

/// The inverse of A + s_damping · weight · I, as its factors L D Lᵀ. The second term draws what A leaves undetermined,
/// in planes and along straight creases, to the point about which the quadric is, and makes the matrix definite.
/// Directions in which the surface is curved by more than 10⁻⁴ radians are not affected. The factors are as accurate as
/// the sum is, which a determinant is not.
class QuadricInverse {
 public:
  explicit QuadricInverse(const Quadric& quadric) {
    const omReal64 damping = s_damping * quadric.weight();
    _inverseD0 = 1 / (quadric.xx + damping);
    _l10 = quadric.xy * _inverseD0;
    _l20 = quadric.xz * _inverseD0;
    _inverseD1 = 1 / (quadric.yy + damping - _l10 * quadric.xy);
    const omReal64 rest = quadric.yz - _l20 * quadric.xy;
    _l21 = rest * _inverseD1;
    _inverseD2 = 1 / (quadric.zz + damping - _l20 * quadric.xz - _l21 * rest);
  }

  SpatialPoint operator*(const SpatialPoint& d) const {
    const omReal64 y = d.y - _l10 * d.x;
    const omReal64 z = (d.z - _l20 * d.x - _l21 * y) * _inverseD2;
    const omReal64 solvedY = y * _inverseD1 - _l21 * z;
    return {d.x * _inverseD0 - _l10 * solvedY - _l20 * z, solvedY, z};
  }

 private:
  static constexpr omReal64 s_damping = 1e-9;

  omReal64 _inverseD0, _inverseD1, _inverseD2;
  omReal64 _l10, _l20, _l21;
};

}  // namespace ormix::detail

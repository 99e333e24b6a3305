#include "LinearParts.h"

#include <ORMIXMath/Transform/2d/Similarity2d.h>
#include <ORMIXMath/Transform/3d/Similarity3d.h>

#include <cmath>
#include <limits>

namespace ormix::python {
namespace {

using Angles2d = std::array<omReal64, 1>;
using Angles3d = std::array<omReal64, 3>;

RotationMatrix rotationOf(const Angles3d& angles) { return eulerToMatrix(angles[0], angles[1], angles[2]); }
Angles3d anglesOf(const RotationMatrix& rotation) {
  const EulerAngles angles = matrixToEuler(rotation);
  return {angles.alpha, angles.beta, angles.chi};
}

// Angles of 0 stay 0 to the bit, so that what does not turn is exact.
Angles2d composedAngles(const Angles2d& outer, const Angles2d& inner) { return {outer[0] + inner[0]}; }
Angles3d composedAngles(const Angles3d& outer, const Angles3d& inner) {
  return anglesOf(ormix::composed(rotationOf(outer), rotationOf(inner)));
}

Angles2d invertedAngles(const Angles2d& angles) { return {-angles[0]}; }
Angles3d invertedAngles(const Angles3d& angles) {
  const RotationMatrix rotation = rotationOf(angles);
  RotationMatrix transposed;
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < 3; ++j) transposed[i][j] = rotation[j][i];
  return anglesOf(transposed);
}

// The image of a point under the similarity; NaN where it is not finite.
std::array<omReal64, 2> image(const LinearParts<2>& parts, std::array<omReal64, 2> point) {
  constexpr omReal64 none = std::numeric_limits<omReal64>::quiet_NaN();
  if (!makeFrom<Similarity2d>(parts).apply(point[0], point[1], point[0], point[1])) point.fill(none);
  return point;
}
std::array<omReal64, 3> image(const LinearParts<3>& parts, std::array<omReal64, 3> point) {
  constexpr omReal64 none = std::numeric_limits<omReal64>::quiet_NaN();
  if (!makeFrom<Similarity3d>(parts).apply(point[0], point[1], point[2], point[0], point[1], point[2]))
    point.fill(none);
  return point;
}

template <std::size_t D>
LinearParts<D> composedParts(const LinearParts<D>& outer, const LinearParts<D>& inner) {
  LinearParts<D> parts;
  parts.scale = outer.scale * inner.scale;
  parts.angles = composedAngles(outer.angles, inner.angles);
  parts.shift = image(outer, inner.shift);
  for (std::size_t axis = 0; axis < D; ++axis) parts.factors[axis] = outer.factors[axis] * inner.factors[axis];
  return parts;
}

template <std::size_t D>
LinearParts<D> invertedParts(const LinearParts<D>& given) {
  LinearParts<D> parts;
  parts.scale = 1 / given.scale;
  parts.angles = invertedAngles(given.angles);
  auto shift = given.shift;
  for (omReal64& number : shift) number = -number;
  parts.shift = image(parts, shift);
  for (std::size_t axis = 0; axis < D; ++axis) parts.factors[axis] = 1 / given.factors[axis];
  return parts;
}

}  // namespace

LinearParts<2> composed(const LinearParts<2>& outer, const LinearParts<2>& inner) {
  return composedParts(outer, inner);
}
LinearParts<3> composed(const LinearParts<3>& outer, const LinearParts<3>& inner) {
  return composedParts(outer, inner);
}
LinearParts<2> inverted(const LinearParts<2>& parts) { return invertedParts(parts); }
LinearParts<3> inverted(const LinearParts<3>& parts) { return invertedParts(parts); }

LinearParts<2> partsOfMatrix(const LinearMatrix<2>& m, bool turns) {
  LinearParts<2> parts;
  parts.scale = turns ? std::hypot(m[0], m[3]) : m[0];
  parts.angles = {turns ? std::atan2(m[3], m[0]) : 0};
  parts.shift = {m[2], m[5]};
  parts.factors = {m[0], m[4]};
  return parts;
}

LinearParts<3> partsOfMatrix(const LinearMatrix<3>& m, bool turns) {
  LinearParts<3> parts;
  const omReal64 determinant =
      m[0] * (m[5] * m[10] - m[6] * m[9]) - m[1] * (m[4] * m[10] - m[6] * m[8]) + m[2] * (m[4] * m[9] - m[5] * m[8]);
  // That of a similarity is the cube of its scale, with its sign.
  parts.scale = std::copysign(std::hypot(m[0], m[4], m[8]), determinant);
  if (turns && parts.scale != 0) {
    RotationMatrix rotation;
    for (std::size_t i = 0; i < 3; ++i)
      for (std::size_t j = 0; j < 3; ++j) rotation[i][j] = m[4 * i + j] / parts.scale;
    parts.angles = anglesOf(rotation);
  }
  parts.shift = {m[3], m[7], m[11]};
  parts.factors = {m[0], m[5], m[10]};
  return parts;
}

}  // namespace ormix::python

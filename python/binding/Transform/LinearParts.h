#pragma once

#include <ORMIXMath/Rotation/EulerAngles.h>
#include <ORMIXMath/Transform/2d/BaseGeometricTransform2d.h>
#include <ORMIXMath/Transform/3d/BaseGeometricTransform3d.h>

#include <boost/numeric/ublas/vector.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <type_traits>

/// \file
/// What the linear transforms of the plane and of space consist of: how they are composed, inverted and read from
/// matrices is the same for all that turn, scale or shift.

namespace ormix::python {

/// What a class of transforms can do. Their union is what a composition needs.
enum LinearPower : unsigned { eLP_Turn = 1, eLP_Scale = 2, eLP_Shift = 4, eLP_Stretch = 8, eLP_Project = 16 };

/// The powers of a transform of ORMIXMath, whose kinds have the same numbers in the plane and in space.
template <class Math>
constexpr unsigned powersOf() {
  switch (static_cast<eGeometricTransform2dType>(Math::s_type)) {
    case eGT2DT_Translation:
      return eLP_Shift;
    case eGT2DT_Rotation:
      return eLP_Turn;
    case eGT2DT_Rigid:
      return eLP_Turn | eLP_Shift;
    case eGT2DT_Scale:
      return eLP_Scale;
    case eGT2DT_Similarity:
      return eLP_Turn | eLP_Scale | eLP_Shift;
    case eGT2DT_AnisotropicScale:
      return eLP_Scale | eLP_Stretch;
    case eGT2DT_Affine:
    case eGT2DT_Homography:
      break;
  }
  return eLP_Project;
}

/// The powers of the smallest class that has these.
constexpr unsigned closedPowers(unsigned powers) {
  constexpr unsigned moves = eLP_Turn | eLP_Shift;
  if ((powers & eLP_Project) != 0 || ((powers & eLP_Stretch) != 0 && (powers & moves) != 0)) return eLP_Project;
  if ((powers & eLP_Scale) != 0 && (powers & moves) != 0) return moves | eLP_Scale;
  return powers;
}

/// Of a transform that does not project: it turns, then scales by one factor or by one along each axis, then shifts.
template <std::size_t D>
struct LinearParts {
  omReal64 scale = 1;
  std::array<omReal64, D == 2 ? 1 : 3> angles{};  ///< theta; alpha, beta and chi
  std::array<omReal64, D> shift{};
  std::array<omReal64, D> factors{};  ///< of an anisotropic scale; else each equal to `scale`
};

/// The dimension of a transform of ORMIXMath.
template <class Math>
constexpr std::size_t s_dimensionOfMath = std::is_base_of_v<BaseGeometricTransform2d, Math> ? 2 : 3;

/// The transform by `inner`, then by `outer`, and the one that undoes another. Numbers may come out not finite.
/// @{
LinearParts<2> composed(const LinearParts<2>& outer, const LinearParts<2>& inner);
LinearParts<3> composed(const LinearParts<3>& outer, const LinearParts<3>& inner);
LinearParts<2> inverted(const LinearParts<2>& parts);
LinearParts<3> inverted(const LinearParts<3>& parts);
/// @}

/// A matrix of D + 1 rows for points (x, y, 1) or (x, y, z, 1), row after row.
template <std::size_t D>
using LinearMatrix = std::array<omReal64, (D + 1) * (D + 1)>;

/// The parts of a similarity, and of an anisotropic scale, with this matrix. Whether it is the matrix of one is left to
/// be checked.
/// \param turns whether the transform may turn: a scale by -1 and a half turn are the same in the plane
/// @{
LinearParts<2> partsOfMatrix(const LinearMatrix<2>& matrix, bool turns);
LinearParts<3> partsOfMatrix(const LinearMatrix<3>& matrix, bool turns);
/// @}

namespace detail {

/// Calls `visit` with the parts that are the parameters of a class, in the order of the parameters.
template <class Math, class Parts, class Visit>
void visitParams(Parts& parts, Visit visit) {
  constexpr unsigned powers = powersOf<Math>();
  static_assert(powers != eLP_Project);
  if constexpr ((powers & eLP_Stretch) != 0) {
    std::for_each(parts.factors.begin(), parts.factors.end(), visit);
  } else {
    if constexpr ((powers & eLP_Scale) != 0) visit(parts.scale);
    if constexpr ((powers & eLP_Turn) != 0) std::for_each(parts.angles.begin(), parts.angles.end(), visit);
    if constexpr ((powers & eLP_Shift) != 0) std::for_each(parts.shift.begin(), parts.shift.end(), visit);
  }
}

}  // namespace detail

template <class Math>
LinearParts<s_dimensionOfMath<Math>> partsOf(const Math& math) {
  LinearParts<s_dimensionOfMath<Math>> parts;
  const RealVector params = math.getParams();
  auto next = params.begin();
  detail::visitParams<Math>(parts, [&next](omReal64& number) { number = *next++; });
  if constexpr ((powersOf<Math>() & eLP_Stretch) == 0) parts.factors.fill(parts.scale);
  return parts;
}

/// The transform with these parts; those that its class does not have are left out.
template <class Math>
Math makeFrom(const LinearParts<s_dimensionOfMath<Math>>& parts) {
  RealVector params(Math::s_nbParams);
  auto next = params.begin();
  detail::visitParams<Math>(parts, [&next](omReal64 number) { *next++ = number; });
  Math math;
  math.setParams(params);
  return math;
}

}  // namespace ormix::python

#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXMath/Transform/2d/GeometricTransform2dType.h>
#include <ORMIXUtil/ProcessingResult.h>

namespace ormix {

/// A transform of the plane, given by its parameters. Besides these queries every concrete transform has
/// \code
/// template <class T> bool apply(T x, T y, T& xOut, T& yOut) const;
/// \endcode
/// which computes in omReal64, brings the image to the coordinate type with `round`, and answers false, the outputs
/// untouched, where the image is not defined: a denominator of zero, a result that is not finite.
class ORMIX_MATH_API BaseGeometricTransform2d {
 public:
  using Type = eGeometricTransform2dType;

  virtual ~BaseGeometricTransform2d();

  virtual eGeometricTransform2dType getType() const = 0;
  /// The parameters, in the order of the constructor.
  virtual RealVector getParams() const = 0;
  /// Replaces the parameters. A vector of another length is refused with a message, and nothing changed.
  virtual BoolResult setParams(const RealVector& params) = 0;

 protected:
  BaseGeometricTransform2d() = default;
  BaseGeometricTransform2d(const BaseGeometricTransform2d&) = default;
  BaseGeometricTransform2d& operator=(const BaseGeometricTransform2d&) = default;
};

}  // namespace ormix

#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXMath/Transform/3d/GeometricTransform3dType.h>
#include <ORMIXUtil/ProcessingResult.h>

namespace ormix {

/// A transform of space, given by its parameters. Besides these queries every concrete transform has
/// \code
/// template <class T> bool apply(T x, T y, T z, T& xOut, T& yOut, T& zOut) const;
/// \endcode
/// which computes in omReal64, brings the image to the coordinate type with `round`, and answers false, the outputs
/// untouched, where the image is not defined: a denominator of zero, a result that is not finite.
class ORMIX_MATH_API BaseGeometricTransform3d {
 public:
  using Type = eGeometricTransform3dType;

  virtual ~BaseGeometricTransform3d();

  virtual eGeometricTransform3dType getType() const = 0;
  /// The parameters, in the order of the constructor.
  virtual RealVector getParams() const = 0;
  /// Replaces the parameters. A vector of another length is refused with a message, and nothing changed.
  virtual BoolResult setParams(const RealVector& params) = 0;

 protected:
  BaseGeometricTransform3d() = default;
  BaseGeometricTransform3d(const BaseGeometricTransform3d&) = default;
  BaseGeometricTransform3d& operator=(const BaseGeometricTransform3d&) = default;
};

}  // namespace ormix

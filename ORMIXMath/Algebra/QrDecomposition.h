#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>

namespace ormix {

/// a = q r by Householder's reflections: `q` has the rows of `a` and min(rows, columns) orthonormal columns, `r` is
/// upper triangular (trapezoidal for a wide matrix) with the columns of `a`. The signs are fixed: no diagonal element
/// of `r` is negative. Fails with a message, the outputs untouched: an empty matrix, an entry that is NaN or infinite.
/// O(rows · columns²).
ORMIX_MATH_API BoolResult qrDecomposition(const RealMatrix& a, RealMatrix& q, RealMatrix& r);

/// The inverse of an upper triangular matrix; what stands below the diagonal is not looked at. Fails with a message,
/// the output untouched: empty, not square, an entry that is NaN or infinite, a diagonal element that is zero (named),
/// an inverse that overflows. O(n³).
ORMIX_MATH_API BoolResult upperTriangularInverse(const RealMatrix& a, RealMatrix& inverse);

}  // namespace ormix

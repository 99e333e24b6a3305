#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>

namespace ormix {

/// Decomposes a = q r by Householder reflections. `q` has the rows of `a` and min(rows, columns) orthonormal columns;
/// `r` has the columns of `a` and is upper triangular (trapezoidal for a wide matrix), with no negative diagonal
/// element, which fixes the signs.
///
/// Fails with a message, the outputs untouched, when the matrix is empty, an entry is NaN or infinite, or the length of
/// a column overflows. O(rows · columns²).
ORMIX_MATH_API BoolResult qrDecomposition(const RealMatrix& a, RealMatrix& q, RealMatrix& r);

/// The inverse of an upper triangular matrix. Entries below the diagonal have to be finite and are not used otherwise.
///
/// Fails with a message, the output untouched, when the matrix is empty or not square, an entry is NaN or infinite, a
/// diagonal element is zero (the message says which), or the inverse overflows. O(n³).
ORMIX_MATH_API BoolResult upperTriangularInverse(const RealMatrix& a, RealMatrix& inverse);

}  // namespace ormix

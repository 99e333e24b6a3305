#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <complex>
#include <vector>

/// \file
/// Eigenvalues and eigenvectors. Eigenvectors have length 1, and their component of largest magnitude (the first of
/// equals) is positive, which fixes the sign that the equations leave open.

namespace ormix {

/// Decomposes a symmetric matrix of n rows: `values` are its n eigenvalues, ascending, and column k of `vectors` is the
/// eigenvector of values(k). The vectors are orthogonal.
///
/// Fails with a message, the outputs untouched, when the matrix is empty, not square, or not symmetric to within 16
/// epsilon of its largest entry, or when an entry is NaN or infinite. O(n³).
ORMIX_MATH_API BoolResult eigenDecomposition(const RealMatrix& a, RealVector& values, RealMatrix& vectors);

/// Decomposes the symmetric 3 x 3 matrix (xx xy xz; xy yy yz; xz yz zz), such as a covariance matrix: `values`
/// ascending, the eigenvector of values[k] in vectors[3 k], vectors[3 k + 1], vectors[3 k + 2].
///
/// Exists for T = omReal64. Constant time, no allocation. Fails with a message, the outputs untouched, when an entry is
/// NaN or infinite.
template <class T>
ORMIX_MATH_API BoolResult eigenDecomposition(T xx, T xy, T xz, T yy, T yz, T zz, T (&values)[3], T (&vectors)[9]);

/// The instance in the library.
extern template BoolResult eigenDecomposition(omReal64, omReal64, omReal64, omReal64, omReal64, omReal64,
                                              omReal64 (&)[3], omReal64 (&)[9]);

/// Decomposes any square matrix of n rows: `values` by ascending real part, equal ones by ascending imaginary part, and
/// the eigenvectors, of n elements each, in the same order. The component of largest magnitude of a complex vector is
/// real and positive. A defective matrix (one without n independent eigenvectors) has parallel vectors.
///
/// Fails with a message, the outputs untouched, when the matrix is empty or not square, when an entry is NaN or
/// infinite, or when the iteration does not converge. O(n³).
ORMIX_MATH_API BoolResult generalEigenDecomposition(const RealMatrix& a, std::vector<std::complex<omReal64>>& values,
                                                    std::vector<std::vector<std::complex<omReal64>>>& vectors);

}  // namespace ormix

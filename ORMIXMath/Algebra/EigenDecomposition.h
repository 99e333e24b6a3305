#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <complex>
#include <vector>

/// \file
/// Eigenvalues and eigenvectors. Vectors have length 1; the sign that the equations leave open is fixed by a positive
/// component of largest magnitude (the first of equals).

namespace ormix {

/// Of a symmetric matrix: `values` ascending, the vector of values(k) in column k of `vectors`. Fails with a message,
/// the outputs untouched: empty, not square, an entry that is NaN or infinite, not symmetric (to 16 epsilon of the
/// largest entry). O(n³).
ORMIX_MATH_API BoolResult eigenDecomposition(const RealMatrix& a, RealVector& values, RealMatrix& vectors);

/// Of the symmetric 3 x 3 matrix (xx xy xz; xy yy yz; xz yz zz), such as a covariance: eigenvalues ascending, the
/// vector of values[k] in vectors[3 k], vectors[3 k + 1], vectors[3 k + 2]. Exists for T = omReal64. Nothing is
/// allocated. Fails with a message, the outputs untouched, when an entry is NaN or infinite.
template <class T>
ORMIX_MATH_API BoolResult eigenDecomposition(T xx, T xy, T xz, T yy, T yz, T zz, T (&values)[3], T (&vectors)[9]);

extern template BoolResult eigenDecomposition(omReal64, omReal64, omReal64, omReal64, omReal64, omReal64,
                                              omReal64 (&)[3], omReal64 (&)[9]);

/// Of any square matrix: the values by ascending real, then imaginary part, the vectors in the same order; of complex
/// vectors the component of largest magnitude is real and positive. A defective matrix has parallel vectors. Fails with
/// a message, the outputs untouched: empty, not square, an entry that is NaN or infinite, no convergence. O(n³).
ORMIX_MATH_API BoolResult generalEigenDecomposition(const RealMatrix& a, std::vector<std::complex<omReal64>>& values,
                                                    std::vector<std::vector<std::complex<omReal64>>>& vectors);

}  // namespace ormix

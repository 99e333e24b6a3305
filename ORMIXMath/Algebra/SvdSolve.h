#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>

/// \file
/// Linear least squares by the singular value decomposition.
///
/// Columns are first scaled by powers of two to similar magnitudes, so that the rank does not depend on the units of
/// the unknowns ("scaled unknowns" below). Singular values up to max(rows, columns) · epsilon times the largest one
/// count as zero. Systems with many more rows than columns are first reduced to a triangular one by Householder
/// reflections in blocks of rows; normal equations, which would square the condition number, are not formed.

namespace ormix {

/// The x that minimises |a x - b|; where several do, the one of least length in the scaled unknowns.
///
/// `rank` is the rank of `a`. A rank below the number of columns means that the unknowns are not determined; it is no
/// failure. Fails with a message, the outputs untouched, when the matrix is empty, `b` has another length than `a` has
/// rows, an entry is NaN or infinite, or the solution overflows. O(rows · columns²).
ORMIX_MATH_API BoolResult svdSolve(const RealMatrix& a, const RealVector& b, RealVector& x, std::size_t& rank);

/// The x of length 1 in the scaled unknowns that minimises |a x|, returned with length 1 and its component of largest
/// magnitude (the first of equals) positive. Unique when `rank` is at least the number of columns less one. `rank`,
/// failures and cost as for svdSolve().
ORMIX_MATH_API BoolResult svdNullVector(const RealMatrix& a, RealVector& x, std::size_t& rank);

/// \name Small systems without allocation
/// For a row-major array `a` of 1 to 16 rows and columns (asserted), such as a triangle of TallQr. `x` has nbColumns
/// elements. Return the rank; an entry that is NaN or infinite gives rank 0 and an x of zeros.
/// @{

/// svdSolve() with a right-hand side of nbRows values.
ORMIX_MATH_API std::size_t svdSolveSmall(const omReal64* a, std::size_t nbRows, std::size_t nbColumns,
                                         const omReal64* b, omReal64* x);
/// svdNullVector().
ORMIX_MATH_API std::size_t svdNullVectorSmall(const omReal64* a, std::size_t nbRows, std::size_t nbColumns,
                                              omReal64* x);
/// @}

}  // namespace ormix

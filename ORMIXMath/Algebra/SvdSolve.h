#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXMath/Export.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>

/// \file
/// Linear least squares by the singular value decomposition. Columns are first scaled by powers of two to like lengths,
/// so that the units of the unknowns do not decide the rank; singular values up to max(rows, columns) · epsilon times
/// the largest one count as zero. Tall systems are first reduced to a triangle by Householder's reflections in blocks
/// of rows, never by normal equations.

namespace ormix {

/// The x that minimises |a x - b|; among several the one of least length in the scaled unknowns.
///
/// `rank` is the rank of `a`; below the number of columns the unknowns are not determined, which is no failure. Fails
/// with a message, the outputs untouched: an empty matrix, a right-hand side of another length than `a` has rows, an
/// entry that is NaN or infinite. O(rows · columns²).
ORMIX_MATH_API BoolResult svdSolve(const RealMatrix& a, const RealVector& b, RealVector& x, std::size_t& rank);

/// The x of length 1 in the scaled unknowns that minimises |a x|, returned with length 1 and its component of largest
/// magnitude (the first of equals) positive. Unique when `rank` is at least the number of columns less one. Failures
/// and cost as svdSolve().
ORMIX_MATH_API BoolResult svdNullVector(const RealMatrix& a, RealVector& x, std::size_t& rank);

/// \name Small systems without allocation
/// The same for a row-major array of at most 16 rows and columns, such as a triangle of TallQr. Return the rank; an
/// entry that is NaN or infinite gives rank 0 and zeros.
/// @{
ORMIX_MATH_API std::size_t svdSolveSmall(const omReal64* a, std::size_t nbRows, std::size_t nbColumns,
                                         const omReal64* b, omReal64* x);
ORMIX_MATH_API std::size_t svdNullVectorSmall(const omReal64* a, std::size_t nbRows, std::size_t nbColumns,
                                              omReal64* x);
/// @}

}  // namespace ormix

#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>
#include <ORMIXUtil/ProcessingResult.h>
#include <ORMIXUtil/ScalarTypes.h>

// Only the parts of Eigen under the MPL 2 are used.
#ifndef EIGEN_MPL2_ONLY
#define EIGEN_MPL2_ONLY
#endif
#include <Eigen/Core>
#include <boost/numeric/ublas/matrix.hpp>
#include <boost/numeric/ublas/vector.hpp>
#include <cstddef>

/// \file
/// Conversions between uBLAS and Eigen for the sources of this folder and of the fits. Not installed: Eigen's types and
/// their alignment, which depends on compiler flags, must not appear in the interface.

namespace ormix::detail {

using RowMajorMatrix = Eigen::Matrix<omReal64, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

/// Eigen's view of a matrix, without a copy.
inline Eigen::Map<const RowMajorMatrix> mapOf(const RealMatrix& a) {
  return {a.data().begin(), static_cast<Eigen::Index>(a.size1()), static_cast<Eigen::Index>(a.size2())};
}

/// Eigen's view of a vector, without a copy.
inline Eigen::Map<const Eigen::VectorXd> mapOf(const RealVector& v) {
  return {v.data().begin(), static_cast<Eigen::Index>(v.size())};
}

/// A copy of an expression of Eigen as a matrix.
template <class Derived>
RealMatrix toRealMatrix(const Eigen::MatrixBase<Derived>& a) {
  RealMatrix result(static_cast<std::size_t>(a.rows()), static_cast<std::size_t>(a.cols()));
  Eigen::Map<RowMajorMatrix>(result.data().begin(), a.rows(), a.cols()) = a;
  return result;
}

/// A copy of an expression of Eigen as a vector.
template <class Derived>
RealVector toRealVector(const Eigen::MatrixBase<Derived>& v) {
  RealVector result(static_cast<std::size_t>(v.size()));
  Eigen::Map<Eigen::VectorXd>(result.data().begin(), v.size()) = v;
  return result;
}

/// Fails when the matrix is empty or an entry is NaN or infinite. The message starts with the operation's name and says
/// which entry it is.
BoolResult checkMatrix(const char* operation, const RealMatrix& a);
/// Fails as checkMatrix(), and when the matrix is not square.
BoolResult checkSquareMatrix(const char* operation, const RealMatrix& a);

/// Negates a vector where that is needed to make its component of largest magnitude, the first of equals, positive.
template <class Vector>
void fixSign(Vector&& v) {
  Eigen::Index largest = 0;
  v.cwiseAbs().maxCoeff(&largest);
  if (v(largest) < 0) v = -v;
}

}  // namespace ormix::detail

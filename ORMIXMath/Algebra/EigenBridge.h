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
/// Between uBLAS and Eigen, for the sources of this folder and of the fits; not installed, since the alignment of
/// Eigen's types is not part of our interface.

namespace ormix::detail {

using RowMajorMatrix = Eigen::Matrix<omReal64, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

/// A matrix where it lies.
inline Eigen::Map<const RowMajorMatrix> mapOf(const RealMatrix& a) {
  return {a.data().begin(), static_cast<Eigen::Index>(a.size1()), static_cast<Eigen::Index>(a.size2())};
}

inline Eigen::Map<const Eigen::VectorXd> mapOf(const RealVector& v) {
  return {v.data().begin(), static_cast<Eigen::Index>(v.size())};
}

template <class Derived>
RealMatrix toRealMatrix(const Eigen::MatrixBase<Derived>& a) {
  RealMatrix result(static_cast<std::size_t>(a.rows()), static_cast<std::size_t>(a.cols()));
  Eigen::Map<RowMajorMatrix>(result.data().begin(), a.rows(), a.cols()) = a;
  return result;
}

template <class Derived>
RealVector toRealVector(const Eigen::MatrixBase<Derived>& v) {
  RealVector result(static_cast<std::size_t>(v.size()));
  Eigen::Map<Eigen::VectorXd>(result.data().begin(), v.size()) = v;
  return result;
}

/// Fails for an empty matrix and for an entry that is NaN or infinite (named), in the name of the operation.
BoolResult checkMatrix(const char* operation, const RealMatrix& a);
/// The same, and for a matrix that is not square.
BoolResult checkSquareMatrix(const char* operation, const RealMatrix& a);

/// Turns a vector so that its component of largest magnitude, the first of equals, is positive.
template <class Vector>
void fixSign(Vector&& v) {
  Eigen::Index largest = 0;
  v.cwiseAbs().maxCoeff(&largest);
  if (v(largest) < 0) v = -v;
}

}  // namespace ormix::detail

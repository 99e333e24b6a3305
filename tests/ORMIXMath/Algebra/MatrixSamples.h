#pragma once

#include <ORMIXMath/Algebra/AlgebraTypes.h>

#include <boost/numeric/ublas/matrix.hpp>
#include <boost/numeric/ublas/matrix_proxy.hpp>
#include <boost/numeric/ublas/vector.hpp>
#include <initializer_list>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix {

inline RealMatrix matrixOf(std::initializer_list<std::initializer_list<omReal64>> rows) {
  RealMatrix result(rows.size(), rows.begin()->size());
  std::size_t i = 0;
  for (const auto& row : rows) {
    std::size_t j = 0;
    for (const omReal64 value : row) result(i, j++) = value;
    ++i;
  }
  return result;
}

inline RealMatrix randomMatrix(std::size_t nbRows, std::size_t nbColumns, support::Random& random) {
  RealMatrix result(nbRows, nbColumns);
  for (auto& value : result.data()) value = random.uniform();
  return result;
}

inline RealVector randomVector(std::size_t size, support::Random& random) {
  RealVector result(size);
  for (auto& value : result) value = random.uniform();
  return result;
}

/// Largest difference of two matrices of one size.
inline omReal64 largestDifference(const RealMatrix& a, const RealMatrix& b) {
  return boost::numeric::ublas::norm_inf(a - b);
}

}  // namespace ormix

#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <boost/numeric/ublas/fwd.hpp>
#include <vector>

namespace ormix {

// The types of uBLAS are only declared here: code that uses their elements includes <boost/numeric/ublas/vector.hpp> or
// <boost/numeric/ublas/matrix.hpp>.

/// A vector of any length: parameters, one sample, residuals.
using RealVector = boost::numeric::ublas::vector<omReal64>;
/// Samples for an estimator, one vector for each, all of the same length.
using DataSet = std::vector<RealVector>;
/// A row-major matrix of any size.
using RealMatrix = boost::numeric::ublas::matrix<omReal64>;
/// A row-major matrix of 3 rows and columns, stored in the object itself.
using Matrix3x3 = boost::numeric::ublas::bounded_matrix<omReal64, 3, 3>;
/// A row-major matrix of 4 rows and columns, stored in the object itself.
using Matrix4x4 = boost::numeric::ublas::bounded_matrix<omReal64, 4, 4>;

}  // namespace ormix

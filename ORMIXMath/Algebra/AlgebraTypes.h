#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <boost/numeric/ublas/fwd.hpp>
#include <vector>

namespace ormix {

// Declared only: whoever touches their elements includes <boost/numeric/ublas/vector.hpp> or <…/matrix.hpp>.

/// A vector of reals: parameters, a sample, residuals.
using RealVector = boost::numeric::ublas::vector<omReal64>;
/// Samples for an estimator, one vector each.
using DataSet = std::vector<RealVector>;
/// \name Row-major matrices.
/// @{
using RealMatrix = boost::numeric::ublas::matrix<omReal64>;
using Matrix3x3 = boost::numeric::ublas::bounded_matrix<omReal64, 3, 3>;
using Matrix4x4 = boost::numeric::ublas::bounded_matrix<omReal64, 4, 4>;
/// @}

}  // namespace ormix

#include <ORMIXMath/Algebra/EigenBridge.h>
#include <ORMIXMath/Algebra/EigenDecomposition.h>
#include <ORMIXUtil/NumericLimits.h>

#include <Eigen/Eigenvalues>
#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>
#include <tuple>

namespace ormix {
namespace {

// Largest difference of two entries that symmetry makes equal, relative to the largest entry: such entries may have
// been computed by different roundings.
constexpr omReal64 s_symmetryTolerance = 16 * NumericLimits<omReal64>::s_eps;

/// A column as a vector of length 1 whose component of largest magnitude is real and positive.
std::vector<std::complex<omReal64>> unitVectorOf(const Eigen::VectorXcd& column) {
  Eigen::Index largest = 0;
  column.cwiseAbs().maxCoeff(&largest);
  const omReal64 length = std::abs(column(largest));
  const std::complex<omReal64> phase = length > 0 ? std::conj(column(largest)) / length : 1.0;
  const Eigen::VectorXcd unit = (column * phase).normalized();
  std::vector<std::complex<omReal64>> result(unit.data(), unit.data() + unit.size());
  result[static_cast<std::size_t>(largest)].imag(0);
  return result;
}

}  // namespace

BoolResult eigenDecomposition(const RealMatrix& a, RealVector& values, RealMatrix& vectors) {
  const BoolResult checked = detail::checkSquareMatrix("eigenDecomposition", a);
  if (!checked) return checked;
  const auto matrix = detail::mapOf(a);
  const omReal64 tolerance = s_symmetryTolerance * matrix.cwiseAbs().maxCoeff();
  if (((matrix - matrix.transpose()).cwiseAbs().array() > tolerance).any())
    return failure("eigenDecomposition: the matrix is not symmetric");
  Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> solver(matrix);
  if (solver.info() != Eigen::Success || !solver.eigenvalues().allFinite() || !solver.eigenvectors().allFinite())
    return failure("eigenDecomposition: the iteration did not converge");
  Eigen::MatrixXd fixed = solver.eigenvectors();
  for (Eigen::Index k = 0; k < fixed.cols(); ++k) detail::fixSign(fixed.col(k));
  values = detail::toRealVector(solver.eigenvalues());
  vectors = detail::toRealMatrix(fixed);
  return {};
}

template <class T>
BoolResult eigenDecomposition(T xx, T xy, T xz, T yy, T yz, T zz, T (&values)[3], T (&vectors)[9]) {
  using Matrix = Eigen::Matrix<T, 3, 3>;
  Matrix matrix;
  matrix << xx, xy, xz, xy, yy, yz, xz, yz, zz;
  if (!matrix.allFinite()) return failure("eigenDecomposition: an entry is NaN or infinite");
  const Eigen::SelfAdjointEigenSolver<Matrix> solver(matrix);
  if (solver.info() != Eigen::Success || !solver.eigenvalues().allFinite())
    return failure("eigenDecomposition: the iteration did not converge");
  Matrix fixed = solver.eigenvectors();
  for (Eigen::Index k = 0; k < 3; ++k) detail::fixSign(fixed.col(k));
  std::copy(solver.eigenvalues().data(), solver.eigenvalues().data() + 3, values);
  std::copy(fixed.data(), fixed.data() + 9, vectors);
  return {};
}

template BoolResult eigenDecomposition(omReal64, omReal64, omReal64, omReal64, omReal64, omReal64, omReal64 (&)[3],
                                       omReal64 (&)[9]);

BoolResult generalEigenDecomposition(const RealMatrix& a, std::vector<std::complex<omReal64>>& values,
                                     std::vector<std::vector<std::complex<omReal64>>>& vectors) {
  const BoolResult checked = detail::checkSquareMatrix("generalEigenDecomposition", a);
  if (!checked) return checked;
  const Eigen::EigenSolver<Eigen::MatrixXd> solver(detail::mapOf(a));
  if (solver.info() != Eigen::Success || !solver.eigenvalues().allFinite())
    return failure("generalEigenDecomposition: the iteration did not converge");
  const Eigen::VectorXcd found = solver.eigenvalues();
  const Eigen::MatrixXcd columns = solver.eigenvectors();
  std::vector<Eigen::Index> order(static_cast<std::size_t>(found.size()));
  std::iota(order.begin(), order.end(), 0);
  std::sort(order.begin(), order.end(), [&found](Eigen::Index p, Eigen::Index q) {
    return std::make_tuple(found(p).real(), found(p).imag(), p) < std::make_tuple(found(q).real(), found(q).imag(), q);
  });
  values.clear();
  vectors.clear();
  for (const Eigen::Index k : order) {
    values.push_back(found(k));
    vectors.push_back(unitVectorOf(columns.col(k)));
  }
  return {};
}

}  // namespace ormix

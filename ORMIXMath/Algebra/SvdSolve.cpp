#include <ORMIXMath/Algebra/EigenBridge.h>
#include <ORMIXMath/Algebra/SvdSolve.h>
#include <ORMIXUtil/NumericLimits.h>

#include <Eigen/QR>
#include <Eigen/SVD>
#include <algorithm>
#include <cassert>
#include <cmath>
#include <string>

namespace ormix {
namespace {

using Eigen::Index;
using Eigen::MatrixXd;
using Eigen::VectorXd;

constexpr Index s_maxSmall = 16;
// Small systems are stored on the stack.
using SmallMatrix = Eigen::Matrix<omReal64, Eigen::Dynamic, Eigen::Dynamic, 0, s_maxSmall, s_maxSmall>;
using SmallVector = Eigen::Matrix<omReal64, Eigen::Dynamic, 1, 0, s_maxSmall, 1>;

// Systems with more than this many rows for each column are reduced to a triangular one first.
constexpr Index s_tallRatio = 2;
// Rows folded into the triangle at once: many, as each block costs the reflections of the triangle again, yet few
// enough for the second-level cache.
constexpr Index s_minBlockRows = 128;

/// 2^-e for a column whose largest magnitude is in [2^e, 2^(e+1)), clamped to stay a normal number; 1 for zeros.
template <class Derived>
omReal64 columnScale(const Eigen::MatrixBase<Derived>& column) {
  const omReal64 largest = column.cwiseAbs().maxCoeff();
  if (!(largest > 0)) return 1;
  return std::ldexp(1.0, -std::clamp(std::ilogb(largest), -1000, 1000));
}

/// columnScale() of each column.
template <class Vector, class Derived>
Vector columnScales(const Eigen::MatrixBase<Derived>& a) {
  Vector scales(a.cols());
  for (Index j = 0; j < a.cols(); ++j) scales(j) = columnScale(a.col(j));
  return scales;
}

/// The triangle R of the decomposition Q R of (a * diag(scales) | b), by blocks of rows; `b` may have no columns.
template <class A, class B>
MatrixXd triangleOf(const A& a, const VectorXd& scales, const B& b) {
  const Index nbColumns = a.cols() + b.cols();
  const Index blockRows = std::max(4 * nbColumns, s_minBlockRows);
  MatrixXd stacked = MatrixXd::Zero(nbColumns + blockRows, nbColumns);
  for (Index row = 0; row < a.rows(); row += blockRows) {
    const Index nbRows = std::min(blockRows, a.rows() - row);
    auto fresh = stacked.middleRows(nbColumns, nbRows);
    fresh.leftCols(a.cols()) = a.middleRows(row, nbRows) * scales.asDiagonal();
    fresh.rightCols(b.cols()) = b.middleRows(row, nbRows);
    stacked.bottomRows(blockRows - nbRows).setZero();
    Eigen::HouseholderQR<Eigen::Ref<MatrixXd>> qr(stacked);
    stacked.topRows(nbColumns).triangularView<Eigen::StrictlyLower>().setZero();
  }
  return stacked.topRows(nbColumns);
}

/// The number of singular values, given in descending order, that do not count as zero.
template <class Singular>
Index rankOf(const Singular& values, Index nbRows, Index nbColumns) {
  const omReal64 limit =
      static_cast<omReal64>(std::max(nbRows, nbColumns)) * NumericLimits<omReal64>::s_eps * values(0);
  return (values.array() > limit).count();
}

/// The least-squares solution of the scaled system from its decomposition, with singular values beyond the rank as
/// zeros.
template <class Svd, class Right>
auto solveByRank(const Svd& svd, Index rank, const Right& b) {
  using Vector = std::decay_t<decltype(svd.singularValues())>;
  const Vector weights = (svd.matrixU().leftCols(rank).transpose() * b).cwiseQuotient(svd.singularValues().head(rank));
  return Vector(svd.matrixV().leftCols(rank) * weights);
}

/// The right singular vector of the smallest value, in the unscaled unknowns.
template <class Matrix, class Vector>
Vector nullVectorOf(const Eigen::JacobiSVD<Matrix>& svd, const Vector& scales) {
  Vector x = svd.matrixV().rightCols(1);
  // Relative to the largest scale, so that the products neither overflow nor underflow more than necessary.
  x = x.cwiseProduct(scales / scales.maxCoeff());
  x.normalize();
  detail::fixSign(x);
  return x;
}

}  // namespace

BoolResult svdSolve(const RealMatrix& a, const RealVector& b, RealVector& x, std::size_t& rank) {
  const BoolResult checked = detail::checkMatrix("svdSolve", a);
  if (!checked) return checked;
  if (b.size() != a.size1())
    return failure("svdSolve: the right-hand side has " + std::to_string(b.size()) + " values for a matrix of " +
                   std::to_string(a.size1()) + " rows");
  const auto matrix = detail::mapOf(a);
  const auto right = detail::mapOf(b);
  if (!right.allFinite()) return failure("svdSolve: the right-hand side has a value that is NaN or infinite");
  const VectorXd scales = columnScales<VectorXd>(matrix);
  MatrixXd system(matrix.rows(), matrix.cols() + 1);
  if (matrix.rows() > s_tallRatio * (matrix.cols() + 1))
    system = triangleOf(matrix, scales, right);
  else
    system << matrix * scales.asDiagonal(), right;
  const Eigen::JacobiSVD<MatrixXd> svd(system.leftCols(matrix.cols()), Eigen::ComputeThinU | Eigen::ComputeThinV);
  const Index found = rankOf(svd.singularValues(), matrix.rows(), matrix.cols());
  const VectorXd solution = solveByRank(svd, found, system.rightCols(1)).cwiseProduct(scales);
  if (!solution.allFinite()) return failure("svdSolve: the solution overflows");
  x = detail::toRealVector(solution);
  rank = static_cast<std::size_t>(found);
  return {};
}

BoolResult svdNullVector(const RealMatrix& a, RealVector& x, std::size_t& rank) {
  const BoolResult checked = detail::checkMatrix("svdNullVector", a);
  if (!checked) return checked;
  const auto matrix = detail::mapOf(a);
  const VectorXd scales = columnScales<VectorXd>(matrix);
  const MatrixXd system = matrix.rows() > s_tallRatio * matrix.cols()
                              ? triangleOf(matrix, scales, MatrixXd(matrix.rows(), 0))
                              : MatrixXd(matrix * scales.asDiagonal());
  const Eigen::JacobiSVD<MatrixXd> svd(system, Eigen::ComputeFullV);
  rank = static_cast<std::size_t>(rankOf(svd.singularValues(), matrix.rows(), matrix.cols()));
  x = detail::toRealVector(nullVectorOf(svd, scales));
  return {};
}

std::size_t svdSolveSmall(const omReal64* a, std::size_t nbRows, std::size_t nbColumns, const omReal64* b,
                          omReal64* x) {
  assert(nbRows > 0 && nbRows <= s_maxSmall && nbColumns > 0 && nbColumns <= s_maxSmall);
  const auto rows = static_cast<Index>(nbRows);
  const auto columns = static_cast<Index>(nbColumns);
  const Eigen::Map<const detail::RowMajorMatrix> matrix(a, rows, columns);
  const Eigen::Map<const VectorXd> right(b, rows);
  Eigen::Map<VectorXd> solution(x, columns);
  solution.setZero();
  if (!matrix.allFinite() || !right.allFinite()) return 0;
  const auto scales = columnScales<SmallVector>(matrix);
  const SmallMatrix system = matrix * scales.asDiagonal();
  const Eigen::JacobiSVD<SmallMatrix> svd(system, Eigen::ComputeThinU | Eigen::ComputeThinV);
  const Index rank = rankOf(svd.singularValues(), rows, columns);
  solution = solveByRank(svd, rank, SmallVector(right)).cwiseProduct(scales);
  return static_cast<std::size_t>(rank);
}

std::size_t svdNullVectorSmall(const omReal64* a, std::size_t nbRows, std::size_t nbColumns, omReal64* x) {
  assert(nbRows > 0 && nbRows <= s_maxSmall && nbColumns > 0 && nbColumns <= s_maxSmall);
  const auto rows = static_cast<Index>(nbRows);
  const auto columns = static_cast<Index>(nbColumns);
  const Eigen::Map<const detail::RowMajorMatrix> matrix(a, rows, columns);
  Eigen::Map<VectorXd> solution(x, columns);
  solution.setZero();
  if (!matrix.allFinite()) return 0;
  const auto scales = columnScales<SmallVector>(matrix);
  const SmallMatrix system = matrix * scales.asDiagonal();
  const Eigen::JacobiSVD<SmallMatrix> svd(system, Eigen::ComputeFullV);
  solution = nullVectorOf(svd, scales);
  return static_cast<std::size_t>(rankOf(svd.singularValues(), rows, columns));
}

}  // namespace ormix

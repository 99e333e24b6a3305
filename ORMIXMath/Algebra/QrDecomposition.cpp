#include <ORMIXMath/Algebra/EigenBridge.h>
#include <ORMIXMath/Algebra/QrDecomposition.h>

#include <Eigen/QR>
#include <algorithm>
#include <string>

namespace ormix {

BoolResult qrDecomposition(const RealMatrix& a, RealMatrix& q, RealMatrix& r) {
  const BoolResult checked = detail::checkMatrix("qrDecomposition", a);
  if (!checked) return checked;
  const Eigen::HouseholderQR<Eigen::MatrixXd> qr(detail::mapOf(a));
  const Eigen::Index rank = std::min(qr.rows(), qr.cols());
  Eigen::MatrixXd thinQ = qr.householderQ() * Eigen::MatrixXd::Identity(qr.rows(), rank);
  Eigen::MatrixXd triangle = qr.matrixQR().topRows(rank).triangularView<Eigen::Upper>();
  for (Eigen::Index k = 0; k < rank; ++k) {
    if (!(triangle(k, k) < 0)) continue;
    triangle.row(k) = -triangle.row(k);
    thinQ.col(k) = -thinQ.col(k);
  }
  if (!triangle.allFinite() || !thinQ.allFinite()) return failure("qrDecomposition: the lengths of columns overflow");
  q = detail::toRealMatrix(thinQ);
  r = detail::toRealMatrix(triangle);
  return {};
}

BoolResult upperTriangularInverse(const RealMatrix& a, RealMatrix& inverse) {
  const char* operation = "upperTriangularInverse";
  const BoolResult checked = detail::checkSquareMatrix(operation, a);
  if (!checked) return checked;
  for (std::size_t k = 0; k < a.size1(); ++k)
    if (a(k, k) == 0) return failure(std::string(operation) + ": diagonal element " + std::to_string(k) + " is zero");
  const auto triangle = detail::mapOf(a).triangularView<Eigen::Upper>();
  const Eigen::MatrixXd solution = triangle.solve(Eigen::MatrixXd::Identity(triangle.rows(), triangle.cols()));
  if (!solution.allFinite()) return failure(std::string(operation) + ": the inverse overflows");
  inverse = detail::toRealMatrix(solution);
  return {};
}

}  // namespace ormix

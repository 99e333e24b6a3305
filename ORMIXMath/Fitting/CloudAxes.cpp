#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXMath/Fitting/CloudAxes.h>

#include <Eigen/SVD>
#include <algorithm>
#include <cmath>
#include <cstddef>

namespace ormix::detail {
namespace {

template <std::size_t D>
std::array<omReal64, 3> extentsOf(const SampleView& points, omReal64& largest) {
  std::array<omReal64, D> mean{};
  const auto nb = static_cast<omReal64>(points.nbSamples);
  for (std::size_t i = 0; i < points.nbSamples; ++i)
    for (std::size_t d = 0; d < D; ++d) {
      mean[d] += (points[i][d] - points[0][d]) / nb;
      largest = std::max(largest, std::abs(points[i][d]));
    }
  TallQr<D + 1> qr;
  for (std::size_t start = 0; start < points.nbSamples; start += qr.s_blockRows) {
    const std::size_t nbRows = std::min(qr.s_blockRows, points.nbSamples - start);
    for (std::size_t i = 0; i < nbRows; ++i) {
      for (std::size_t d = 0; d < D; ++d) qr.block(d)[i] = points[start + i][d] - points[0][d] - mean[d];
      qr.block(D)[i] = 0;
    }
    qr.fold(nbRows);
  }
  Eigen::Matrix3d triangle = Eigen::Matrix3d::Zero();
  for (std::size_t r = 0; r < D; ++r)
    for (std::size_t c = r; c < D; ++c) triangle(static_cast<int>(r), static_cast<int>(c)) = qr(r, c);
  if (!triangle.allFinite()) return {};
  const Eigen::Vector3d values = Eigen::JacobiSVD<Eigen::Matrix3d>(triangle).singularValues();
  return {values(0), values(1), values(2)};
}

}  // namespace

std::array<omReal64, 3> cloudExtents(const SampleView& points, omReal64& largest) {
  largest = 0;
  return points.dimension == 2 ? extentsOf<2>(points, largest) : extentsOf<3>(points, largest);
}

}  // namespace ormix::detail

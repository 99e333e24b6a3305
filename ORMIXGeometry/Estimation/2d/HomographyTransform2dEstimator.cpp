#include <ORMIXGeometry/Estimation/2d/HomographyTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/PairSums2d.h>
#include <ORMIXMath/Algebra/SvdSolve.h>
#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXUtil/NumericLimits.h>
#include <ORMIXGeometry/Estimation/2d/Estimation2d.ipp>

#include <algorithm>
#include <array>
#include <boost/numeric/ublas/matrix.hpp>
namespace ormix {
template class VersionedLevel<geom::HomographyTransform2dEstimator, BaseEstimator>;
template class RegisteredObject<geom::HomographyTransform2dEstimator, BaseEstimator>;
}  // namespace ormix

namespace ormix::geom {

template class Estimation2d<HomographyTransform2dEstimator>;

namespace {
const DynamicRegistrator<HomographyTransform2dEstimator> g_classRegistrator;
}  // namespace

namespace {

constexpr std::size_t s_side = 3;
constexpr std::size_t s_nbElements = s_side * s_side;
// Most unknown elements that may stay open are two, of which one is the matrix' factor.
constexpr std::size_t s_smallestRank = 7;

/// Points moved to their mean and scaled near 1 (Hartley 1997, In Defense of the Eight-Point Algorithm, IEEE PAMI 19),
/// by a power of two so that nothing is rounded.
struct Frame2d {
  omReal64 x, y, scale;
};

Frame2d frameOf(omReal64 x, omReal64 y, omReal64 spread, omReal64 nbPoints) {
  const omReal64 radius = std::sqrt(spread / nbPoints);
  // Points that coincide, and those with a NaN or infinity, are left to the rank.
  if (!(radius > 0) || !std::isfinite(radius)) return {x, y, 1};
  return {x, y, std::ldexp(1.0, std::clamp(-std::ilogb(radius), -1000, 1000))};
}

/// The columns (p | u p | v p) of the sources p = (x, y, 1) and targets (u, v) in their frames, as a triangle.
TallQr<s_nbElements> reducedColumns(const SampleView& samples, const Frame2d& source, const Frame2d& target) {
  TallQr<s_nbElements> qr;
  constexpr std::size_t blockRows = TallQr<s_nbElements>::s_blockRows;
  for (std::size_t start = 0; start < samples.nbSamples; start += blockRows) {
    const std::size_t nbRows = std::min(blockRows, samples.nbSamples - start);
    const omReal64* rows = samples[start];
    for (std::size_t i = 0; i < nbRows; ++i) {
      const omReal64 x = (rows[4 * i] - source.x) * source.scale;
      const omReal64 y = (rows[4 * i + 1] - source.y) * source.scale;
      const omReal64 u = (rows[4 * i + 2] - target.x) * target.scale;
      const omReal64 v = (rows[4 * i + 3] - target.y) * target.scale;
      const std::array<omReal64, s_nbElements> values{x, y, 1, u * x, u * y, u, v * x, v * y, v};
      for (std::size_t c = 0; c < s_nbElements; ++c) qr.block(c)[i] = values[c];
    }
    qr.fold(nbRows);
  }
  return qr;
}

/// The element-wise null vector of the direct linear system, whose rows are (p 0 -u p) and (0 p -v p).
///
/// With the triangle (R P Q; 0 S T; 0 0 W) of the columns (p | u p | v p) the orthogonal factor of p turns that system
/// of two rows a pair into (R 0 -P; 0 R -Q; 0 0 S; 0 0 T; 0 0 W): half the work, and the same singular values.
std::size_t solveSystem(const TallQr<s_nbElements>& qr, std::array<omReal64, s_nbElements>& h) {
  constexpr std::size_t nbRows = 5 * s_side;
  std::array<omReal64, nbRows * s_nbElements> a{};
  const auto put = [&](std::size_t block, std::size_t column, std::size_t fromRow, std::size_t fromColumn, int sign) {
    for (std::size_t r = 0; r < s_side; ++r)
      for (std::size_t c = 0; c < s_side; ++c)
        a[(block * s_side + r) * s_nbElements + column * s_side + c] =
            sign * qr(fromRow * s_side + r, fromColumn * s_side + c);
  };
  put(0, 0, 0, 0, 1);
  put(0, 2, 0, 1, -1);
  put(1, 1, 0, 0, 1);
  put(1, 2, 0, 2, -1);
  put(2, 2, 1, 1, 1);
  put(3, 2, 1, 2, 1);
  put(4, 2, 2, 2, 1);
  return svdNullVectorSmall(a.data(), nbRows, s_nbElements, h.data());
}

/// Whether the sources lie on a line to rounding of their coordinates, which far from the origin hides behind a full
/// rank: then no more than six of the equations are independent.
bool areCollinear(const TallQr<s_nbElements>& qr, const Frame2d& source, omReal64 nbPoints) {
  // The first two columns are the centred sources: the singular values of their corner are the cloud's half axes.
  const omReal64 a = qr(0, 0);
  const omReal64 b = qr(0, 1);
  const omReal64 c = qr(1, 1);
  const omReal64 length = std::hypot(a, b, c);
  const omReal64 reach = std::max(std::abs(source.x), std::abs(source.y)) * source.scale + 1;
  const omReal64 rounding = 4 * NumericLimits<omReal64>::s_eps * reach * std::sqrt(nbPoints);
  return !(std::abs(a * c) > rounding * length);
}

/// From the frames back to the coordinates, target⁻¹ · h · source, with the first two columns scaled by `factor`, and
/// the third such that the rounded matrix maps the centre of the sources where the exact one does: what rounding takes
/// from a pair then grows with its distance from the centre rather than from the origin.
std::array<omReal64, s_nbElements> withoutFrames(const Frame2d& source, const Frame2d& target,
                                                 const std::array<omReal64, s_nbElements>& h, omReal64 factor) {
  std::array<omReal64, s_nbElements> result;
  for (std::size_t c = 0; c < s_side; ++c) {
    const omReal64 scale = c + 1 < s_side ? source.scale * factor : factor;
    result[c] = (h[c] / target.scale + target.x * h[6 + c]) * scale;
    result[3 + c] = (h[3 + c] / target.scale + target.y * h[6 + c]) * scale;
    result[6 + c] = h[6 + c] * scale;
  }
  for (std::size_t r = 0; r < s_side; ++r) {
    omReal64* row = result.data() + s_side * r;
    row[2] = std::fma(-row[0], source.x, std::fma(-row[1], source.y, row[2]));
  }
  return result;
}

/// What makes the last element 1, or the length where that element is 0 to rounding.
omReal64 normalisation(const std::array<omReal64, s_nbElements>& h) {
  omReal64 square = 0;
  for (const omReal64 element : h) square += element * element;
  const omReal64 length = std::sqrt(square);
  // Only the last row decides: those above have the targets' unit.
  const bool isLastNull = !(std::abs(h[8]) > NumericLimits<omReal64>::s_eps * std::hypot(h[6], h[7], h[8])) ||
                          !std::isfinite(length / h[8]);
  return 1 / (isLastNull ? length : h[8]);
}

Matrix3x3 matrixOf(const RealVector& params) {
  Matrix3x3 matrix(s_side, s_side);
  for (std::size_t k = 0; k < s_nbElements; ++k) matrix(k / s_side, k % s_side) = params(k);
  return matrix;
}

RealVector paramsOf(const Matrix3x3& matrix) {
  RealVector params(s_nbElements);
  for (std::size_t k = 0; k < s_nbElements; ++k) params(k) = matrix(k / s_side, k % s_side);
  return params;
}

}  // namespace

BoolResult HomographyTransform2dEstimator::processViewEstimation(const SampleView& samples, RealVector& params) {
  const detail::PairSums2d sums = detail::pairSums(samples);
  const Frame2d source = frameOf(sums.mx1, sums.my1, sums.spread1, sums.nbPairs);
  const Frame2d target = frameOf(sums.mx2, sums.my2, sums.spread2, sums.nbPairs);
  std::array<omReal64, s_nbElements> h{};
  const TallQr<s_nbElements> qr = reducedColumns(samples, source, target);
  std::size_t rank = solveSystem(qr, h);
  if (areCollinear(qr, source, sums.nbPairs)) rank = std::min(rank, s_smallestRank - 1);
  if (rank < s_smallestRank)
    return detail::estimationFailure(eEstimationMessage::eEsM_Homography2dRank, rank, s_smallestRank);
  const omReal64 factor = normalisation(withoutFrames(source, target, h, 1));
  h = withoutFrames(source, target, h, factor);
  // Off by the rounding of the factor.
  if (std::abs(h[8] - 1) < NumericLimits<omReal64>::s_sqrt_eps) h[8] = 1;
  if (!std::all_of(h.begin(), h.end(), [](omReal64 element) { return std::isfinite(element); }))
    return failure(getClassName() + ": the matrix is beyond the range of numbers");
  std::copy(h.begin(), h.end(), params.begin());
  return {};
}

BoolResult HomographyTransform2dEstimator::processViewResiduals(const SampleView& samples, const RealVector& params,
                                                                RealVector& residuals) const {
  std::array<omReal64, s_nbElements> h;
  std::copy(params.begin(), params.end(), h.begin());
  return detail::fillResiduals<s_sampleDimension>(samples, residuals, [&h](const omReal64* p) {
    const omReal64 w = h[6] * p[0] + h[7] * p[1] + h[8];
    return euclideanNorm(p[2] - (h[0] * p[0] + h[1] * p[1] + h[2]) / w, p[3] - (h[3] * p[0] + h[4] * p[1] + h[5]) / w);
  });
}

BoolResult HomographyTransform2dEstimator::computeEstimation(const DataSet& dataSet, Matrix3x3& matrix) {
  RealVector params;
  BoolResult result = computeEstimation(dataSet, params);
  if (result) matrix = matrixOf(params);
  return result;
}

BoolResult HomographyTransform2dEstimator::computeEstimation(const SampleView& samples, Matrix3x3& matrix) {
  RealVector params;
  BoolResult result = computeEstimation(samples, params);
  if (result) matrix = matrixOf(params);
  return result;
}

BoolResult HomographyTransform2dEstimator::computeResiduals(const DataSet& dataSet, const Matrix3x3& matrix,
                                                            RealVector& residuals) const {
  return computeResiduals(dataSet, paramsOf(matrix), residuals);
}

BoolResult HomographyTransform2dEstimator::computeResiduals(const SampleView& samples, const Matrix3x3& matrix,
                                                            RealVector& residuals) const {
  return computeResiduals(samples, paramsOf(matrix), residuals);
}

}  // namespace ormix::geom

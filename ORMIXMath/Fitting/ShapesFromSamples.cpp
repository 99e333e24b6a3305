#include <ORMIXMath/Algebra/EigenBridge.h>
#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXMath/Fitting/CloudFrame.h>
#include <ORMIXMath/Fitting/ShapesFromSamples.h>
#include <ORMIXMath/Scalar/Constants.h>
#include <ORMIXMath/Shape/EllipseConic.h>
#include <ORMIXUtil/NumericLimits.h>

#include <Eigen/SVD>
#include <algorithm>
#include <array>
#include <cmath>

namespace ormix {
namespace {

using detail::CloudFrame;

/// Folds all samples into the triangle, block by block; `fill(rows, nbRows)` writes the columns of a block.
template <class Qr, class Fill>
void foldSamples(const SampleView& samples, Qr& qr, const Fill& fill) {
  constexpr std::size_t blockRows = Qr::s_blockRows;
  for (std::size_t start = 0; start < samples.nbSamples; start += blockRows) {
    const std::size_t nbRows = std::min(blockRows, samples.nbSamples - start);
    fill(samples[start], nbRows);
    qr.fold(nbRows);
  }
}

/// The triangle as a matrix of Eigen.
template <class Qr>
auto triangleOf(const Qr& qr) {
  constexpr int size = static_cast<int>(Qr::s_nbColumns);
  return Eigen::Matrix<omReal64, size, size>(
      Eigen::Map<const Eigen::Matrix<omReal64, size, size, Eigen::RowMajor>>(qr.triangle().data()));
}

/// The triangle of all samples in a frame. The frame is computed from a part of the samples; where the triangle shows
/// that the others extend much farther (many samples coincide), it is computed from all samples instead. Returns false,
/// and the rank, when there is no frame or something is not finite: rank 1 for samples that are all equal, 0 otherwise.
template <std::size_t D, class Fold, class Triangle>
bool framedTriangle(const SampleView& samples, const Fold& fold, CloudFrame<D>& frame, Triangle& triangle,
                    std::size_t& rank) {
  // Root mean square of a coordinate, in extents, up to which the frame fits.
  constexpr omReal64 largestSpread = 8;
  rank = 0;
  if (samples.empty()) return false;
  for (const std::size_t nbUsed : {detail::s_nbFrameSamples, samples.nbSamples}) {
    frame = detail::cloudFrame<D>(samples, nbUsed);
    if (!(frame.extent > 0)) continue;
    triangle = fold(samples, frame);
    const omReal64 spread = triangle.template leftCols<static_cast<int>(D)>().colwise().norm().maxCoeff();
    if (spread <= largestSpread * std::sqrt(static_cast<omReal64>(samples.nbSamples))) break;
  }
  if (frame.extent > 0) return triangle.allFinite();
  rank = std::all_of(frame.origin.begin(), frame.origin.end(), [](omReal64 value) { return std::isfinite(value); });
  return false;
}

/// The part of the largest singular value of a system up to which one counts as zero, as the rounding of the sums or
/// that of the coordinates, by which collinear points would appear to lie on a circle of very large radius.
omReal64 negligiblePart(std::size_t nbRows, std::size_t nbColumns, omReal64 coarseness) {
  const auto largestSide = static_cast<omReal64>(std::max(nbRows, nbColumns));
  return std::max(largestSide * NumericLimits<omReal64>::s_eps, 4 * coarseness);
}

/// The number of singular values, in descending order, that do not count as zero.
template <class Values>
std::size_t rankOf(const Values& values, omReal64 negligible) {
  return static_cast<std::size_t>((values.array() > negligible * values(0)).count());
}

/// The same of a triangle. Its lengths and those of its inverse bound the singular values; where these do not settle
/// that all count, the values themselves are computed, which takes far longer.
template <class Triangle>
std::size_t rankOfTriangle(const Triangle& triangle, omReal64 negligible) {
  // Beyond what rounding changes in the bounds and in computed singular values.
  constexpr omReal64 margin = 4;
  const Triangle inverse = triangle.template triangularView<Eigen::Upper>().solve(Triangle::Identity());
  if (1 > margin * negligible * triangle.norm() * inverse.norm()) return Triangle::ColsAtCompileTime;
  return rankOf(Eigen::JacobiSVD<Triangle>(triangle).singularValues(), negligible);
}

/// The triangle of the system (coordinates, 1 | sum of their squares) of a sphere of dimension D.
template <std::size_t D>
auto sphereTriangle(const SampleView& samples, const CloudFrame<D>& frame) {
  const omReal64 scale = 1 / frame.extent;
  TallQr<D + 2, 1> qr;
  foldSamples(samples, qr, [&](const omReal64* rows, std::size_t nbRows) {
    omReal64* squares = qr.block(D + 1);
    std::fill(qr.block(D), qr.block(D) + nbRows, 1.0);
    for (std::size_t d = 0; d < D; ++d) {
      omReal64* column = qr.block(d);
      for (std::size_t i = 0; i < nbRows; ++i) {
        const omReal64 value = (rows[D * i + d] - frame.origin[d]) * scale;
        column[i] = value;
        squares[i] = d == 0 ? value * value : squares[i] + value * value;
      }
    }
  });
  return triangleOf(qr);
}

/// Converts the solution in the frame (twice the centre; radius² - |centre|²) to a sphere in the coordinates of the
/// samples. Returns false when that is not finite or has no positive radius.
template <std::size_t D, class Solution>
bool placeSphere(const Solution& solution, const CloudFrame<D>& frame, std::array<omReal64, D>& center,
                 omReal64& radius) {
  omReal64 square = solution(static_cast<Eigen::Index>(D));
  std::array<omReal64, D> placed;
  bool isFinite = true;
  for (std::size_t d = 0; d < D; ++d) {
    const omReal64 offset = solution(static_cast<Eigen::Index>(d)) / 2;
    square += offset * offset;
    placed[d] = frame.origin[d] + frame.extent * offset;
    isFinite = isFinite && std::isfinite(placed[d]);
  }
  const omReal64 placedRadius = frame.extent * std::sqrt(square);
  if (!isFinite || !(placedRadius > 0) || !std::isfinite(placedRadius)) return false;
  center = placed;
  radius = placedRadius;
  return true;
}

/// circleFromSamples() for D = 2 and sphereFromSamples() for D = 3.
template <std::size_t D>
bool sphereInDimension(const SampleView& samples, std::array<omReal64, D>& center, omReal64& radius,
                       std::size_t& rank) {
  constexpr int nbUnknowns = static_cast<int>(D) + 1;
  using Matrix = Eigen::Matrix<omReal64, nbUnknowns, nbUnknowns>;
  using Vector = Eigen::Matrix<omReal64, nbUnknowns, 1>;
  CloudFrame<D> frame;
  Eigen::Matrix<omReal64, nbUnknowns + 1, nbUnknowns + 1> triangle;
  if (!framedTriangle(samples, sphereTriangle<D>, frame, triangle, rank)) return false;
  const Eigen::JacobiSVD<Matrix> svd(Matrix(triangle.template topLeftCorner<nbUnknowns, nbUnknowns>()),
                                     Eigen::ComputeFullU | Eigen::ComputeFullV);
  rank = rankOf(svd.singularValues(), negligiblePart(samples.nbSamples, D + 1, frame.coarseness));
  if (rank < D + 1) return false;
  const Vector weights = (svd.matrixU().transpose() * triangle.template topRightCorner<nbUnknowns, 1>())
                             .cwiseQuotient(svd.singularValues());
  return placeSphere(Vector(svd.matrixV() * weights), frame, center, radius);
}

constexpr omReal64 s_sqrt2 = 1.4142135623730951;

/// Sizes of the system for a conic (D = 2) or a quadric (D = 3).
template <std::size_t D>
struct QuadricSizes {
  static constexpr std::size_t nbLinear = D + 1;
  static constexpr std::size_t nbQuadratic = D * (D + 1) / 2;
  static constexpr std::size_t nbColumns = nbLinear + nbQuadratic;
  using Triangle = Eigen::Matrix<omReal64, static_cast<int>(nbColumns), static_cast<int>(nbColumns)>;
  using Linear = Eigen::Matrix<omReal64, static_cast<int>(nbLinear), 1>;
  using Quadratic = Eigen::Matrix<omReal64, static_cast<int>(nbQuadratic), 1>;
};

/// The triangle of the columns (u, v, ..., 1, sqrt(2) u v, ..., u², v², ...) in the coordinates of the frame. With the
/// factor sqrt(2) the constraint of ellipseFromSamples() is that the quadratic coefficients have length 1.
template <std::size_t D>
typename QuadricSizes<D>::Triangle quadricTriangle(const SampleView& samples, const CloudFrame<D>& frame) {
  const omReal64 scale = 1 / frame.extent;
  TallQr<QuadricSizes<D>::nbColumns> qr;
  foldSamples(samples, qr, [&](const omReal64* rows, std::size_t nbRows) {
    for (std::size_t d = 0; d < D; ++d)
      for (std::size_t i = 0; i < nbRows; ++i) qr.block(d)[i] = (rows[D * i + d] - frame.origin[d]) * scale;
    if constexpr (D == 2)
      if (frame.isFlat) detail::alignRows(frame, qr.block(0), qr.block(1), nbRows);
    std::size_t column = D;
    std::fill(qr.block(column), qr.block(column) + nbRows, 1.0);
    for (std::size_t d = 0; d < D; ++d)
      for (std::size_t e = d + 1; e < D; ++e) {
        ++column;
        for (std::size_t i = 0; i < nbRows; ++i) qr.block(column)[i] = s_sqrt2 * (qr.block(d)[i] * qr.block(e)[i]);
      }
    for (std::size_t d = 0; d < D; ++d) {
      ++column;
      for (std::size_t i = 0; i < nbRows; ++i) qr.block(column)[i] = qr.block(d)[i] * qr.block(d)[i];
    }
  });
  return triangleOf(qr);
}

/// The unit vector q that minimises |matrix q|.
template <int N>
Eigen::Matrix<omReal64, N, 1> leastDirection(const Eigen::Matrix<omReal64, N, N>& matrix) {
  return Eigen::JacobiSVD<Eigen::Matrix<omReal64, N, N>>(matrix, Eigen::ComputeFullV).matrixV().col(N - 1);
}

/// The quadratic coefficients (xy / √2, xx, yy) q in sheared coordinates that minimise |corner q| under the constraint
/// that the coefficients in the coordinates before the shear have length 1.
///
/// A singular vector has errors relative to its largest element, which is not accurate enough: for a long and narrow
/// cloud the column of xx is the longest and its coefficient the smallest. A step of inverse iteration makes every
/// element accurate, since errors of triangular solutions do not depend on the scaling of columns (Higham2002, chapter
/// 8).
Eigen::Vector3d leastSheared(Eigen::Matrix3d corner, omReal64 shear) {
  const omReal64 slope = s_sqrt2 * shear;
  Eigen::Matrix3d toSheared;
  toSheared << 1, 0, slope, slope, 1, shear * shear, 0, 0, 1;
  Eigen::Matrix3d fromSheared;
  fromSheared << 1, 0, -slope, -slope, 1, shear * shear, 0, 0, 1;
  const Eigen::Vector3d start = fromSheared.transpose() * leastDirection<3>(corner * toSheared);
  // A pivot is 0 where the conic passes through all points. The replacement is far below rounding but prevents
  // overflow.
  const omReal64 smallestPivot = NumericLimits<omReal64>::s_eps * NumericLimits<omReal64>::s_eps * corner.norm();
  for (int k = 0; k < 3; ++k)
    if (!(std::abs(corner(k, k)) > smallestPivot)) corner(k, k) = smallestPivot;
  const Eigen::Vector3d half = corner.transpose().triangularView<Eigen::Lower>().solve(start);
  const Eigen::Vector3d q = corner.triangularView<Eigen::Upper>().solve(half);
  return q / (fromSheared * q).norm();
}

/// The conic or quadric of least algebraic distance in the frame, from the triangle: the quadratic coefficients are the
/// singular vector of its lower right corner, the linear ones then follow by substitution.
template <std::size_t D>
void bestQuadric(const typename QuadricSizes<D>::Triangle& triangle, const CloudFrame<D>& frame,
                 typename QuadricSizes<D>::Linear& linear, typename QuadricSizes<D>::Quadratic& quadratic) {
  constexpr int nbLinear = static_cast<int>(QuadricSizes<D>::nbLinear);
  constexpr int nbQuadratic = static_cast<int>(QuadricSizes<D>::nbQuadratic);
  if constexpr (D == 2) {
    const Eigen::Matrix3d corner = triangle.template bottomRightCorner<3, 3>();
    quadratic = frame.isFlat ? leastSheared(corner, frame.shear) : leastDirection<3>(corner);
  } else {
    quadratic = leastDirection<nbQuadratic>(triangle.template bottomRightCorner<nbQuadratic, nbQuadratic>());
  }
  linear = -triangle.template topLeftCorner<nbLinear, nbLinear>().template triangularView<Eigen::Upper>().solve(
      triangle.template topRightCorner<nbLinear, nbQuadratic>() * quadratic);
}

/// Computes frame, rank and coefficients. Returns false, and the rank, when the samples do not determine the conic or
/// quadric.
template <std::size_t D>
bool quadricInDimension(const SampleView& samples, CloudFrame<D>& frame, typename QuadricSizes<D>::Linear& linear,
                        typename QuadricSizes<D>::Quadratic& quadratic, std::size_t& rank) {
  typename QuadricSizes<D>::Triangle triangle;
  const auto fold = [](const SampleView& all, CloudFrame<D>& found) {
    if constexpr (D == 2) detail::alignWithFlatCloud(all, found);
    return quadricTriangle<D>(all, found);
  };
  if (!framedTriangle(samples, fold, frame, triangle, rank)) return false;
  constexpr std::size_t nbColumns = QuadricSizes<D>::nbColumns;
  rank = rankOfTriangle(triangle, negligiblePart(samples.nbSamples, nbColumns, frame.coarseness));
  if (rank + 1 < nbColumns) return false;
  bestQuadric<D>(triangle, frame, linear, quadratic);
  return true;
}

/// Transforms an ellipse from the coordinates of an aligned frame to those before the shear: the matrix whose columns
/// are the two radius vectors is sheared, and its singular values are the new radii. The centre (u, v) is relative to
/// the frame's origin.
void removeAlignment(const CloudFrame<2>& frame, omReal64& u, omReal64& v, omReal64& major, omReal64& minor,
                     omReal64& direction) {
  const omReal64 co = std::cos(direction);
  const omReal64 si = std::sin(direction);
  const omReal64 xx = major * co;
  const omReal64 xy = -minor * si;
  const omReal64 yx = major * si + frame.shear * xx;
  const omReal64 yy = minor * co + frame.shear * xy;
  // The matrix is the sum of a rotation and a reflection, each times a factor. The largest singular value is the sum of
  // the factors, and its direction lies half way between those of the two.
  const omReal64 rotated = std::hypot(xx + yy, yx - xy);
  const omReal64 reflected = std::hypot(xx - yy, yx + xy);
  const omReal64 area = major * minor;
  major = (rotated + reflected) / 2;
  minor = std::min(area / major, major);
  direction = reflected == 0 ? 0 : (std::atan2(yx - xy, xx + yy) + std::atan2(yx + xy, xx - yy)) / 2;
  v += frame.shear * u;
  if (frame.isSteep) {
    std::swap(u, v);
    direction = reflected == 0 ? 0 : s_pi / 2 - direction;
  }
  if (direction < 0) direction += s_pi;
  if (direction >= s_pi) direction -= s_pi;
}

}  // namespace

bool circleFromSamples(const SampleView& samples, omReal64& cx, omReal64& cy, omReal64& radius, std::size_t& rank) {
  std::array<omReal64, 2> center{};
  if (!sphereInDimension<2>(samples, center, radius, rank)) return false;
  cx = center[0];
  cy = center[1];
  return true;
}

bool sphereFromSamples(const SampleView& samples, omReal64& cx, omReal64& cy, omReal64& cz, omReal64& radius,
                       std::size_t& rank) {
  std::array<omReal64, 3> center{};
  if (!sphereInDimension<3>(samples, center, radius, rank)) return false;
  cx = center[0];
  cy = center[1];
  cz = center[2];
  return true;
}

bool ellipseFromSamples(const SampleView& samples, omReal64& cx, omReal64& cy, omReal64& a, omReal64& b,
                        omReal64& theta, std::size_t& rank) {
  CloudFrame<2> frame;
  QuadricSizes<2>::Linear linear;
  QuadricSizes<2>::Quadratic quadratic;
  if (!quadricInDimension(samples, frame, linear, quadratic, rank)) return false;
  const EllipseConic conic{quadratic(1), s_sqrt2 * quadratic(0), quadratic(2), linear(0), linear(1), linear(2), 0, 0};
  omReal64 u = 0;
  omReal64 v = 0;
  omReal64 major = 0;
  omReal64 minor = 0;
  omReal64 direction = 0;
  if (!ellipseFromConic(conic, u, v, major, minor, direction)) return false;
  if (frame.isFlat) removeAlignment(frame, u, v, major, minor, direction);
  const omReal64 reach = frame.extent * (std::abs(u) + std::abs(v) + major);
  if (!std::isfinite(reach) || !(frame.extent * minor > 0)) return false;
  theta = direction;
  cx = frame.origin[0] + frame.extent * u;
  cy = frame.origin[1] + frame.extent * v;
  a = frame.extent * major;
  b = frame.extent * minor;
  return true;
}

bool ellipsoidFromSamples(const SampleView& samples, EllipsoidParameters& ellipsoid, std::size_t& rank) {
  CloudFrame<3> frame;
  QuadricSizes<3>::Linear linear;
  QuadricSizes<3>::Quadratic q;
  if (!quadricInDimension(samples, frame, linear, q, rank)) return false;
  const EllipsoidQuadric quadric{
      q(3), q(4), q(5), s_sqrt2 * q(0), s_sqrt2 * q(1), s_sqrt2 * q(2), linear(0), linear(1), linear(2), linear(3),
      0,    0,    0};
  EllipsoidParameters found;
  if (!convertEllipsoidFromQuadratic(quadric, found)) return false;
  const omReal64 reach = frame.extent * (std::abs(found.cx) + std::abs(found.cy) + std::abs(found.cz) + found.a);
  if (!std::isfinite(reach) || !(frame.extent * found.c > 0)) return false;
  ellipsoid = {frame.origin[0] + frame.extent * found.cx,
               frame.origin[1] + frame.extent * found.cy,
               frame.origin[2] + frame.extent * found.cz,
               frame.extent * found.a,
               frame.extent * found.b,
               frame.extent * found.c,
               found.alpha,
               found.beta,
               found.chi};
  return true;
}

}  // namespace ormix

#include <ORMIXMath/Algebra/EigenBridge.h>
#include <ORMIXMath/Algebra/SmallTriangle.h>
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
using detail::SmallMatrix;
using detail::SmallVector;

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

/// The triangle of all samples folded so far.
template <class Qr>
auto triangleOf(const Qr& qr) {
  return SmallMatrix<Qr::s_nbColumns>{qr.triangle()};
}

/// A small matrix as one of Eigen, for its decompositions.
template <std::size_t N>
auto toEigen(const SmallMatrix<N>& a) {
  constexpr int size = static_cast<int>(N);
  return Eigen::Matrix<omReal64, size, size>(
      Eigen::Map<const Eigen::Matrix<omReal64, size, size, Eigen::RowMajor>>(a.values.data()));
}

/// Whether no coordinate, the first D columns of a triangle, has a root mean square beyond what fits the frame.
template <std::size_t D, std::size_t N>
bool isWithin(const SmallMatrix<N>& triangle, std::size_t nbSamples) {
  constexpr omReal64 largestSpread = 8;  // in extents
  omReal64 largest = 0;
  for (std::size_t column = 0; column < D; ++column) {
    omReal64 square = 0;
    for (std::size_t row = 0; row <= column; ++row) square += triangle(row, column) * triangle(row, column);
    if (!(square <= largest)) largest = square;
  }
  return largest <= largestSpread * largestSpread * static_cast<omReal64>(nbSamples);
}

template <std::size_t N>
bool allFinite(const SmallMatrix<N>& a) {
  return std::all_of(a.values.begin(), a.values.end(), [](omReal64 value) { return std::isfinite(value); });
}

/// The triangle of all samples in a frame. The frame is computed from a part of the samples; where the triangle shows
/// that the others extend much farther (many samples coincide), it is computed from all samples instead. Returns false,
/// and the rank, when there is no frame or something is not finite: rank 1 for samples that are all equal, 0 otherwise.
template <std::size_t D, class Fold, class Triangle>
bool framedTriangle(const SampleView& samples, const Fold& fold, CloudFrame<D>& frame, Triangle& triangle,
                    std::size_t& rank) {
  rank = 0;
  if (samples.empty()) return false;
  for (const std::size_t nbUsed : {detail::s_nbFrameSamples, samples.nbSamples}) {
    frame = detail::cloudFrame<D>(samples, nbUsed);
    if (frame.extent > 0) triangle = fold(samples, frame);
    if (nbUsed >= samples.nbSamples || (frame.extent > 0 && isWithin<D>(triangle, samples.nbSamples))) break;
  }
  if (frame.extent > 0) return allFinite(triangle);
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

/// The same of a triangle; its singular values are computed only where bounds do not settle that all count.
template <std::size_t N>
std::size_t rankOfTriangle(const SmallMatrix<N>& triangle, omReal64 negligible) {
  if (isSurelyRegular(triangle, negligible)) return N;
  using Matrix = Eigen::Matrix<omReal64, static_cast<int>(N), static_cast<int>(N)>;
  return rankOf(Eigen::JacobiSVD<Matrix>(toEigen(triangle)).singularValues(), negligible);
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
template <std::size_t D>
bool placeSphere(const SmallVector<D + 1>& solution, const CloudFrame<D>& frame, std::array<omReal64, D>& center,
                 omReal64& radius) {
  omReal64 square = solution[D];
  std::array<omReal64, D> placed;
  bool isFinite = true;
  for (std::size_t d = 0; d < D; ++d) {
    const omReal64 offset = solution[d] / 2;
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

/// The solution of a triangle with a right-hand side from its singular values, and its rank; zeros where that is
/// not full.
template <std::size_t N>
[[gnu::noinline]] SmallVector<N> solveBySvd(const SmallMatrix<N>& triangle, const SmallVector<N>& right,
                                            omReal64 negligible, std::size_t& rank) {
  constexpr int size = static_cast<int>(N);
  using Vector = Eigen::Matrix<omReal64, size, 1>;
  const Eigen::JacobiSVD<Eigen::Matrix<omReal64, size, size>> svd(toEigen(triangle),
                                                                  Eigen::ComputeFullU | Eigen::ComputeFullV);
  SmallVector<N> solution{};
  rank = rankOf(svd.singularValues(), negligible);
  if (rank < N) return solution;
  const Vector given(right.data());
  const Vector weights = (svd.matrixU().transpose() * given).cwiseQuotient(svd.singularValues());
  const Vector found = svd.matrixV() * weights;
  std::copy(found.data(), found.data() + N, solution.begin());
  return solution;
}

/// The same; where bounds show the rank to be full, by substitution.
template <std::size_t N>
SmallVector<N> solveByRank(const SmallMatrix<N>& triangle, const SmallVector<N>& right, omReal64 negligible,
                           std::size_t& rank) {
  if (!isSurelyRegular(triangle, negligible)) return solveBySvd(triangle, right, negligible, rank);
  rank = N;
  return solve(triangle, right);
}

/// circleFromSamples() for D = 2 and sphereFromSamples() for D = 3.
template <std::size_t D>
bool sphereInDimension(const SampleView& samples, std::array<omReal64, D>& center, omReal64& radius,
                       std::size_t& rank) {
  CloudFrame<D> frame;
  SmallMatrix<D + 2> triangle;
  if (!framedTriangle(samples, sphereTriangle<D>, frame, triangle, rank)) return false;
  SmallVector<D + 1> right;
  for (std::size_t i = 0; i <= D; ++i) right[i] = triangle(i, D + 1);
  const SmallVector<D + 1> solution = solveByRank(detail::partOf<D + 1>(triangle, 0), right,
                                                  negligiblePart(samples.nbSamples, D + 1, frame.coarseness), rank);
  return rank == D + 1 && placeSphere(solution, frame, center, radius);
}

constexpr omReal64 s_sqrt2 = 1.4142135623730951;

/// Sizes of the system for a conic (D = 2) or a quadric (D = 3).
template <std::size_t D>
struct QuadricSizes {
  static constexpr std::size_t nbLinear = D + 1;
  static constexpr std::size_t nbQuadratic = D * (D + 1) / 2;
  static constexpr std::size_t nbColumns = nbLinear + nbQuadratic;
  using Triangle = SmallMatrix<nbColumns>;
  using Linear = SmallVector<nbLinear>;
  using Quadratic = SmallVector<nbQuadratic>;
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
template <std::size_t N>
SmallVector<N> leastDirection(const SmallMatrix<N>& matrix) {
  constexpr int size = static_cast<int>(N);
  SmallVector<N> q;
  Eigen::Map<Eigen::Matrix<omReal64, size, 1>>(q.data()) =
      Eigen::JacobiSVD<Eigen::Matrix<omReal64, size, size>>(toEigen(matrix), Eigen::ComputeFullV)
          .matrixV()
          .col(size - 1);
  return q;
}

/// The quadratic coefficients (xy / √2, xx, yy) q in sheared coordinates that minimise |corner q| under the constraint
/// that the coefficients in the coordinates before the shear have length 1; `corner` is an upper triangle.
///
/// The vector sought is the one that the inverse of `corner`, in the coordinates before the shear, makes longest, and
/// the adjugate stands for the inverse: it exists where the conic passes through all points, too.
SmallVector<3> leastConic(const SmallMatrix<3>& corner, bool isFlat, omReal64 shear) {
  const SmallMatrix<3> adjugate = adjugateOf(corner);
  const omReal64 slope = s_sqrt2 * shear;
  const SmallMatrix<3> fromSheared{{1, 0, -slope, -slope, 1, shear * shear, 0, 0, 1}};
  SmallVector<3> start;
  if (!dominantLeftVector(isFlat ? product(fromSheared, adjugate) : adjugate, start)) {
    const SmallMatrix<3> toSheared{{1, 0, slope, slope, 1, shear * shear, 0, 0, 1}};
    start = leastDirection(product(corner, toSheared));
  }
  if (!isFlat) return start;
  // A singular vector has errors relative to its largest element, which is not accurate enough: for a long and narrow
  // cloud the column of xx is the longest and its coefficient the smallest. A step of inverse iteration makes every
  // element accurate, since errors of triangular solutions do not depend on the scaling of columns (Higham2002,
  // chapter 8).
  SmallVector<3> q = product(adjugate, product(product(start, fromSheared), adjugate));
  const omReal64 length = detail::lengthOf(product(fromSheared, q));
  for (omReal64& value : q) value /= length;
  return q;
}

/// The conic or quadric of least algebraic distance in the frame, from the triangle: the quadratic coefficients are the
/// singular vector of its lower right corner, the linear ones then follow by substitution.
template <std::size_t D>
void bestQuadric(const typename QuadricSizes<D>::Triangle& triangle, const CloudFrame<D>& frame,
                 typename QuadricSizes<D>::Linear& linear, typename QuadricSizes<D>::Quadratic& quadratic) {
  constexpr std::size_t nbLinear = QuadricSizes<D>::nbLinear;
  constexpr std::size_t nbQuadratic = QuadricSizes<D>::nbQuadratic;
  const SmallMatrix<nbQuadratic> corner = detail::partOf<nbQuadratic>(triangle, nbLinear);
  if constexpr (D == 2)
    quadratic = leastConic(corner, frame.isFlat, frame.shear);
  else
    quadratic = leastDirection(corner);
  for (std::size_t i = 0; i < nbLinear; ++i) {
    linear[i] = 0;
    for (std::size_t j = 0; j < nbQuadratic; ++j) linear[i] -= triangle(i, nbLinear + j) * quadratic[j];
  }
  linear = solve(detail::partOf<nbLinear>(triangle, 0), linear);
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
  const EllipseConic conic{quadratic[1], s_sqrt2 * quadratic[0], quadratic[2], linear[0], linear[1], linear[2], 0, 0};
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
      q[3], q[4], q[5], s_sqrt2 * q[0], s_sqrt2 * q[1], s_sqrt2 * q[2], linear[0], linear[1], linear[2], linear[3],
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

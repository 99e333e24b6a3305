#include <ORMIXMath/Algebra/EigenBridge.h>
#include <ORMIXMath/Algebra/TallQr.h>
#include <ORMIXMath/Fitting/ShapesFromSamples.h>
#include <ORMIXMath/Shape/EllipseConic.h>
#include <ORMIXUtil/NumericLimits.h>

#include <Eigen/SVD>
#include <algorithm>
#include <array>
#include <cmath>

namespace ormix {
namespace {

/// Where the cloud is and how far it reaches: enough to bring the coordinates near 1, and exactness is not needed, for
/// the solution does not depend on it but for rounding.
template <std::size_t D>
struct CloudFrame {
  std::array<omReal64, D> origin{};
  omReal64 extent = 0;      ///< A power of two; 0 when all samples looked at are one point, or something is not finite.
  omReal64 coarseness = 0;  ///< What rounding of the coordinates is, in parts of the extent.
};

// Samples looked at for the frame at first.
constexpr std::size_t s_nbFrameSamples = 64;

/// The sample number k of those looked at: spread over all by multiples of the golden ratio, since even steps may be in
/// step with the data.
inline std::size_t spreadIndex(std::size_t k, std::size_t nbSamples) {
  constexpr omReal64 golden = 0.6180339887498949;
  const omReal64 turns = static_cast<omReal64>(k) * golden;
  const auto index = static_cast<std::size_t>((turns - std::floor(turns)) * static_cast<omReal64>(nbSamples));
  return std::min(index, nbSamples - 1);
}

template <std::size_t D>
CloudFrame<D> cloudFrame(const SampleView& samples, std::size_t nbLookedAt) {
  CloudFrame<D> frame;
  const std::size_t nbUsed = std::min(samples.nbSamples, nbLookedAt);
  const auto used = [&](std::size_t k) {
    return samples[nbUsed == samples.nbSamples ? k : spreadIndex(k, samples.nbSamples)];
  };
  const omReal64* first = used(0);
  for (std::size_t k = 0; k < nbUsed; ++k)
    for (std::size_t d = 0; d < D; ++d) frame.origin[d] += (used(k)[d] - first[d]) / static_cast<omReal64>(nbUsed);
  omReal64 largest = 0;
  for (std::size_t d = 0; d < D; ++d) {
    frame.origin[d] += first[d];
    largest = std::max(largest, std::abs(frame.origin[d]));
  }
  omReal64 reach = 0;
  for (std::size_t k = 0; k < nbUsed; ++k)
    for (std::size_t d = 0; d < D; ++d) reach = std::max(reach, std::abs(used(k)[d] - frame.origin[d]));
  if (!(reach > 0) || !std::isfinite(reach)) return frame;
  // A power of two, so that scaling is exact; held where its inverse is a number, too.
  frame.extent = std::ldexp(1.0, std::clamp(std::ilogb(reach) + 1, -1000, 1000));
  frame.coarseness = NumericLimits<omReal64>::s_eps * std::max(1.0, largest / frame.extent);
  return frame;
}

/// Folds all samples into the triangle; `fill` writes the columns of up to a block of them.
template <class Qr, class Fill>
void foldSamples(const SampleView& samples, Qr& qr, const Fill& fill) {
  constexpr std::size_t blockRows = Qr::s_blockRows;
  for (std::size_t start = 0; start < samples.nbSamples; start += blockRows) {
    const std::size_t nbRows = std::min(blockRows, samples.nbSamples - start);
    fill(samples[start], nbRows);
    qr.fold(nbRows);
  }
}

template <class Qr>
auto triangleOf(const Qr& qr) {
  constexpr int size = static_cast<int>(Qr::s_nbColumns);
  return Eigen::Matrix<omReal64, size, size>(
      Eigen::Map<const Eigen::Matrix<omReal64, size, size, Eigen::RowMajor>>(qr.triangle().data()));
}

/// The triangle of all samples in a frame. A part of them gives the frame; where that shows to have been misled (many
/// samples at one place, and the shape made by the others) all of them give it. False, with the rank, without a frame:
/// one point, as often as it may occur, has rank 1, samples that are not finite have 0.
template <std::size_t D, class Fold, class Triangle>
bool framedTriangle(const SampleView& samples, const Fold& fold, CloudFrame<D>& frame, Triangle& triangle,
                    std::size_t& rank) {
  constexpr omReal64 plausibleSpread = 8;
  rank = 0;
  if (samples.empty()) return false;
  for (const std::size_t nbLookedAt : {s_nbFrameSamples, samples.nbSamples}) {
    frame = cloudFrame<D>(samples, nbLookedAt);
    if (!(frame.extent > 0)) continue;
    triangle = fold(samples, frame);
    const omReal64 spread = triangle.template leftCols<static_cast<int>(D)>().colwise().norm().maxCoeff();
    if (spread <= plausibleSpread * std::sqrt(static_cast<omReal64>(samples.nbSamples))) break;
  }
  if (frame.extent > 0) return triangle.allFinite();
  rank = std::all_of(frame.origin.begin(), frame.origin.end(), [](omReal64 value) { return std::isfinite(value); });
  return false;
}

/// Singular values that are not zero: neither by the usual relative rule nor against the rounding of the coordinates,
/// which makes collinear points look like the arc of an enormous circle.
template <class Values>
Eigen::Index rankOf(const Values& values, std::size_t nbRows, omReal64 coarseness) {
  const auto largestSide = static_cast<omReal64>(std::max(nbRows, static_cast<std::size_t>(values.size())));
  const omReal64 part = std::max(largestSide * NumericLimits<omReal64>::s_eps, 4 * coarseness);
  return (values.array() > part * values(0)).count();
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

/// Moves a sphere of the frame, its solution being twice the centre and the power of the frame's origin, to where the
/// samples are; false when it is none of finite size.
template <std::size_t D, class Solution>
bool placeSphere(const Solution& solution, const CloudFrame<D>& frame, std::array<omReal64, D>& centre,
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
  centre = placed;
  radius = placedRadius;
  return true;
}

template <std::size_t D>
bool sphereInDimension(const SampleView& samples, std::array<omReal64, D>& centre, omReal64& radius,
                       std::size_t& rank) {
  constexpr int nbUnknowns = static_cast<int>(D) + 1;
  using Matrix = Eigen::Matrix<omReal64, nbUnknowns, nbUnknowns>;
  using Vector = Eigen::Matrix<omReal64, nbUnknowns, 1>;
  CloudFrame<D> frame;
  Eigen::Matrix<omReal64, nbUnknowns + 1, nbUnknowns + 1> triangle;
  if (!framedTriangle(samples, sphereTriangle<D>, frame, triangle, rank)) return false;
  const Eigen::JacobiSVD<Matrix> svd(Matrix(triangle.template topLeftCorner<nbUnknowns, nbUnknowns>()),
                                     Eigen::ComputeFullU | Eigen::ComputeFullV);
  rank = static_cast<std::size_t>(rankOf(svd.singularValues(), samples.nbSamples, frame.coarseness));
  if (rank < static_cast<std::size_t>(nbUnknowns)) return false;
  const Vector weights = (svd.matrixU().transpose() * triangle.template topRightCorner<nbUnknowns, 1>())
                             .cwiseQuotient(svd.singularValues());
  return placeSphere(Vector(svd.matrixV() * weights), frame, centre, radius);
}

constexpr omReal64 s_sqrt2 = 1.4142135623730951;

/// Sizes of a conic's (D = 2) or quadric's (D = 3) system.
template <std::size_t D>
struct QuadricSizes {
  static constexpr std::size_t nbLinear = D + 1;
  static constexpr std::size_t nbQuadratic = D * (D + 1) / 2;
  static constexpr std::size_t nbColumns = nbLinear + nbQuadratic;
  using Triangle = Eigen::Matrix<omReal64, static_cast<int>(nbColumns), static_cast<int>(nbColumns)>;
  using Linear = Eigen::Matrix<omReal64, static_cast<int>(nbLinear), 1>;
  using Quadratic = Eigen::Matrix<omReal64, static_cast<int>(nbQuadratic), 1>;
};

/// The triangle of the columns (u, v, ..., 1, sqrt(2) u v, ..., u², v², ...) in the frame's coordinates.
template <std::size_t D>
typename QuadricSizes<D>::Triangle quadricTriangle(const SampleView& samples, const CloudFrame<D>& frame) {
  const omReal64 scale = 1 / frame.extent;
  TallQr<QuadricSizes<D>::nbColumns> qr;
  foldSamples(samples, qr, [&](const omReal64* rows, std::size_t nbRows) {
    for (std::size_t d = 0; d < D; ++d)
      for (std::size_t i = 0; i < nbRows; ++i) qr.block(d)[i] = (rows[D * i + d] - frame.origin[d]) * scale;
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

/// The conic or quadric of least algebraic distance in the frame, from its triangle: the quadratic coefficients are the
/// singular vector of the triangle's last corner, the others follow.
template <std::size_t D>
void bestQuadric(const typename QuadricSizes<D>::Triangle& triangle, typename QuadricSizes<D>::Linear& linear,
                 typename QuadricSizes<D>::Quadratic& quadratic) {
  constexpr int nbLinear = static_cast<int>(QuadricSizes<D>::nbLinear);
  constexpr int nbQuadratic = static_cast<int>(QuadricSizes<D>::nbQuadratic);
  using Corner = Eigen::Matrix<omReal64, nbQuadratic, nbQuadratic>;
  const Eigen::JacobiSVD<Corner> svd(Corner(triangle.template bottomRightCorner<nbQuadratic, nbQuadratic>()),
                                     Eigen::ComputeFullU | Eigen::ComputeFullV);
  quadratic = svd.matrixV().col(nbQuadratic - 1);
  linear = -triangle.template topLeftCorner<nbLinear, nbLinear>().template triangularView<Eigen::Upper>().solve(
      triangle.template topRightCorner<nbLinear, nbQuadratic>() * quadratic);
}

/// Frame, rank and coefficients; false, with the rank, when the samples do not determine one conic or quadric.
template <std::size_t D>
bool quadricInDimension(const SampleView& samples, CloudFrame<D>& frame, typename QuadricSizes<D>::Linear& linear,
                        typename QuadricSizes<D>::Quadratic& quadratic, std::size_t& rank) {
  typename QuadricSizes<D>::Triangle triangle;
  if (!framedTriangle(samples, quadricTriangle<D>, frame, triangle, rank)) return false;
  const Eigen::JacobiSVD<typename QuadricSizes<D>::Triangle> svd(triangle);
  rank = static_cast<std::size_t>(rankOf(svd.singularValues(), samples.nbSamples, frame.coarseness));
  if (rank + 1 < QuadricSizes<D>::nbColumns) return false;
  bestQuadric<D>(triangle, linear, quadratic);
  return true;
}

}  // namespace

bool circleFromSamples(const SampleView& samples, omReal64& cx, omReal64& cy, omReal64& radius, std::size_t& rank) {
  std::array<omReal64, 2> centre{};
  if (!sphereInDimension<2>(samples, centre, radius, rank)) return false;
  cx = centre[0];
  cy = centre[1];
  return true;
}

bool sphereFromSamples(const SampleView& samples, omReal64& cx, omReal64& cy, omReal64& cz, omReal64& radius,
                       std::size_t& rank) {
  std::array<omReal64, 3> centre{};
  if (!sphereInDimension<3>(samples, centre, radius, rank)) return false;
  cx = centre[0];
  cy = centre[1];
  cz = centre[2];
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

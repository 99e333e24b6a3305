#include <ORMIXMath/Algebra/EigenBridge.h>
#include <ORMIXMath/Estimation/LinearSquares.h>

#include <Eigen/Eigenvalues>
#include <Eigen/SVD>
#include <cmath>
#include <utility>

#if defined(__x86_64__)
#define ORMIX_HAS_AVX2_VERSION 1
#endif

namespace ormix::detail {

namespace {

using Lanes [[gnu::vector_size(32), gnu::may_alias]] = omReal64;
// In the memory of the caller, whose size bounds it.
constexpr int s_nbMost = s_nbMostUnknowns;
using EigenMatrix = Eigen::Matrix<omReal64, Eigen::Dynamic, Eigen::Dynamic, 0, s_nbMost, s_nbMost>;

/// The two columns of each product, row by row of the upper triangle of all.
template <std::size_t C>
constexpr auto columnPairs() {
  std::array<std::array<std::size_t, 2>, C*(C + 1) / 2> pairs{};
  std::size_t p = 0;
  for (std::size_t a = 0; a < C; ++a)
    for (std::size_t b = a; b < C; ++b) pairs[p++] = {a, b};
  return pairs;
}

/// Adds the products from P on, as many at a time as there are registers for: each sum waits for its last addition.
template <std::size_t C, std::size_t P, std::size_t... I>
[[gnu::always_inline]] inline void addSome(const Lanes* block, std::size_t nbVectors, Lanes* sums,
                                           std::index_sequence<I...>) {
  constexpr std::size_t n = TallQr<C>::s_blockRows / 4;
  constexpr auto pairs = columnPairs<C>();
  Lanes sum[sizeof...(I)] = {sums[P + I]...};
  for (std::size_t i = 0; i < nbVectors; ++i)
    ((sum[I] += block[pairs[P + I][0] * n + i] * block[pairs[P + I][1] * n + i]), ...);
  ((sums[P + I] = sum[I]), ...);
}
template <std::size_t C, std::size_t P = 0>
[[gnu::always_inline]] inline void addProducts(const Lanes* block, std::size_t nbVectors, Lanes* sums) {
  constexpr std::size_t nbMost = 12;
  constexpr std::size_t nb = std::min(nbMost, C * (C + 1) / 2 - P);
  addSome<C, P>(block, nbVectors, sums, std::make_index_sequence<nb>());
  if constexpr (P + nb < C * (C + 1) / 2) addProducts<C, P + nb>(block, nbVectors, sums);
}

#if defined(ORMIX_HAS_AVX2_VERSION)
/// The same operations in the same order, four lanes in one register.
template <std::size_t C>
[[gnu::target("avx2")]] void addProductsAvx2(const Lanes* block, std::size_t nbVectors, Lanes* sums) {
  addProducts<C>(block, nbVectors, sums);
}
#endif

/// r with columns of length 1.
EigenMatrix scaledTriangle(const LinearSquares& squares, const UnknownValues& lengths) {
  const auto n = static_cast<Eigen::Index>(squares.n);
  EigenMatrix scaled = EigenMatrix::Zero(n, n);
  for (std::size_t k = 0; k < squares.n; ++k)
    for (std::size_t c = k; c < squares.n; ++c)
      scaled(static_cast<Eigen::Index>(k), static_cast<Eigen::Index>(c)) = squares(k, c) / lengths[c];
  return scaled;
}

/// The inverse of r; not finite where it has none.
UnknownMatrix inverseOfTriangle(const LinearSquares& r) {
  UnknownMatrix inverse(r.n);
  for (std::size_t c = 0; c < r.n; ++c)
    for (std::size_t k = c + 1; k-- > 0;) {
      omReal64 value = k == c ? 1 : 0;
      for (std::size_t j = k + 1; j <= c; ++j) value -= r(k, j) * inverse(j, c);
      inverse(k, c) = value / r(k, k);
    }
  return inverse;
}

omReal64 leastReciprocalCondition(const UnknownMatrix& inverse, const UnknownValues& lengths) {
  omReal64 square = 0;
  for (std::size_t k = 0; k < inverse.n; ++k)
    for (std::size_t c = k; c < inverse.n; ++c) square += std::pow(lengths[k] * inverse(k, c), 2);
  const omReal64 bound = 1 / std::sqrt(static_cast<omReal64>(inverse.n) * square);
  return std::isfinite(bound) ? bound : 0;
}

}  // namespace

bool isFinite(const LinearSquares& squares) {
  const auto end = squares.values.begin() + static_cast<std::ptrdiff_t>(squares.n * (squares.n + 1));
  return std::isfinite(squares.cost) &&
         std::all_of(squares.values.begin(), end, [](omReal64 value) { return std::isfinite(value); });
}

UnknownValues columnLengths(const LinearSquares& squares) {
  UnknownValues lengths;
  for (std::size_t c = 0; c < squares.n; ++c) {
    omReal64 square = 0;
    for (std::size_t k = 0; k <= c; ++k) square += squares(k, c) * squares(k, c);
    lengths[c] = std::sqrt(square);
  }
  return lengths;
}

omReal64 leastReciprocalCondition(const LinearSquares& squares) {
  return leastReciprocalCondition(inverseOfTriangle(squares), columnLengths(squares));
}

UnknownValues dampedStep(const LinearSquares& squares, const UnknownValues& lengths, omReal64 damping) {
  constexpr omReal64 leastLength = 1e-8;
  const std::size_t n = squares.n;
  LinearSquares r;
  r.n = n;
  std::copy_n(squares.values.begin(), n * (n + 1), r.values.begin());
  const omReal64 longest = *std::max_element(lengths.begin(), lengths.begin() + static_cast<std::ptrdiff_t>(n));
  // A row for each unknown, which holds it back, is rotated into the triangle (More1978).
  for (std::size_t held = 0; damping > 0 && held < n; ++held) {
    UnknownValues row{};
    omReal64 right = 0;
    row[held] = std::sqrt(damping) * std::max(lengths[held], leastLength * longest);
    for (std::size_t k = held; k < n; ++k) {
      const omReal64 length = std::hypot(r(k, k), row[k]);
      if (length == 0) continue;
      const omReal64 co = r(k, k) / length, si = row[k] / length;
      const auto rotate = [co, si](omReal64& above, omReal64& below) {
        const omReal64 kept = above;
        above = co * kept + si * below;
        below = co * below - si * kept;
      };
      for (std::size_t c = k; c < n; ++c) rotate(r(k, c), row[c]);
      rotate(r(k, n), right);
    }
  }
  UnknownValues x{};
  for (std::size_t k = n; k-- > 0;) {
    omReal64 rest = -r.right(k);
    for (std::size_t c = k + 1; c < n; ++c) rest -= r(k, c) * x[c];
    x[k] = rest / r(k, k);
  }
  return x;
}

bool factorise(LinearSquares& squares) {
  // The errors of r are a few roundings over the square of this.
  constexpr omReal64 leastRatio = 1e-3;
  const std::size_t n = squares.n;
  for (std::size_t k = 0; k < n; ++k) {
    for (std::size_t c = 0; c < k; ++c) squares(k, c) = 0;
    for (std::size_t j = 0; j < k; ++j)
      for (std::size_t c = k; c <= n; ++c) squares(k, c) -= squares(j, k) * squares(j, c);
    if (!(squares(k, k) > 0)) return false;
    const omReal64 pivot = std::sqrt(squares(k, k));
    for (std::size_t c = k; c <= n; ++c) squares(k, c) /= pivot;
  }
  return leastReciprocalCondition(squares) > leastRatio;
}

bool hasPivots(const LinearSquares& squares, const UnknownValues& lengths) {
  constexpr omReal64 leastPivot = 1e-12;
  for (std::size_t k = 0; k < squares.n; ++k)
    if (!(std::abs(squares(k, k)) > leastPivot * lengths[k])) return false;
  return true;
}

omReal64 squaredChange(const LinearSquares& squares, const UnknownValues& x) {
  omReal64 square = 0;
  for (std::size_t k = 0; k < squares.n; ++k) {
    omReal64 sum = 0;
    for (std::size_t c = k; c < squares.n; ++c) sum += squares(k, c) * x[c];
    square += sum * sum;
  }
  return square;
}

TriangleInverse inverseOf(const LinearSquares& squares, omReal64 threshold) {
  // Down to this ratio the eigenvalues of the products have as many digits as a condition needs.
  constexpr omReal64 leastRatio = 1e-4;
  const std::size_t n = squares.n;
  TriangleInverse inverse;
  inverse.lengths = columnLengths(squares);
  for (std::size_t c = 0; c < n; ++c)
    if (!(inverse.lengths[c] > 0)) inverse.lengths[c] = 1;
  const EigenMatrix scaled = scaledTriangle(squares, inverse.lengths);
  inverse.undetermined = UnknownMatrix(n);
  inverse.rank = n;
  inverse.left = inverseOfTriangle(squares);
  if (leastReciprocalCondition(inverse.left, inverse.lengths) > leastRatio) {
    const Eigen::SelfAdjointEigenSolver<EigenMatrix> solver(scaled.transpose() * scaled, Eigen::EigenvaluesOnly);
    const auto& values = solver.eigenvalues();
    inverse.ratio = std::sqrt(values(0) / values(values.size() - 1));
    if (inverse.ratio > threshold) return inverse;
  }
  const Eigen::JacobiSVD<EigenMatrix> svd(scaled, Eigen::ComputeFullV);
  const auto& values = svd.singularValues();
  inverse.ratio = values(values.size() - 1) / values(0);
  inverse.left = UnknownMatrix(n);
  inverse.rank = 0;
  for (std::size_t k = 0; k < n; ++k) {
    const auto column = static_cast<Eigen::Index>(k);
    const bool isDetermined = values(column) > threshold * values(0);
    inverse.rank += isDetermined;
    UnknownMatrix& target = isDetermined ? inverse.left : inverse.undetermined;
    for (std::size_t i = 0; i < n; ++i)
      target(i, k) = svd.matrixV()(static_cast<Eigen::Index>(i), column) / inverse.lengths[i] /
                     (isDetermined ? values(column) : 1);
  }
  return inverse;
}

void spreadBy(const LinearSquares& meat, UnknownMatrix& left) {
  const std::size_t n = left.n;
  UnknownMatrix image(n), spread(n);
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = 0; j < n; ++j)
      for (std::size_t c = j; c < n; ++c) image(i, j) += left(c, i) * meat(j, c);
  for (std::size_t i = 0; i < n; ++i)
    for (std::size_t j = 0; j < n; ++j)
      for (std::size_t c = 0; c < n; ++c) spread(i, j) += left(i, c) * image(c, j);
  left = spread;
}

template <std::size_t C>
void ColumnProducts<C>::add(omReal64* block, std::size_t nbRows) {
  const std::size_t nbVectors = (nbRows + s_nbLanes - 1) / s_nbLanes;
  for (std::size_t c = 0; c < C; ++c) {
    omReal64* column = block + c * TallQr<C>::s_blockRows;
    std::fill(column + nbRows, column + s_nbLanes * nbVectors, 0.0);
  }
  const auto* vectors = reinterpret_cast<const Lanes*>(block);
  auto* sums = reinterpret_cast<Lanes*>(_sums.data());
#if defined(ORMIX_HAS_AVX2_VERSION)
  if (__builtin_cpu_supports("avx2")) return addProductsAvx2<C>(vectors, nbVectors, sums);
#endif
  addProducts<C>(vectors, nbVectors, sums);
}

template <std::size_t C>
bool ColumnProducts<C>::toSquares(LinearSquares& squares) const {
  constexpr std::size_t n = C - 1;
  const auto sum = [this](std::size_t a, std::size_t b) {
    const omReal64* lanes = &_sums[(a * (2 * C - a - 1) / 2 + b) * s_nbLanes];
    return (lanes[0] + lanes[1]) + (lanes[2] + lanes[3]);
  };
  for (std::size_t k = 0; k < n; ++k)
    for (std::size_t c = k; c <= n; ++c) squares(k, c) = sum(k, c);
  squares.cost = sum(n, n);
  return factorise(squares);
}

template class ColumnProducts<3>;
template class ColumnProducts<4>;
template class ColumnProducts<5>;
template class ColumnProducts<6>;
template class ColumnProducts<7>;
template class ColumnProducts<8>;
template class ColumnProducts<9>;
template class ColumnProducts<10>;
template class ColumnProducts<16>;

}  // namespace ormix::detail

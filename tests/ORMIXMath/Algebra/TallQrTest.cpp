#include "MatrixSamples.h"

#include <ORMIXMath/Algebra/QrDecomposition.h>
#include <ORMIXMath/Algebra/TallQr.h>

namespace ormix {
namespace {

/// The triangle of a matrix, by the vectors of this processor or by those of every one.
template <std::size_t C, std::size_t Right = 0>
TallQr<C, Right> fold(const RealMatrix& a, bool isPortable) {
  TallQr<C, Right> qr;
  for (std::size_t start = 0; start < a.size1(); start += TallQr<C, Right>::s_blockRows) {
    const std::size_t nbRows = std::min(TallQr<C, Right>::s_blockRows, a.size1() - start);
    for (std::size_t c = 0; c < C; ++c)
      for (std::size_t i = 0; i < nbRows; ++i) qr.block(c)[i] = a(start + i, c);
    isPortable ? qr.foldPortable(nbRows) : qr.fold(nbRows);
  }
  return qr;
}

template <std::size_t C>
void expectTriangleOf(const RealMatrix& a) {
  RealMatrix q, r;
  ASSERT_TRUE(qrDecomposition(a, q, r));
  const TallQr<C> qr = fold<C>(a, false);
  EXPECT_EQ(qr.triangle(), fold<C>(a, true).triangle());
  for (std::size_t i = 0; i < C; ++i) {
    // Rows of the triangle are determined up to their sign.
    const omReal64 sign = i < r.size1() && qr(i, i) < 0 ? -1 : 1;
    for (std::size_t j = 0; j < C; ++j) {
      const omReal64 expected = i < r.size1() ? r(i, j) : 0;
      EXPECT_NEAR(sign * qr(i, j), expected, 1e-13 * std::sqrt(double(a.size1()))) << i << ' ' << j;
    }
  }
}

TEST(TallQr, IsTheTriangleOfAllRowsWithTheSameBitsOnEveryProcessor) {
  support::Random draw(41);
  for (const std::size_t nbRows : {4U, 127U, 128U, 129U, 1000U}) {
    expectTriangleOf<4>(randomMatrix(nbRows, 4, draw));
    expectTriangleOf<6>(randomMatrix(std::max<std::size_t>(nbRows, 6), 6, draw));
  }
  expectTriangleOf<3>(randomMatrix(300, 3, draw));
  expectTriangleOf<5>(randomMatrix(300, 5, draw));
  expectTriangleOf<9>(randomMatrix(300, 9, draw));
  expectTriangleOf<16>(randomMatrix(300, 16, draw));
}

// The diagonal of the first block against rows a million times as small: no digits may cancel.
TEST(TallQr, KeepsWhatOnlySmallRowsSay) {
  support::Random draw(43);
  RealMatrix a = 1e-6 * randomMatrix(256, 3, draw);
  for (std::size_t i = 0; i < 128; ++i) a(i, 0) = 1, a(i, 1) = a(i, 2) = 0;
  const TallQr<3> qr = fold<3>(a, false);
  const auto column = [&a](std::size_t k) { return RealVector(boost::numeric::ublas::column(a, k)); };
  const omReal64 expected = inner_prod(column(0), column(1)) / norm_2(column(0));
  EXPECT_NEAR(std::abs(qr(0, 1)) / std::abs(expected), 1, 1e-13);
}

TEST(TallQr, ReflectsRightHandSidesAlong) {
  support::Random draw(42);
  const RealMatrix a = randomMatrix(1000, 5, draw);
  const TallQr<5> all = fold<5>(a, false);
  const TallQr<5, 1> right = fold<5, 1>(a, false);
  const TallQr<5, 1> portable = fold<5, 1>(a, true);
  EXPECT_EQ(right.triangle(), portable.triangle());
  for (std::size_t i = 0; i < 4; ++i)
    for (std::size_t j = 0; j < 5; ++j) EXPECT_EQ(right(i, j), all(i, j));
  EXPECT_EQ(right(4, 4), 0);
}

}  // namespace
}  // namespace ormix

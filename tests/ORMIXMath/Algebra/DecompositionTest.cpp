#include "MatrixSamples.h"

#include <ORMIXMath/Algebra/EigenDecomposition.h>
#include <ORMIXMath/Algebra/QrDecomposition.h>

namespace ormix {
namespace {

namespace ublas = boost::numeric::ublas;
using Complex = std::complex<omReal64>;

RealMatrix identity(std::size_t size) { return ublas::identity_matrix<omReal64>(size); }

TEST(QrDecomposition, RebuildsTheMatrixWithItsSignsFixed) {
  support::Random draw(31);
  for (const auto& [nbRows, nbColumns] : {std::pair{1U, 1U}, {5U, 5U}, {40U, 3U}, {3U, 6U}}) {
    const RealMatrix a = randomMatrix(nbRows, nbColumns, draw);
    RealMatrix q, r;
    ASSERT_TRUE(qrDecomposition(a, q, r));
    EXPECT_LT(largestDifference(ublas::prod(q, r), a), 1e-14);
    EXPECT_LT(largestDifference(ublas::prod(ublas::trans(q), q), identity(q.size2())), 1e-14);
    for (std::size_t i = 0; i < r.size1(); ++i) {
      EXPECT_GE(r(i, i), 0);
      for (std::size_t j = 0; j < i; ++j) EXPECT_EQ(r(i, j), 0);
    }
  }
}

TEST(QrDecomposition, InvertsTrianglesAndNamesWhatItCannot) {
  support::Random draw(32);
  RealMatrix a = randomMatrix(6, 6, draw), triangle = ublas::zero_matrix<omReal64>(6, 6);
  for (std::size_t i = 0; i < 6; ++i) {
    a(i, i) += 3;
    for (std::size_t j = i; j < 6; ++j) triangle(i, j) = a(i, j);
  }
  RealMatrix inverse;
  ASSERT_TRUE(upperTriangularInverse(a, inverse));
  EXPECT_LT(largestDifference(ublas::prod(triangle, inverse), identity(6)), 1e-14);
  const RealMatrix before = inverse;
  EXPECT_EQ(upperTriangularInverse(matrixOf({{1, 2}, {0, 0}}), inverse).getMessage(),
            "upperTriangularInverse: diagonal element 1 is zero");
  EXPECT_FALSE(upperTriangularInverse(matrixOf({{1, 2, 3}, {0, 1, 0}}), inverse));
  EXPECT_FALSE(upperTriangularInverse(matrixOf({{1e-320}}), inverse));
  EXPECT_FALSE(upperTriangularInverse(RealMatrix(), inverse));
  EXPECT_EQ(largestDifference(before, inverse), 0);
  EXPECT_FALSE(qrDecomposition(matrixOf({{1, std::nan("")}}), inverse, inverse));
}

TEST(EigenDecomposition, DiagonalisesSymmetricMatrices) {
  support::Random draw(33);
  for (const std::size_t size : {1U, 2U, 3U, 8U}) {
    const RealMatrix half = randomMatrix(size, size, draw), a = half + ublas::trans(half);
    RealVector values;
    RealMatrix vectors;
    ASSERT_TRUE(eigenDecomposition(a, values, vectors));
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
    EXPECT_LT(largestDifference(ublas::prod(ublas::trans(vectors), vectors), identity(size)), 1e-13);
    for (std::size_t k = 0; k < size; ++k) {
      const RealVector v = ublas::column(vectors, k);
      EXPECT_LT(ublas::norm_inf(ublas::prod(a, v) - values(k) * v), 1e-13);
      EXPECT_GT(v(ublas::index_norm_inf(v)), 0);
    }
  }
}

TEST(EigenDecomposition, FindsComplexPairs) {
  support::Random draw(34);
  for (const std::size_t size : {1U, 2U, 5U}) {
    const RealMatrix a = randomMatrix(size, size, draw);
    std::vector<Complex> values;
    std::vector<std::vector<Complex>> vectors;
    ASSERT_TRUE(generalEigenDecomposition(a, values, vectors));
    for (std::size_t k = 0; k < size; ++k)
      for (std::size_t i = 0; i < size; ++i) {
        Complex image = 0;
        for (std::size_t j = 0; j < size; ++j) image += a(i, j) * vectors[k][j];
        EXPECT_LT(std::abs(image - values[k] * vectors[k][i]), 1e-13);
      }
  }
  std::vector<Complex> values;
  std::vector<std::vector<Complex>> vectors;
  ASSERT_TRUE(generalEigenDecomposition(matrixOf({{0, -1}, {1, 0}}), values, vectors));
  EXPECT_NEAR(std::abs(values[0] - Complex(0, -1)), 0, 1e-15);
  EXPECT_NEAR(std::abs(values[1] - Complex(0, 1)), 0, 1e-15);
}

TEST(EigenDecomposition, NamesWhatIsWrong) {
  RealVector values(1, 7.0);
  RealMatrix vectors;
  EXPECT_EQ(eigenDecomposition(matrixOf({{1, 2}, {3, 4}}), values, vectors).getMessage(),
            "eigenDecomposition: the matrix is not symmetric");
  EXPECT_EQ(eigenDecomposition(matrixOf({{1, 2}}), values, vectors).getMessage(),
            "eigenDecomposition: the matrix is not square (1 x 2)");
  EXPECT_FALSE(eigenDecomposition(RealMatrix(), values, vectors));
  EXPECT_EQ(values(0), 7);
}

}  // namespace
}  // namespace ormix

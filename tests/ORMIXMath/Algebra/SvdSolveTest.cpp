#include "MatrixSamples.h"

#include <ORMIXMath/Algebra/SvdSolve.h>

namespace ormix {
namespace {

namespace ublas = boost::numeric::ublas;

TEST(SvdSolve, LeavesAResidualAcrossTheColumns) {
  support::Random draw(21);
  // Small, just tall, and tall enough for many blocks.
  for (const std::size_t nbRows : {4U, 7U, 200U, 5003U}) {
    const RealMatrix a = randomMatrix(nbRows, 4, draw);
    const RealVector b = randomVector(nbRows, draw);
    RealVector x;
    std::size_t rank = 0;
    ASSERT_TRUE(svdSolve(a, b, x, rank));
    EXPECT_EQ(rank, 4U);
    const RealVector residual = b - ublas::prod(a, x);
    EXPECT_LT(ublas::norm_inf(ublas::prod(ublas::trans(a), residual)), 1e-13 * double(nbRows));
  }
}

TEST(SvdSolve, FindsTheRankWhateverTheUnitsOfTheColumns) {
  support::Random draw(22);
  for (const std::size_t nbRows : {5U, 400U}) {
    RealMatrix a = randomMatrix(nbRows, 3, draw);
    const RealVector truth = randomVector(3, draw), b = ublas::prod(a, truth);
    ublas::column(a, 0) *= 0x1p400;
    ublas::column(a, 1) *= 0x1p-400;
    RealVector x;
    std::size_t rank = 0;
    ASSERT_TRUE(svdSolve(a, b, x, rank));
    EXPECT_EQ(rank, 3U);
    EXPECT_NEAR(x(0) * 0x1p400, truth(0), 1e-13);
    EXPECT_NEAR(x(1) * 0x1p-400, truth(1), 1e-13);
    ublas::column(a, 2) = 3 * ublas::column(a, 0);
    ASSERT_TRUE(svdSolve(a, RealVector(nbRows, 1.0), x, rank));
    EXPECT_EQ(rank, 2U);
  }
}

TEST(SvdSolve, TakesTheShortestOfManySolutions) {
  RealVector x;
  std::size_t rank = 0;
  ASSERT_TRUE(svdSolve(matrixOf({{1, 1, 1}}), RealVector(1, 6.0), x, rank));
  EXPECT_EQ(rank, 1U);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(x(i), 2, 1e-14);
  ASSERT_TRUE(svdSolve(matrixOf({{0, 0}, {0, 0}}), RealVector(2, 1.0), x, rank));
  EXPECT_EQ(rank, 0U);
  EXPECT_EQ(ublas::norm_2(x), 0);
}

TEST(SvdSolve, GivesTheNullVectorWithAFixedSign) {
  support::Random draw(23);
  for (const std::size_t nbRows : {3U, 4U, 900U}) {
    RealMatrix a = randomMatrix(nbRows, 4, draw);
    // Orthogonal to (2, -3, 1, 0.5) by the last column.
    for (std::size_t i = 0; i < nbRows; ++i) a(i, 3) = -2 * (2 * a(i, 0) - 3 * a(i, 1) + a(i, 2));
    RealVector x;
    std::size_t rank = 0;
    ASSERT_TRUE(svdNullVector(a, x, rank));
    EXPECT_EQ(rank, 3U);
    EXPECT_NEAR(ublas::norm_2(x), 1, 1e-15);
    EXPECT_GT(x(1), 0);
    EXPECT_NEAR(x(0) / x(1), -2.0 / 3, 1e-12);
    EXPECT_NEAR(x(3) / x(1), -0.5 / 3, 1e-12);
  }
}

TEST(SvdSolve, SmallSystemsAgreeWithTheGeneralOnes) {
  support::Random draw(24);
  for (const auto& [nbRows, nbColumns] : {std::pair{3U, 3U}, {9U, 9U}, {16U, 4U}, {2U, 5U}}) {
    const RealMatrix a = randomMatrix(nbRows, nbColumns, draw);
    const RealVector b = randomVector(nbRows, draw);
    RealVector x, small(nbColumns);
    std::size_t rank = 0;
    ASSERT_TRUE(svdSolve(a, b, x, rank));
    EXPECT_EQ(svdSolveSmall(a.data().begin(), nbRows, nbColumns, b.data().begin(), small.data().begin()), rank);
    EXPECT_LT(ublas::norm_inf(x - small), 1e-12 * (1 + ublas::norm_inf(x)));
    if (nbRows + 1 < nbColumns) continue;  // Else the null vector is one of many.
    ASSERT_TRUE(svdNullVector(a, x, rank));
    EXPECT_EQ(svdNullVectorSmall(a.data().begin(), nbRows, nbColumns, small.data().begin()), rank);
    EXPECT_LT(ublas::norm_inf(x - small), 1e-12);
  }
  const omReal64 broken[2] = {1, std::nan("")};
  omReal64 x[2] = {7, 7};
  EXPECT_EQ(svdNullVectorSmall(broken, 1, 2, x), 0U);
  EXPECT_EQ(svdSolveSmall(broken, 1, 2, broken, x), 0U);
  EXPECT_EQ(x[0], 0);
}

TEST(SvdSolve, NamesWhatIsWrong) {
  RealVector x(1, 7.0);
  std::size_t rank = 77;
  RealMatrix a = matrixOf({{1, 2}, {3, 4}});
  EXPECT_EQ(svdSolve(RealMatrix(0, 3), RealVector(), x, rank).getMessage(), "svdSolve: the matrix is empty (0 x 3)");
  EXPECT_EQ(svdSolve(a, RealVector(3, 0.0), x, rank).getMessage(),
            "svdSolve: the right-hand side has 3 values for a matrix of 2 rows");
  EXPECT_FALSE(svdSolve(a, RealVector(2, std::nan("")), x, rank));
  a(1, 0) = std::numeric_limits<omReal64>::infinity();
  EXPECT_EQ(svdSolve(a, RealVector(2, 0.0), x, rank).getMessage(), "svdSolve: the entry in row 1, column 0 is inf");
  EXPECT_FALSE(svdNullVector(a, x, rank));
  EXPECT_EQ(x(0), 7);
  EXPECT_EQ(rank, 77U);
}

}  // namespace
}  // namespace ormix

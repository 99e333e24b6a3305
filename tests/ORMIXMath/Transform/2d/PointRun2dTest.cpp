#include <ORMIXMath/ORMIXMath.h>
#include <ORMIXMath/Transform/2d/PointRun2dPortable.h>
#include <gtest/gtest.h>
#if defined(__x86_64__)
#include <ORMIXMath/Transform/2d/PointRun2dAvx2.h>
#include <ORMIXMath/Transform/2d/PointRun2dAvx512.h>
#endif

#include <array>
#include <boost/numeric/ublas/matrix.hpp>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

namespace {

using namespace ormix;

template <class T>
bool sameBits(const std::vector<T>& a, const std::vector<T>& b) {
  return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0);
}

/// Each version that this processor runs maps a copy of the run, the points that it leaves taken one by one.
template <class Map, class T>
std::vector<std::vector<T>> mappedByEveryVersion(const Map& map, const std::vector<T>& run) {
  const std::size_t nbPoints = run.size() / 2;
  std::vector<std::vector<T>> results(3, run);
  applyToRun(map, results[0].data(), nbPoints);
  std::fill(results[1].begin(), results[1].end(), T(1));
  EXPECT_EQ(mapRun(map, run.data(), results[1].data(), nbPoints), nbPoints);
  detail::PointRun2dPortable::apply(map, run.data(), results[2].data(), nbPoints);
#if defined(__x86_64__)
  const auto add = [&](auto version) {
    results.push_back(run);
    T* const xy = results.back().data();
    const std::size_t nbMapped = version.apply(map, xy, xy, nbPoints);
    detail::PointRun2dPortable::apply(map, xy + 2 * nbMapped, xy + 2 * nbMapped, nbPoints - nbMapped);
  };
  if (__builtin_cpu_supports("avx2")) add(detail::PointRun2dAvx2());
  if (__builtin_cpu_supports("avx512f")) add(detail::PointRun2dAvx512());
#endif
  return results;
}

/// The images point by point of those that have one; the others are taken out of the run.
template <class Transform, class T>
std::vector<T> pointByPoint(const Transform& transform, std::vector<T>& run) {
  std::vector<T> kept;
  std::vector<T> images;
  for (std::size_t index = 0; index < run.size(); index += 2) {
    T x{};
    T y{};
    if (!transform.apply(run[index], run[index + 1], x, y)) continue;
    kept.insert(kept.end(), {run[index], run[index + 1]});
    images.insert(images.end(), {x, y});
  }
  run = kept;
  return images;
}

template <class Transform, class T>
void expectSameBits(const Transform& transform, std::vector<T> run) {
  const std::vector<T> expected = pointByPoint(transform, run);
  EXPECT_EQ(firstUndefinedImage(transform, run.data(), run.size() / 2), run.size() / 2);
  for (const auto& mapped : mappedByEveryVersion(transform.getCoefficients(), run))
    EXPECT_TRUE(sameBits(mapped, expected)) << run.size() / 2 << " points";
}

template <class T>
class PointRun2d : public ::testing::Test {
 protected:
  /// Any bit pattern, or an ordinary coordinate.
  T value(bool ordinary) {
    const omUInt64 bits = _random();
    if (ordinary) return static_cast<T>(std::uniform_real_distribution<omReal64>(0, 5000)(_random));
    T result;
    std::memcpy(&result, &bits, sizeof result);
    return result;
  }
  std::vector<T> run(std::size_t nbPoints, bool ordinary) {
    std::vector<T> values(2 * nbPoints);
    for (T& each : values) each = value(ordinary);
    return values;
  }
  omReal64 factor() { return std::ldexp(std::uniform_real_distribution<omReal64>(-2, 2)(_random), _exponent(_random)); }

  const unsigned _seed = std::random_device{}();
  ::testing::ScopedTrace _trace{__FILE__, __LINE__, "seed " + std::to_string(_seed)};
  std::mt19937_64 _random{_seed};
  std::uniform_int_distribution<int> _exponent{-12, 12};
};
using Scalars = ::testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(PointRun2d, Scalars, );

Homography2d homographyOf(const std::array<omReal64, 9>& rows) {
  Matrix3x3 matrix(3, 3);
  std::copy(rows.begin(), rows.end(), matrix.data().begin());
  return Homography2d(matrix);
}

/// With elements drawn in turn.
template <class Next>
Homography2d drawnHomography(const Next& next) {
  std::array<omReal64, 9> rows{};
  for (omReal64& element : rows) element = next();
  return homographyOf(rows);
}

TYPED_TEST(PointRun2d, MapsEverySizeAsPointByPoint) {
  for (const bool ordinary : {true, false}) {
    for (std::size_t nbPoints = 0; nbPoints <= 40; ++nbPoints) {
      const auto next = [this] { return this->factor(); };
      expectSameBits(Affine2d(next(), next(), next(), next(), next(), next()), this->run(nbPoints, ordinary));
      expectSameBits(drawnHomography(next), this->run(nbPoints, ordinary));
    }
  }
}

TYPED_TEST(PointRun2d, DividesByAnyDenominatorAsTheProcessorDoes) {
  for (const int widest : {1, 250, 500, 1000}) {
    this->_exponent = std::uniform_int_distribution<int>(-widest, widest);
    for (int count = 0; count < 100; ++count)
      expectSameBits(drawnHomography([this] { return this->factor(); }), this->run(333, count % 2 == 0));
  }
}

TYPED_TEST(PointRun2d, KeepsTheSignOfZerosAndSubnormals) {
  using T = TypeParam;
  std::vector<T> run;
  for (const omReal64 x : {0.0, -0.0, 5e-324, -5e-324, 1e-300, 1.0})
    for (const omReal64 y : {0.0, -0.0, 1e-310, -3.0})
      run.insert(run.end(), {round<T, omReal64>(x), round<T, omReal64>(y)});
  expectSameBits(homographyOf({-1, 0, 0, 0, 1e-300, 0, 0, 0, -3}), run);
  expectSameBits(Rigid2d(3, 0, 0), run);
}

TYPED_TEST(PointRun2d, WorksFromEveryStart) {
  const Rigid2d transform(0.3, 10, 20);
  std::vector<TypeParam> values = this->run(60, true);
  for (std::size_t start = 0; start < 20; ++start) {
    std::vector<TypeParam> expected(values.begin() + std::ptrdiff_t(start),
                                    values.begin() + std::ptrdiff_t(start) + 74);
    expected = pointByPoint(transform, expected);
    std::vector<TypeParam> mapped = values;
    applyToRun(transform, mapped.data() + start, 37);
    std::copy(expected.begin(), expected.end(), values.begin() + std::ptrdiff_t(start));
    ASSERT_TRUE(sameBits(mapped, values)) << "start " << start << ", or written beyond the run";
  }
}

TYPED_TEST(PointRun2d, RoundsTiesAwayFromZeroAndSaturates) {
  using Limits = std::numeric_limits<TypeParam>;
  std::vector<TypeParam> run;
  for (int index = 0; index < 32; ++index) run.push_back(static_cast<TypeParam>(index));
  run.insert(run.end(), {Limits::max(), Limits::lowest(), Limits::lowest(), Limits::max(), Limits::max(), 0});
  for (const omReal64 scale : {0.5, -0.5, 1.5, -1.5, 0.99999999999999989, -1.0, 3.0, -3.0, 1e9, -1e9, 1e300}) {
    for (const omReal64 shift : {0.0, 0.5, -0.5, 0.49999999999999994, -2147483648.5, 2147483647.5, 4294967295.5}) {
      expectSameBits(Affine2d(scale, 0, shift, 0, scale, -shift), run);
      expectSameBits(homographyOf({scale, 0, shift, 0, scale, -shift, 0, 0, 1}), run);
    }
  }
}

TYPED_TEST(PointRun2d, FindsTheFirstUndefinedImage) {
  using T = TypeParam;
  const Homography2d homography = homographyOf({2, 0, 1, 0, 3, 2, 1, 0, -7000});
  for (std::size_t nbPoints = 1; nbPoints <= 600; nbPoints += nbPoints < 40 ? 1 : 97) {
    for (std::size_t at = 0; at < nbPoints; at += at < 40 ? 1 : 61) {
      std::vector<T> run = this->run(nbPoints, true);
      run[2 * at] = 7000;
      run.back() = at + 1 < nbPoints ? T(4) : run.back();
      const std::vector<T> before = run;
      ASSERT_EQ(firstUndefinedImage(homography, run.data(), nbPoints), at);
      ASSERT_TRUE(sameBits(run, before));
      if constexpr (std::is_floating_point_v<T>) {
        for (const T bad : {std::numeric_limits<T>::quiet_NaN(), -std::numeric_limits<T>::infinity()}) {
          run[2 * at] = 1;
          run[2 * at + 1] = bad;
          ASSERT_EQ(firstUndefinedImage(homography, run.data(), nbPoints), at);
          ASSERT_EQ(firstUndefinedImage(Rigid2d(0.1, 2, 3), run.data(), nbPoints), at);
        }
      }
    }
  }
}

TYPED_TEST(PointRun2d, AgreesWithApplyOnWhichImagesAreUndefined) {
  this->_exponent = std::uniform_int_distribution<int>(-1000, 1000);
  const auto check = [](const auto& transform, const std::vector<TypeParam>& run) {
    std::size_t expected = 0;
    TypeParam x{};
    TypeParam y{};
    while (2 * expected < run.size() && transform.apply(run[2 * expected], run[2 * expected + 1], x, y)) ++expected;
    EXPECT_EQ(firstUndefinedImage(transform, run.data(), run.size() / 2), expected);
    std::vector<TypeParam> images(run.size());
    EXPECT_EQ(mapRun(transform, run.data(), images.data(), run.size() / 2), expected);
  };
  for (std::size_t count = 0; count < 400; ++count) {
    const auto next = [this] { return this->factor(); };
    check(Affine2d(next(), next(), next(), next(), next(), next()), this->run(count % 20, count % 2 == 0));
    check(drawnHomography(next), this->run(count % 20, count % 2 == 0));
  }
}

}  // namespace

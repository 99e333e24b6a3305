#include <ORMIXMath/ORMIXMath.h>
#include <ORMIXMath/Transform/2d/PointRun2dPortable.h>
#include <ORMIXMath/Transform/3d/PointRun3dPortable.h>
#include <gtest/gtest.h>
#if defined(__x86_64__)
#include <ORMIXMath/Transform/2d/PointRun2dAvx2.h>
#include <ORMIXMath/Transform/2d/PointRun2dAvx512.h>
#include <ORMIXMath/Transform/3d/PointRun3dAvx2.h>
#include <ORMIXMath/Transform/3d/PointRun3dAvx512.h>
#endif

#include <algorithm>
#include <array>
#include <boost/numeric/ublas/vector.hpp>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using namespace ormix;

struct Plane {
  static constexpr std::size_t dimension = 2;
  using Affine = Affine2d;
  using Homography = Homography2d;
  using Scale = Scale2d;
  using Portable = detail::PointRun2dPortable;
#if defined(__x86_64__)
  using Avx2 = detail::PointRun2dAvx2;
  using Avx512 = detail::PointRun2dAvx512;
#endif
  static Rigid2d rigid(omReal64 angle, omReal64 shift) { return Rigid2d(angle, shift, 200 * shift); }
  template <class Transform, class T>
  static bool apply(const Transform& transform, const T* p, T* image) {
    return transform.apply(p[0], p[1], image[0], image[1]);
  }
};

struct Space {
  static constexpr std::size_t dimension = 3;
  using Affine = Affine3d;
  using Homography = Homography3d;
  using Scale = Scale3d;
  using Portable = detail::PointRun3dPortable;
#if defined(__x86_64__)
  using Avx2 = detail::PointRun3dAvx2;
  using Avx512 = detail::PointRun3dAvx512;
#endif
  static Rigid3d rigid(omReal64 angle, omReal64 shift) {
    return Rigid3d(angle, -0.2, 0.1, shift, 200 * shift, 300 * shift);
  }
  template <class Transform, class T>
  static bool apply(const Transform& transform, const T* p, T* image) {
    return transform.apply(p[0], p[1], p[2], image[0], image[1], image[2]);
  }
};

template <class T>
bool sameBits(const std::vector<T>& a, const std::vector<T>& b) {
  return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0);
}

#if defined(__x86_64__)
bool hasAvx2() { return __builtin_cpu_supports("avx2"); }
bool hasAvx512() { return __builtin_cpu_supports("avx512vl"); }
#endif

/// Each version that this processor runs maps the run in place and to another place, the points that it leaves taken
/// one by one.
template <class S, class Map, class T>
std::vector<std::vector<T>> mappedByEveryVersion(const Map& map, const std::vector<T>& run) {
  const std::size_t nbPoints = run.size() / S::dimension;
  const std::vector<T> elsewhere(run.size(), T(77));
  std::vector<std::vector<T>> results{run, elsewhere, elsewhere};
  applyToRun(map, results[0].data(), nbPoints);
  EXPECT_EQ(mapRun(map, run.data(), results[1].data(), nbPoints), nbPoints);
  S::Portable::apply(map, run.data(), results[2].data(), nbPoints);
  if constexpr (S::dimension == 3) {
    results.push_back(elsewhere);
    applyToRun(map, run.data(), results.back().data(), nbPoints);
  }
#if defined(__x86_64__)
  const auto add = [&](auto apply) {
    results.push_back(run);
    T* const values = results.back().data();
    const detail::MappedPoints mapped = apply(values);
    EXPECT_TRUE(mapped.areFinite);
    T* const left = values + S::dimension * mapped.nbPoints;
    S::Portable::apply(map, left, left, nbPoints - mapped.nbPoints);
  };
  using Avx2 = typename S::Avx2;
  using Avx512 = typename S::Avx512;
  if (hasAvx2()) add([&](T* at) { return Avx2::template apply<true>(map, at, at, nbPoints); });
  if (hasAvx512()) add([&](T* at) { return Avx512::template apply<true>(map, at, at, nbPoints); });
  if constexpr (std::is_same_v<Map, HomographyCoefficients2d>) {
    // One of which is what apply() does here.
    if (hasAvx512()) add([&](T* at) { return Avx512::template applyDividing<true>(map, at, at, nbPoints); });
    if (hasAvx512()) add([&](T* at) { return Avx512::template applyMultiplying<true>(map, at, at, nbPoints); });
  }
#endif
  return results;
}

/// The images point by point of those that have one; the others are taken out of the run.
template <class S, class Transform, class T>
std::vector<T> pointByPoint(const Transform& transform, std::vector<T>& run) {
  std::vector<T> kept;
  std::vector<T> images;
  for (std::size_t at = 0; at < run.size(); at += S::dimension) {
    T image[S::dimension] = {};
    if (!S::apply(transform, &run[at], image)) continue;
    kept.insert(kept.end(), &run[at], &run[at] + S::dimension);
    images.insert(images.end(), image, image + S::dimension);
  }
  run = kept;
  return images;
}

template <class S, class Transform, class T>
void expectSameBits(const Transform& transform, std::vector<T> run) {
  const std::vector<T> expected = pointByPoint<S>(transform, run);
  const std::size_t nbPoints = run.size() / S::dimension;
  EXPECT_EQ(firstUndefinedImage(transform, run.data(), nbPoints), nbPoints);
  for (const std::vector<T>& mapped : mappedByEveryVersion<S>(transform.getCoefficients(), run))
    EXPECT_TRUE(sameBits(mapped, expected)) << nbPoints << " points";
}

/// A run whose first undefined image is that of the given point.
template <class S, class Transform, class T>
void expectUndefined(const Transform& transform, const std::vector<T>& run, std::size_t point) {
  const std::size_t nbPoints = run.size() / S::dimension;
  ASSERT_EQ(firstUndefinedImage(transform, run.data(), nbPoints), point);
  std::vector<T> images(run.size());
  ASSERT_EQ(mapRun(transform, run.data(), images.data(), nbPoints), point);
#if defined(__x86_64__)
  if constexpr (std::is_floating_point_v<T>) {
    const auto expectSeen = [point](const detail::MappedPoints& mapped) {
      ASSERT_TRUE(point >= mapped.nbPoints || !mapped.areFinite);
    };
    const auto& map = transform.getCoefficients();
    if (hasAvx2()) expectSeen(S::Avx2::template apply<true>(map, run.data(), images.data(), nbPoints));
    if (hasAvx512()) expectSeen(S::Avx512::template apply<true>(map, run.data(), images.data(), nbPoints));
  }
#endif
}

template <class Transform>
Transform with(const std::vector<omReal64>& params) {
  RealVector vector(params.size());
  std::copy(params.begin(), params.end(), vector.begin());
  Transform transform;
  EXPECT_TRUE(transform.setParams(vector));
  return transform;
}

/// The rows of the affine map that multiplies each coordinate by its factor and adds its shift.
template <class S>
std::vector<omReal64> rowsOf(const std::array<omReal64, 3>& factors, const std::array<omReal64, 3>& shifts) {
  constexpr std::size_t D = S::dimension;
  std::vector<omReal64> rows(D * (D + 1));
  for (std::size_t d = 0; d < D; ++d) {
    rows[d * (D + 1) + d] = factors[d];
    rows[d * (D + 1) + D] = shifts[d];
  }
  return rows;
}

/// What an affine map gives, divided by factor · (last coordinate) + shift.
template <class S>
typename S::Homography divided(std::vector<omReal64> rows, omReal64 factor, omReal64 shift) {
  rows.resize(rows.size() + S::dimension - 1);
  rows.insert(rows.end(), {factor, shift});
  return with<typename S::Homography>(rows);
}

/// A space and one of the four scalar types.
template <class S, class T>
struct Case {
  using Where = S;
  using Coordinate = T;
};

template <class Case>
class PointRun : public ::testing::Test {
 protected:
  /// Of any bit pattern, or of ordinary coordinates.
  auto run(std::size_t nbPoints, bool ordinary) {
    using Coordinate = typename Case::Coordinate;
    std::vector<Coordinate> values(Case::Where::dimension * nbPoints);
    for (Coordinate& value : values) {
      const omUInt64 bits = _random();
      if (ordinary)
        value = static_cast<Coordinate>(std::uniform_real_distribution<omReal64>(0, 5000)(_random));
      else
        std::memcpy(&value, &bits, sizeof value);
    }
    return values;
  }

  auto drawnAffine() { return drawn<typename Case::Where::Affine>(); }
  auto drawnHomography() { return drawn<typename Case::Where::Homography>(); }

  template <class Transform>
  Transform drawn() {
    std::vector<omReal64> params(Transform::s_nbParams);
    for (omReal64& each : params)
      each = std::ldexp(std::uniform_real_distribution<omReal64>(-2, 2)(_random), _exponent(_random));
    return with<Transform>(params);
  }

  const unsigned _seed = std::random_device{}();
  ::testing::ScopedTrace _trace{__FILE__, __LINE__, "seed " + std::to_string(_seed)};
  std::mt19937_64 _random{_seed};
  std::uniform_int_distribution<int> _exponent{-12, 12};
};

using Cases =
    ::testing::Types<Case<Plane, omInt32>, Case<Plane, omUInt32>, Case<Plane, omReal32>, Case<Plane, omReal64>,
                     Case<Space, omInt32>, Case<Space, omUInt32>, Case<Space, omReal32>, Case<Space, omReal64>>;
TYPED_TEST_SUITE(PointRun, Cases, );

TYPED_TEST(PointRun, MapsEverySizeAsPointByPoint) {
  using S = typename TypeParam::Where;
  for (const bool ordinary : {true, false}) {
    for (std::size_t nbPoints = 0; nbPoints <= 70; ++nbPoints) {
      expectSameBits<S>(this->drawnAffine(), this->run(nbPoints, ordinary));
      expectSameBits<S>(this->drawnHomography(), this->run(nbPoints, ordinary));
    }
  }
}

// Mapped by quarters, with some points left.
TYPED_TEST(PointRun, MapsRunsBeyondTheNearCachesAsPointByPoint) {
  using S = typename TypeParam::Where;
  for (const std::size_t nbPoints : {131073u, 200003u}) {
    expectSameBits<S>(this->drawnAffine(), this->run(nbPoints, true));
    expectSameBits<S>(this->drawnHomography(), this->run(nbPoints, true));
  }
}

TYPED_TEST(PointRun, DividesByAnyDenominatorAsTheProcessorDoes) {
  using S = typename TypeParam::Where;
  for (const int widest : {1, 250, 500, 1000}) {
    this->_exponent = std::uniform_int_distribution<int>(-widest, widest);
    for (int count = 0; count < 100; ++count)
      expectSameBits<S>(this->drawnHomography(), this->run(333, count % 2 == 0));
  }
}

TYPED_TEST(PointRun, KeepsTheSignOfZerosAndSubnormals) {
  using S = typename TypeParam::Where;
  using T = typename TypeParam::Coordinate;
  std::vector<T> run;
  for (const omReal64 x : {0.0, -0.0, 5e-324, -5e-324, 1e-300, 1.0}) {
    for (const omReal64 y : {0.0, -0.0, 1e-310, -3.0}) {
      const T point[] = {round<T, omReal64>(x), round<T, omReal64>(y), round<T, omReal64>(x)};
      run.insert(run.end(), point, point + S::dimension);
    }
  }
  expectSameBits<S>(divided<S>(rowsOf<S>({-1, 1e-300, -1}, {0, 0, 0}), 0, -3), run);
  expectSameBits<S>(S::rigid(3, 0), run);
}

TYPED_TEST(PointRun, WritesNothingBeyondTheRunFromAnyStart) {
  using S = typename TypeParam::Where;
  using T = typename TypeParam::Coordinate;
  const auto transform = S::rigid(0.3, 10);
  constexpr std::size_t nbPoints = 37;
  std::vector<T> values = this->run(60, true);
  for (std::size_t start = 0; start < 20; ++start) {
    const auto begin = values.begin() + std::ptrdiff_t(start);
    std::vector<T> expected(begin, begin + std::ptrdiff_t(nbPoints * S::dimension));
    expected = pointByPoint<S>(transform, expected);
    std::vector<T> mapped = values;
    applyToRun(transform, mapped.data() + start, nbPoints);
    std::copy(expected.begin(), expected.end(), begin);
    ASSERT_TRUE(sameBits(mapped, values)) << "start " << start;
  }
}

TYPED_TEST(PointRun, RoundsTiesAwayFromZeroAndSaturates) {
  using S = typename TypeParam::Where;
  using T = typename TypeParam::Coordinate;
  using Limits = std::numeric_limits<T>;
  std::vector<T> run;
  for (int index = 0; index < 48; ++index) run.push_back(static_cast<T>(index));
  for (const T extreme : {Limits::max(), Limits::lowest()})
    for (const T other : {Limits::max(), Limits::lowest(), T(1)}) run.insert(run.end(), {extreme, other});
  for (const omReal64 s : {0.5, -0.5, 1.5, -1.5, 0.99999999999999989, -1.0, 3.0, -3.0, 1e9, -1e9, 1e300}) {
    for (const omReal64 t : {0.0, 0.5, -0.5, 0.49999999999999994, -2147483648.5, 2147483647.5, 4294967295.5}) {
      const auto rows = rowsOf<S>({s, s, -s}, {t, -t, t});
      expectSameBits<S>(with<typename S::Affine>(rows), run);
      expectSameBits<S>(divided<S>(rows, 0, 1), run);
    }
  }
  if constexpr (std::is_same_v<T, omInt32>) {
    std::vector<T> ties{1, -1, 3, -3, 5, -5, 7, -7, 9, -9, 11, -11, 13, -13, 15, -15, 17, -17, 19, -19, 21, 23, 25, 27};
    applyToRun(typename S::Scale(0.5), ties.data(), ties.size() / S::dimension);
    EXPECT_EQ(ties,
              (std::vector<T>{1, -1, 2, -2, 3, -3, 4, -4, 5, -5, 6, -6, 7, -7, 8, -8, 9, -9, 10, -10, 11, 12, 13, 14}));
  }
}

TYPED_TEST(PointRun, FindsTheFirstUndefinedImage) {
  using S = typename TypeParam::Where;
  using T = typename TypeParam::Coordinate;
  constexpr std::size_t D = S::dimension;
  const auto homography = divided<S>(rowsOf<S>({2, 3, 1}, {1, 2, 0}), 1, -7000);
  std::vector<std::size_t> sizes{255, 256, 257, 600};
  for (std::size_t nbPoints = 1; nbPoints <= 40; ++nbPoints) sizes.push_back(nbPoints);
  for (const std::size_t nbPoints : sizes) {
    for (std::size_t at = 0; at < nbPoints; at += at < 40 ? 1 : 61) {
      std::vector<T> run = this->run(nbPoints, true);
      run[D * at + D - 1] = 7000;
      run.back() = 7000;
      const std::vector<T> before = run;
      expectUndefined<S>(homography, run, at);
      ASSERT_TRUE(sameBits(run, before));
      if constexpr (std::is_floating_point_v<T>) {
        run = this->run(nbPoints, true);
        T& value = run[D * at + at % D];
        for (const T bad : {std::numeric_limits<T>::quiet_NaN(), -std::numeric_limits<T>::infinity()}) {
          value = bad;
          expectUndefined<S>(homography, run, at);
          expectUndefined<S>(S::rigid(0.1, 4), run, at);
        }
        value = std::numeric_limits<T>::max();
        expectUndefined<S>(typename S::Scale(-1), run, nbPoints);
        expectUndefined<S>(typename S::Scale(1.5), run, at);
      }
    }
  }
}

TYPED_TEST(PointRun, AgreesWithApplyOnWhichImagesAreUndefined) {
  using S = typename TypeParam::Where;
  using T = typename TypeParam::Coordinate;
  this->_exponent = std::uniform_int_distribution<int>(-1000, 1000);
  const auto check = [](const auto& transform, const std::vector<T>& run) {
    const std::size_t nbPoints = run.size() / S::dimension;
    std::vector<T> images(run.size());
    std::size_t expected = 0;
    while (expected < nbPoints && S::apply(transform, &run[expected * S::dimension], images.data())) ++expected;
    EXPECT_EQ(firstUndefinedImage(transform, run.data(), nbPoints), expected);
    EXPECT_EQ(mapRun(transform, run.data(), images.data(), nbPoints), expected);
  };
  for (std::size_t count = 0; count < 400; ++count) {
    check(this->drawnAffine(), this->run(count % 20, count % 2 == 0));
    check(this->drawnHomography(), this->run(count % 20, count % 2 == 0));
  }
}

}  // namespace

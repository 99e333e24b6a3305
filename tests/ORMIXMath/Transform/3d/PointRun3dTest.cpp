#include <ORMIXMath/ORMIXMath.h>
#include <ORMIXMath/Transform/3d/PointRun3dPortable.h>
#include <gtest/gtest.h>
#if defined(__x86_64__)
#include <ORMIXMath/Transform/3d/PointRun3dAvx2.h>
#include <ORMIXMath/Transform/3d/PointRun3dAvx512.h>
#endif

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

/// Each version that this processor runs maps the run in place and to another place, the points that it leaves taken
/// one by one.
template <class Map, class T>
std::vector<std::vector<T>> mappedByEveryVersion(const Map& map, const std::vector<T>& run) {
  const std::size_t nbPoints = run.size() / 3;
  std::vector<std::vector<T>> results(4, run);
  applyToRun(map, results[0].data(), nbPoints);
  results[1].assign(run.size(), T(77));
  applyToRun(map, run.data(), results[1].data(), nbPoints);
  detail::PointRun3dPortable::apply(map, run.data(), results[2].data(), nbPoints);
  EXPECT_EQ(mapRun(map, run.data(), results[3].data(), nbPoints), nbPoints);
#if defined(__x86_64__)
  const auto add = [&](auto version) {
    results.push_back(run);
    T* const xyz = results.back().data();
    const std::size_t nbMapped = version.apply(map, xyz, xyz, nbPoints);
    detail::PointRun3dPortable::apply(map, xyz + 3 * nbMapped, xyz + 3 * nbMapped, nbPoints - nbMapped);
  };
  if (__builtin_cpu_supports("avx2")) add(detail::PointRun3dAvx2());
  if (__builtin_cpu_supports("avx512f")) add(detail::PointRun3dAvx512());
#endif
  return results;
}

/// The images point by point of those that have one; the others are taken out of the run.
template <class Transform, class T>
std::vector<T> pointByPoint(const Transform& transform, std::vector<T>& run) {
  std::vector<T> kept;
  std::vector<T> images;
  for (std::size_t at = 0; at < run.size(); at += 3) {
    T x{};
    T y{};
    T z{};
    if (!transform.apply(run[at], run[at + 1], run[at + 2], x, y, z)) continue;
    kept.insert(kept.end(), {run[at], run[at + 1], run[at + 2]});
    images.insert(images.end(), {x, y, z});
  }
  run = kept;
  return images;
}

template <class Transform, class T>
void expectSameBits(const Transform& transform, std::vector<T> run) {
  const std::vector<T> expected = pointByPoint(transform, run);
  EXPECT_EQ(firstUndefinedImage(transform, run.data(), run.size() / 3), run.size() / 3);
  for (const auto& mapped : mappedByEveryVersion(transform.getCoefficients(), run))
    EXPECT_TRUE(sameBits(mapped, expected)) << run.size() / 3 << " points";
}

template <class T>
class PointRun3d : public ::testing::Test {
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
    std::vector<T> values(3 * nbPoints);
    for (T& each : values) each = value(ordinary);
    return values;
  }
  template <class Transform>
  Transform drawn() {
    RealVector params(Transform::s_nbParams);
    for (omReal64& each : params)
      each = std::ldexp(std::uniform_real_distribution<omReal64>(-2, 2)(_random), _exponent(_random));
    Transform transform;
    EXPECT_TRUE(transform.setParams(params));
    return transform;
  }

  const unsigned _seed = std::random_device{}();
  ::testing::ScopedTrace _trace{__FILE__, __LINE__, "seed " + std::to_string(_seed)};
  std::mt19937_64 _random{_seed};
  std::uniform_int_distribution<int> _exponent{-12, 12};
};
using Scalars = ::testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(PointRun3d, Scalars, );

template <class Transform>
Transform with(const std::vector<omReal64>& params) {
  RealVector vector(params.size());
  std::copy(params.begin(), params.end(), vector.begin());
  Transform transform;
  EXPECT_TRUE(transform.setParams(vector));
  return transform;
}

TYPED_TEST(PointRun3d, MapsEverySizeAsPointByPoint) {
  for (const bool ordinary : {true, false}) {
    for (std::size_t nbPoints = 0; nbPoints <= 70; ++nbPoints) {
      expectSameBits(this->template drawn<Affine3d>(), this->run(nbPoints, ordinary));
      expectSameBits(this->template drawn<Homography3d>(), this->run(nbPoints, ordinary));
    }
  }
}

TYPED_TEST(PointRun3d, WritesNothingBeyondTheRunFromAnyStart) {
  const Rigid3d transform(0.3, -0.2, 0.1, 10, 2000, 3000);
  std::vector<TypeParam> values = this->run(60, true);
  for (std::size_t start = 0; start < 20; ++start) {
    const auto begin = values.begin() + std::ptrdiff_t(start);
    std::vector<TypeParam> expected(begin, begin + 3 * 37);
    expected = pointByPoint(transform, expected);
    std::vector<TypeParam> mapped = values;
    applyToRun(transform, mapped.data() + start, 37);
    std::copy(expected.begin(), expected.end(), begin);
    ASSERT_TRUE(sameBits(mapped, values)) << "start " << start;
  }
}

TYPED_TEST(PointRun3d, RoundsTiesAwayFromZeroAndSaturates) {
  using T = TypeParam;
  using Limits = std::numeric_limits<T>;
  std::vector<T> run;
  for (int index = 0; index < 48; ++index) run.push_back(static_cast<T>(index));
  run.insert(run.end(), {Limits::max(), Limits::lowest(), 0, Limits::lowest(), Limits::max(), 1});
  for (const omReal64 s : {0.5, -0.5, 1.5, -1.5, 0.99999999999999989, -1.0, 3.0, -3.0, 1e9, -1e9, 1e300}) {
    for (const omReal64 t : {0.0, 0.5, -0.5, 0.49999999999999994, -2147483648.5, 2147483647.5, 4294967295.5}) {
      expectSameBits(with<Affine3d>({s, 0, 0, t, 0, s, 0, -t, 0, 0, -s, t}), run);
      expectSameBits(with<Homography3d>({s, 0, 0, t, 0, s, 0, -t, 0, 0, -s, t, 0, 0, 0, 1}), run);
    }
  }
  if constexpr (std::is_same_v<T, omInt32>) {
    std::vector<T> ties{1, -1, 3, -3, 5, -5, 7, -7, 9, -9, 11, -11, 13, -13, 15, -15, 17, -17, 19, -19, 21, 23, 25, 27};
    applyToRun(Scale3d(0.5), ties.data(), ties.size() / 3);
    EXPECT_EQ(ties,
              (std::vector<T>{1, -1, 2, -2, 3, -3, 4, -4, 5, -5, 6, -6, 7, -7, 8, -8, 9, -9, 10, -10, 11, 12, 13, 14}));
  }
}

TYPED_TEST(PointRun3d, FindsTheFirstUndefinedImage) {
  using T = TypeParam;
  const auto homography = with<Homography3d>({2, 0, 0, 1, 0, 3, 0, 2, 0, 0, 1, 0, 0, 0, 1, -7000});
  for (const std::size_t nbPoints : {1, 2, 7, 8, 9, 31, 255, 256, 257, 600}) {
    for (std::size_t at = 0; at < nbPoints; at += at < 20 ? 1 : 61) {
      std::vector<T> run = this->run(nbPoints, true);
      run[3 * at + 2] = 7000;
      run.back() = 7000;
      const std::vector<T> before = run;
      ASSERT_EQ(firstUndefinedImage(homography, run.data(), nbPoints), at);
      ASSERT_TRUE(sameBits(run, before));
      if constexpr (std::is_floating_point_v<T>) {
        run = this->run(nbPoints, true);
        for (const T bad : {std::numeric_limits<T>::quiet_NaN(), -std::numeric_limits<T>::infinity()}) {
          run[3 * at + at % 3] = bad;
          ASSERT_EQ(firstUndefinedImage(homography, run.data(), nbPoints), at);
          ASSERT_EQ(firstUndefinedImage(Rigid3d(0.1, 0.2, 0.3, 4, 5, 6), run.data(), nbPoints), at);
        }
        run[3 * at + at % 3] = std::numeric_limits<T>::max();
        ASSERT_EQ(firstUndefinedImage(Scale3d(-1), run.data(), nbPoints), nbPoints);
        ASSERT_EQ(firstUndefinedImage(Scale3d(1.5), run.data(), nbPoints), at);
      }
    }
  }
}

TYPED_TEST(PointRun3d, AgreesWithApplyOnWhichImagesAreUndefined) {
  this->_exponent = std::uniform_int_distribution<int>(-1000, 1000);
  const auto check = [](const auto& transform, const std::vector<TypeParam>& run) {
    std::size_t expected = 0;
    TypeParam x{};
    TypeParam y{};
    TypeParam z{};
    while (3 * expected < run.size() &&
           transform.apply(run[3 * expected], run[3 * expected + 1], run[3 * expected + 2], x, y, z))
      ++expected;
    EXPECT_EQ(firstUndefinedImage(transform, run.data(), run.size() / 3), expected);
    std::vector<TypeParam> images(run.size());
    EXPECT_EQ(mapRun(transform, run.data(), images.data(), run.size() / 3), expected);
  };
  for (std::size_t count = 0; count < 400; ++count) {
    check(this->template drawn<Affine3d>(), this->run(count % 20, count % 2 == 0));
    check(this->template drawn<Homography3d>(), this->run(count % 20, count % 2 == 0));
  }
}

}  // namespace

#include <ORMIXMath/ORMIXMath.h>
#include <ORMIXMath/Transform/PointBlocks.h>

#include <boost/numeric/ublas/vector.hpp>
#include <random>
#include <typeinfo>

#include "support/Checks.h"

namespace {

using namespace ormix;

template <class Transform>
Transform with(const std::vector<omReal64>& params) {
  RealVector vector(params.size());
  std::copy(params.begin(), params.end(), vector.begin());
  Transform transform;
  EXPECT_TRUE(transform.setParams(vector));
  return transform;
}

struct Plane {
  static constexpr std::size_t dimension = 2;
  using Affine = Affine2d;
  using Homography = Homography2d;
  using Scale = Scale2d;
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
  static Rigid3d rigid(omReal64 angle, omReal64 shift) {
    return Rigid3d(angle, -0.2, 0.1, shift, 200 * shift, 300 * shift);
  }
  template <class Transform, class T>
  static bool apply(const Transform& transform, const T* p, T* image) {
    return transform.apply(p[0], p[1], p[2], image[0], image[1], image[2]);
  }
};

/// Calls with each version of the loops that this processor runs.
template <class Call>
void forEachVersion(const Call& call) {
  call(detail::PortableBlocks());
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx2")) call(detail::Avx2Blocks());
  if (__builtin_cpu_supports("avx512vl")) call(detail::Avx512Blocks());
#endif
}

template <class T>
bool sameBits(const std::vector<T>& a, const std::vector<T>& b) {
  return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0);
}

template <class TypeParam>
class PointRun;

/// A space and one of the four scalar types.
template <class S, class T>
struct Case {};
template <class S, class T>
class PointRun<Case<S, T>> : public ::testing::Test {
 protected:
  using Where = S;
  using Coordinate = T;
  using Run = std::vector<T>;
  static constexpr std::size_t D = S::dimension;

  /// Of any bit pattern, or of ordinary coordinates.
  Run run(std::size_t nbPoints, bool ordinary) {
    Run values(D * nbPoints);
    for (T& value : values) {
      const omUInt64 bits = _random();
      if (ordinary)
        value = static_cast<T>(std::uniform_real_distribution<omReal64>(0, 5000)(_random));
      else
        std::memcpy(&value, &bits, sizeof value);
    }
    return values;
  }

  /// With parameters of magnitudes up to 2 to the power of `widest`.
  template <class Transform>
  Transform drawn(int widest) {
    std::vector<omReal64> params(Transform::s_nbParams);
    std::uniform_int_distribution<int> exponent(-widest, widest);
    for (omReal64& each : params)
      each = std::ldexp(std::uniform_real_distribution<omReal64>(-2, 2)(_random), exponent(_random));
    return with<Transform>(params);
  }

  /// The rows of the affine map that multiplies each coordinate by its factor and adds its shift.
  static std::vector<omReal64> rows(const std::array<omReal64, 3>& factors, const std::array<omReal64, 3>& shifts) {
    std::vector<omReal64> result(D * (D + 1));
    for (std::size_t d = 0; d < D; ++d) {
      result[d * (D + 1) + d] = factors[d];
      result[d * (D + 1) + D] = shifts[d];
    }
    return result;
  }
  /// What an affine map gives, divided by factor · (last coordinate) + shift.
  static typename S::Homography divided(std::vector<omReal64> rows, omReal64 factor, omReal64 shift) {
    rows.resize(rows.size() + D - 1);
    rows.insert(rows.end(), {factor, shift});
    return with<typename S::Homography>(rows);
  }

  /// What have images get those that the transform's own apply() gives, by every version, to the bit; and the first of
  /// all points that has none is found.
  template <class Transform>
  static void expectSameBits(const Transform& transform, const Run& anyPoints) {
    Run run, expected;
    std::size_t firstUndefined = anyPoints.size() / D;
    for (std::size_t at = 0; at < anyPoints.size(); at += D) {
      T image[D] = {};
      if (S::apply(transform, &anyPoints[at], image)) {
        run.insert(run.end(), &anyPoints[at], &anyPoints[at] + D);
        expected.insert(expected.end(), image, image + D);
      } else {
        firstUndefined = std::min(firstUndefined, at / D);
      }
    }
    expectUndefined(transform, anyPoints, firstUndefined);
    if (firstUndefined < anyPoints.size() / D) expectRuns(transform, anyPoints, firstUndefined, anyPoints);
    expectRuns(transform, run, run.size() / D, expected);
    const std::size_t nbPoints = run.size() / D;
    // In place and elsewhere, and nothing beyond the run.
    const auto expectMapped = [&](const char* version, bool inPlace, const auto& map) {
      Run mapped = inPlace ? run : Run(run.size(), T(7));
      mapped.push_back(T(77));
      map(inPlace ? mapped.data() : run.data(), mapped.data());
      EXPECT_EQ(mapped.back(), T(77)) << version;
      mapped.pop_back();
      EXPECT_TRUE(sameBits(mapped, expected)) << nbPoints << " points, " << version;
    };
    expectMapped("in place", true, [&](const T*, T* to) { applyToRun(transform, to, nbPoints); });
    expectMapped("elsewhere", false,
                 [&](const T* from, T* to) { EXPECT_EQ(mapRun(transform, from, to, nbPoints), nbPoints); });
    for (const bool inPlace : {false, true})
      forEachVersion([&](auto blocks) {
        expectMapped(typeid(blocks).name(), inPlace, [&](const T* from, T* to) {
          EXPECT_TRUE(decltype(blocks)::template map<true>(transform.getCoefficients(), from, to, nbPoints));
        });
      });
  }

  /// The same points cut into runs of 0, 1, 2, … points, of which the last takes the rest: all mapped or none.
  template <class Transform>
  static void expectRuns(const Transform& transform, Run points, std::size_t firstUndefined, const Run& expected) {
    const std::size_t nbPoints = points.size() / D;
    std::vector<PointSpan<T>> runs;
    std::size_t first = 0;
    for (std::size_t count = 0; first + count < nbPoints && count < 30; first += count++)
      runs.push_back({points.data() + D * first, count});
    runs.push_back({points.data() + D * first, nbPoints - first});
    std::size_t nbBefore = 0, run = 0;
    while (run < runs.size() && nbBefore + runs[run].nbPoints <= firstUndefined) nbBefore += runs[run++].nbPoints;
    const PlaceInRuns place = applyToRuns(transform, runs.data(), runs.size());
    ASSERT_EQ(place.run, run);
    EXPECT_EQ(place.point, run < runs.size() ? firstUndefined - nbBefore : 0);
    EXPECT_TRUE(sameBits(points, expected));
  }

  /// Of a run whose first undefined image is that of the given point, `nbPoints` for none.
  template <class Transform>
  static void expectUndefined(const Transform& transform, const Run& run, std::size_t point) {
    const std::size_t nbPoints = run.size() / D;
    ASSERT_EQ(firstUndefinedImage(transform, run.data(), nbPoints), point);
    Run images(run.size());
    ASSERT_EQ(mapRun(transform, run.data(), images.data(), nbPoints), point);
    Run inPlace = run;
    const PointSpan<T> whole{inPlace.data(), nbPoints};
    ASSERT_EQ(applyToRuns(transform, &whole, 1).point, point < nbPoints ? point : 0);
    EXPECT_TRUE(sameBits(inPlace, point < nbPoints ? run : images));
    if (std::is_integral_v<T>) return;
    forEachVersion([&](auto blocks) {
      const auto& map = transform.getCoefficients();
      EXPECT_EQ(decltype(blocks)::template map<true>(map, run.data(), images.data(), nbPoints), point == nbPoints)
          << typeid(blocks).name();
    });
  }

  std::mt19937_64 _random{20211};
};

using Cases =
    ::testing::Types<Case<Plane, omInt32>, Case<Plane, omUInt32>, Case<Plane, omReal32>, Case<Plane, omReal64>,
                     Case<Space, omInt32>, Case<Space, omUInt32>, Case<Space, omReal32>, Case<Space, omReal64>>;
TYPED_TEST_SUITE(PointRun, Cases, );

TYPED_TEST(PointRun, MapsEverySizeAsPointByPoint) {
  using S = typename TestFixture::Where;
  const auto expectMapped = [this](int widest, std::size_t nbPoints, bool ordinary) {
    this->expectSameBits(this->template drawn<typename S::Affine>(widest), this->run(nbPoints, ordinary));
    this->expectSameBits(this->template drawn<typename S::Homography>(widest), this->run(nbPoints, ordinary));
  };
  for (const int widest : {12, 250, 1000})
    for (std::size_t twice = 0; twice <= 140; ++twice) expectMapped(widest, twice / 2, twice % 2 == 0);
  // Beyond the near caches by quarters, with some points left.
  for (const std::size_t nbPoints : {131073u, 200003u}) expectMapped(12, nbPoints, true);
}

TYPED_TEST(PointRun, RoundsTiesAwayFromZeroAndSaturatesAndKeepsTheSignOfZeros) {
  using S = typename TestFixture::Where;
  using T = typename TestFixture::Coordinate;
  using Limits = std::numeric_limits<T>;
  typename TestFixture::Run run;
  for (int index = 0; index < 48; ++index) run.push_back(static_cast<T>(index));
  for (const T extreme : {Limits::max(), Limits::lowest()})
    for (const T other : {Limits::max(), Limits::lowest(), T(1)}) run.insert(run.end(), {extreme, other});
  for (const omReal64 s : {0.5, -0.5, 1.5, -1.5, 0.99999999999999989, -1.0, 3.0, -3.0, 1e9, -1e9, 1e300}) {
    for (const omReal64 t : {0.0, 0.5, -0.5, 0.49999999999999994, -2147483648.5, 2147483647.5, 4294967295.5}) {
      const auto rows = this->rows({s, s, -s}, {t, -t, t});
      this->expectSameBits(with<typename S::Affine>(rows), run);
      this->expectSameBits(this->divided(rows, 0, 1), run);
    }
  }
  if constexpr (std::is_same_v<T, omInt32>) {
    std::vector<T> ties{1, -1, 3, -3, 5, -5, 7, -7, 9, -9, 11, -11};
    applyToRun(typename S::Scale(0.5), ties.data(), ties.size() / S::dimension);
    EXPECT_EQ(ties, (std::vector<T>{1, -1, 2, -2, 3, -3, 4, -4, 5, -5, 6, -6}));
  }
  run.clear();
  for (const omReal64 x : {0.0, -0.0, 5e-324, -5e-324, 1e-300, 1.0}) {
    for (const omReal64 y : {0.0, -0.0, 1e-310, -3.0}) {
      const T point[] = {round<T, omReal64>(x), round<T, omReal64>(y), round<T, omReal64>(x)};
      run.insert(run.end(), point, point + S::dimension);
    }
  }
  this->expectSameBits(this->divided(this->rows({-1, 1e-300, -1}, {0, 0, 0}), 0, -3), run);
  this->expectSameBits(with<typename S::Affine>(this->rows({-1, -1, -1}, {-0.0, -0.0, -0.0})), run);
  this->expectSameBits(S::rigid(3, 0), run);
}

TYPED_TEST(PointRun, FindsTheFirstUndefinedImage) {
  using S = typename TestFixture::Where;
  using T = typename TestFixture::Coordinate;
  constexpr std::size_t n = S::dimension;
  const auto homography = this->divided(this->rows({2, 3, 1}, {1, 2, 0}), 1, -7000);
  std::vector<std::size_t> sizes{255, 256, 257, 600};
  for (std::size_t nbPoints = 1; nbPoints <= 40; ++nbPoints) sizes.push_back(nbPoints);
  for (const std::size_t nbPoints : sizes) {
    for (std::size_t at = 0; at < nbPoints; at += at < 40 ? 1 : 61) {
      auto run = this->run(nbPoints, true);
      run[n * at + n - 1] = 7000;
      run.back() = 7000;
      this->expectUndefined(homography, run, at);
      if constexpr (std::is_signed_v<T>) {
        run[n * at + n - 1] = run.back() = -7000;
        this->expectUndefined(this->divided(this->rows({2, 3, 1}, {1, 2, 0}), 1, 7000), run, at);
      }
      if constexpr (std::is_floating_point_v<T>) {
        run = this->run(nbPoints, true);
        T& value = run[n * at + at % n];
        for (const T bad : {std::numeric_limits<T>::quiet_NaN(), -std::numeric_limits<T>::infinity()}) {
          value = bad;
          this->expectUndefined(homography, run, at);
          this->expectUndefined(S::rigid(0.1, 4), run, at);
        }
        value = std::numeric_limits<T>::max();
        this->expectUndefined(typename S::Scale(-1), run, nbPoints);
        this->expectUndefined(typename S::Scale(1.5), run, at);
      }
    }
  }
}

}  // namespace

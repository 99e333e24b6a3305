#include <ORMIXMath/Form/FormDeviation.h>
#include <ORMIXMath/Form/FormModels.h>
#include <ORMIXMath/Form/MinimaxDescent.h>
#include <ORMIXMath/Scalar/Constants.h>

#include <functional>
#include <vector>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix {
namespace {

using namespace detail;
using FormFunction = EstimationStatus (*)(const SampleView&, eFormReference, FormDeviation&);

struct Form {
  const char* name;
  FormFunction function;
  std::size_t dimension;
  int nbReferences;
  std::function<std::vector<omReal64>(support::Random&, omReal64)> point;  ///< near the element, at most so far off it
};

const std::vector<Form>& forms() {
  static const auto onSphere = [](support::Random& draw, omReal64 radius) {
    const omReal64 z = draw.uniform(), turn = 4 * draw.uniform(), across = std::sqrt(1 - z * z);
    return std::vector<omReal64>{radius * across * std::cos(turn), radius * across * std::sin(turn), radius * z};
  };
  static const std::vector<Form> all{
      {"planar line", planarStraightness, 2, 2,
       [](auto& draw, omReal64 e) {
         const omReal64 t = draw.uniform();
         return std::vector<omReal64>{3 * t, 4 * t + e * draw.uniform()};
       }},
      {"spatial line", spatialStraightness, 3, 2,
       [](auto& draw, omReal64 e) {
         const omReal64 t = draw.uniform();
         return std::vector<omReal64>{3 * t + e * draw.uniform(), 2 * t + e * draw.uniform(), t};
       }},
      {"plane", flatness, 3, 2,
       [](auto& draw, omReal64 e) {
         const omReal64 s = draw.uniform(), t = draw.uniform();
         return std::vector<omReal64>{s, 2 * t, s + t + e * draw.uniform()};
       }},
      {"circle", roundness, 2, 4,
       [](auto& draw, omReal64 e) {
         const omReal64 turn = 4 * draw.uniform(), r = 1 + e * draw.uniform();
         return std::vector<omReal64>{r * std::cos(turn), r * std::sin(turn)};
       }},
      {"sphere", sphericity, 3, 4, [](auto& draw, omReal64 e) { return onSphere(draw, 1 + e * draw.uniform()); }},
      {"cylinder", cylindricity, 3, 4, [](auto& draw, omReal64 e) {
         const omReal64 turn = 4 * draw.uniform(), r = 1 + e * draw.uniform();
         return std::vector<omReal64>{r * std::cos(turn), 2 * draw.uniform(), r * std::sin(turn)};
       }}};
  return all;
}

std::vector<omReal64> drawn(const Form& form, support::Random& draw, std::size_t nbPoints, omReal64 noise) {
  std::vector<omReal64> points;
  for (std::size_t i = 0; i < nbPoints; ++i) {
    const std::vector<omReal64> point = form.point(draw, noise);
    points.insert(points.end(), point.begin(), point.end());
  }
  return points;
}

SpatialPoint pointAt(const std::vector<omReal64>& points, std::size_t dimension, std::size_t i) {
  const omReal64* p = points.data() + dimension * i;
  return {p[0], p[1], dimension == 3 ? p[2] : 0};
}

omReal64 rangeAlong(const std::vector<omReal64>& points, std::size_t dimension, const SpatialPoint& direction) {
  omReal64 low = support::s_infinity, high = -low;
  for (std::size_t i = 0; i < points.size() / dimension; ++i) {
    low = std::min(low, dot(pointAt(points, dimension, i), direction));
    high = std::max(high, dot(pointAt(points, dimension, i), direction));
  }
  return (high - low) / std::sqrt(dot(direction, direction));
}

/// The least width: across two points of the plane, or across two edges (or three points) of space.
omReal64 exhaustiveWidth(const std::vector<omReal64>& points, std::size_t dimension) {
  std::vector<SpatialPoint> edges;
  for (std::size_t i = 0; i < points.size() / dimension; ++i)
    for (std::size_t k = 0; k < i; ++k) edges.push_back(pointAt(points, dimension, i) - pointAt(points, dimension, k));
  omReal64 best = support::s_infinity;
  for (std::size_t i = 0; i < edges.size(); ++i)
    for (std::size_t k = dimension == 2 ? i : 0; k <= i; ++k) {
      const SpatialPoint across = cross(edges[i], dimension == 2 ? SpatialPoint{0, 0, 1} : edges[k]);
      if (dot(across, across) > 1e-20) best = std::min(best, rangeAlong(points, dimension, across));
    }
  return best;
}

/// The least range of distances from a centre about which D + 2 points lie on two circles or spheres, in all ways.
template <std::size_t D>
omReal64 exhaustiveZone(const std::vector<omReal64>& points) {
  constexpr std::size_t n = D + 2;
  const std::size_t nbPoints = points.size() / D;
  omReal64 best = support::s_infinity;
  std::array<std::size_t, n> chosen;
  const auto tryAllSplits = [&] {
    for (unsigned split = 1; split + 1 < 1U << n; ++split) {
      // 2 p·c + (R² − c²) of its side = p²
      std::array<std::array<omReal64, n>, n> a{};
      std::array<omReal64, n> b{};
      for (std::size_t r = 0; r < n; ++r) {
        const omReal64* p = points.data() + D * chosen[r];
        for (std::size_t d = 0; d < D; ++d) {
          a[r][d] = 2 * p[d];
          b[r] += p[d] * p[d];
        }
        a[r][D + (split >> r & 1U)] = 1;
      }
      if (!solveSmall<n>(a, b, n)) continue;
      omReal64 low = support::s_infinity, high = 0;
      for (std::size_t i = 0; i < nbPoints && high - low < best; ++i) {
        omReal64 square = 0;
        for (std::size_t d = 0; d < D; ++d) square += std::pow(points[D * i + d] - b[d], 2);
        low = std::min(low, std::sqrt(square));
        high = std::max(high, std::sqrt(square));
      }
      best = std::min(best, high - low);
    }
  };
  const std::function<void(std::size_t, std::size_t)> choose = [&](std::size_t k, std::size_t from) {
    if (k == n) return tryAllSplits();
    for (chosen[k] = from; chosen[k] < nbPoints; ++chosen[k]) choose(k + 1, chosen[k] + 1);
  };
  choose(0, 0);
  return best;
}

TEST(FormDeviation, MinimumZonesEqualExhaustiveSearch) {
  support::Random draw(1301);
  FormDeviation form;
  for (int trial = 0; trial < 1000; ++trial) {
    SCOPED_TRACE("set " + std::to_string(trial));
    const omReal64 noise = std::pow(10.0, -draw.uniform(0, 6));
    const std::size_t nbPoints = trial % 100 == 0 ? 20 : 5 + draw.below(7);
    for (const Form& f : forms()) {
      if (f.function == spatialStraightness || f.function == cylindricity) continue;
      const bool isSphere = f.function == sphericity;
      // Every other set is a cloud of any shape.
      const std::vector<omReal64> points =
          drawn(f, draw, isSphere && nbPoints < 20 ? 5 + nbPoints / 3 : nbPoints, trial % 2 == 0 ? 3 : noise);
      ASSERT_TRUE(f.function({points.data(), points.size() / f.dimension, f.dimension}, eFR_MinimumZone, form));
      const omReal64 expected = isSphere                  ? exhaustiveZone<3>(points)
                                : f.function == roundness ? exhaustiveZone<2>(points)
                                                          : exhaustiveWidth(points, f.dimension);
      EXPECT_NEAR(form.deviation, expected, 1e-9) << f.name;
      EXPECT_EQ(form.optimum, eFO_Global) << f.name;
    }
  }
}

TEST(FormDeviation, EndsWhereVeryManyZonesAreAsNarrow) {
  support::Random draw(1303);
  const std::vector<omReal64> sphere = drawn(forms()[4], draw, 10000, 0);
  FormDeviation form;
  ASSERT_TRUE(flatness({sphere.data(), 10000, 3}, eFR_MinimumZone, form));
  EXPECT_EQ(form.optimum, eFO_Local);
  EXPECT_NEAR(form.deviation, 2, 0.01);
  // The narrowest zone of a strip is between two lines, and every circle is farther away than the one before.
  std::vector<omReal64> strip;
  for (int i = 0; i < 3000; ++i)
    strip.insert(strip.end(), {static_cast<omReal64>(i / 3), static_cast<omReal64>(i % 3)});
  for (const eFormReference reference : {eFR_LeastSquares, eFR_MinimumZone}) {
    ASSERT_TRUE(roundness({strip.data(), 3000, 2}, reference, form));
    EXPECT_NEAR(form.deviation, 2, 2e-3);
    EXPECT_NEAR(form.radius, (form.lowest + form.highest) / 2, 1);
  }
}

/// The gradient of a point's distance by the element's position (first) and direction.
std::array<SpatialPoint, 2> gradientOf(const Form& f, const FormDeviation& form, const SpatialPoint& point) {
  const SpatialPoint offset = point - form.point;
  if (f.function == flatness || f.function == planarStraightness) return {SpatialPoint{0, 0, 0}, offset};
  const omReal64 along = dot(offset, form.direction);
  const SpatialPoint radial = normalized(offset - form.direction * along);
  return {radial, dot(form.direction, form.direction) > 0 ? radial * along : SpatialPoint{0, 0, 0}};
}

TEST(FormDeviation, ContactsLieOnTheLimitsAndBalanceAtAnyPlaceAndScale) {
  support::Random draw(1302);
  for (const Form& f : forms())
    for (int trial = 0; trial < 60; ++trial) {
      const omReal64 scale = std::pow(10.0, draw.uniform(-6, 6)), offset = trial % 3 == 0 ? 1e6 * scale : 0;
      const omReal64 rounding = 1e-14 * (scale + offset);
      std::vector<omReal64> points = drawn(f, draw, 40 + draw.below(100), 1e-3);
      for (omReal64& value : points) value = scale * value + offset;
      const SampleView view{points.data(), points.size() / f.dimension, f.dimension};
      FormDeviation leastSquares;
      ASSERT_TRUE(f.function(view, eFR_LeastSquares, leastSquares));
      for (int reference = 1; reference < f.nbReferences; ++reference) {
        SCOPED_TRACE(std::string(f.name) + ", reference " + std::to_string(reference));
        FormDeviation form;
        const EstimationStatus status = f.function(view, static_cast<eFormReference>(reference), form);
        ASSERT_TRUE(status) << status;
        if (reference == eFR_MinimumZone) {
          EXPECT_LE(form.deviation, leastSquares.deviation);
        }
        if (reference == eFR_MaximumInscribed) {
          EXPECT_GE(form.radius, leastSquares.lowest);
        }
        if (reference == eFR_MinimumCircumscribed) {
          EXPECT_LE(form.radius, leastSquares.highest);
        }
        std::array<omReal64, 2> sums{};
        std::array<SpatialPoint, 2> balance{};
        for (const FormContact& contact : form.contacts) {
          const SpatialPoint point = pointAt(points, f.dimension, contact.index), o = point - form.point;
          const bool isFlat = f.function == flatness || f.function == planarStraightness;
          const SpatialPoint across = f.dimension == 3 ? form.direction : cross(SpatialPoint{0, 0, 1}, form.direction);
          const SpatialPoint radial = o - form.direction * dot(o, form.direction);
          const omReal64 distance = isFlat ? dot(o, across) : std::sqrt(dot(radial, radial));
          EXPECT_NEAR(distance, contact.side > 0 ? form.highest : form.lowest, rounding + 8e-9 * scale);
          EXPECT_GE(contact.multiplier, 0);
          sums[contact.side > 0] += contact.multiplier;
          const std::array<SpatialPoint, 2> gradient = gradientOf(f, form, point);
          for (std::size_t k = 0; k < 2; ++k)
            balance[k] = balance[k] + gradient[k] * (contact.side * contact.multiplier);
        }
        const bool hasOuter = reference != eFR_MaximumInscribed;
        const bool hasInner = reference != eFR_MinimumCircumscribed && f.function != spatialStraightness;
        EXPECT_NEAR(sums[1], hasOuter, 1e-9);
        EXPECT_NEAR(sums[0], hasInner, 1e-9);
        // Of flat zones what remains is across them.
        const bool isFlat = f.function == flatness || f.function == planarStraightness;
        const SpatialPoint across = f.dimension == 3 ? form.direction : cross(SpatialPoint{0, 0, 1}, form.direction);
        if (isFlat) balance[1] = balance[1] - across * dot(balance[1], across);
        // A circumscribed cylinder may be held by the curvature of the distances as well as by contacts.
        const omReal64 tolerance = f.function == spatialStraightness ? 5e-3 : 1e-7;
        EXPECT_LE(std::sqrt(dot(balance[0], balance[0])), tolerance);
        EXPECT_LE(std::sqrt(dot(balance[1], balance[1])), tolerance * (scale + 1e-8 * offset));
        EXPECT_LE(form.imbalance, tolerance);
      }
    }
}

TEST(FormDeviation, RefusesWhatHasNoSuchElement) {
  FormDeviation form;
  form.deviation = 7;
  const std::vector<omReal64> line{0, 0, 1, 1, 2, 2, 3, 3, 5, 5}, arc{1, 0, 0.99, 0.1, 0.95, 0.3, 0.9, 0.43},
      wild{0, 0, support::s_infinity, 1, 2, 2, 3, 1};
  EXPECT_EQ(roundness({line.data(), 5, 2}, eFR_MinimumZone, form).code, eEC_Collinear);
  EXPECT_EQ(roundness({arc.data(), 4, 2}, eFR_MaximumInscribed, form).code, eEC_NotOfThisType);
  EXPECT_EQ(roundness({wild.data(), 4, 2}, eFR_MinimumZone, form).indices, std::vector<std::size_t>{1});
  for (const Form& f : forms()) {
    EXPECT_EQ(f.function({nullptr, 0, f.dimension}, eFR_MinimumZone, form).code, eEC_TooFewSamples);
    EXPECT_EQ(f.function({line.data(), 2, 5}, eFR_MinimumZone, form).code, eEC_InvalidInput);
    const auto none = static_cast<eFormReference>(f.nbReferences == 2 ? 2 : 3);
    EXPECT_EQ(f.function({line.data(), 1, f.dimension}, none, form).code,
              f.nbReferences == 2 ? eEC_InvalidInput : eEC_TooFewSamples);
  }
  EXPECT_EQ(form.deviation, 7);
  // The circle stays inside, and does not slip out towards a point that stands apart.
  std::vector<omReal64> outlier{2.2, 2.2};
  for (const omReal64 turn : {1, 2, 3, 4, 5, 6, 7, 8}) {
    const omReal64 angle = (turn + 0.5) * s_pi / 4;
    outlier.insert(outlier.end(), {std::cos(angle), std::sin(angle)});
  }
  ASSERT_TRUE(roundness({outlier.data(), 9, 2}, eFR_MaximumInscribed, form));
  EXPECT_NEAR(form.radius, 1, 1e-12);
}

}  // namespace
}  // namespace ormix

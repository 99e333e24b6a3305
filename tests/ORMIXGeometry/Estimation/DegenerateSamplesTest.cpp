// What estimators say of samples that determine no model: the same at every scale and place.

#include <ORMIXGeometry/ORMIXGeometry.h>

#include <memory>

#include "support/EstimationSamples.h"

namespace {

using namespace estimation;
using namespace ormix::geom;
using Estimators = std::vector<std::unique_ptr<BaseEstimator>>;

template <class... Estimator>
Estimators made(ClassList<Estimator...>) {
  Estimators all;
  (all.push_back(std::make_unique<Estimator>()), ...);
  return all;
}

/// Whole numbers, so that scales and offsets by powers of two are exact.
struct Degenerate {
  const char* estimators;  ///< what their class names begin with, by spaces
  std::size_t dimension;   ///< of the points: 2 or 3
  const char* what;
  Values values;
  eEstimationCode code;
  std::vector<std::size_t> indices{};  ///< to blame
};

const Values s_mirroredSquare{1, 1, -1, 1, -1, 1, 1, 1, -1, -1, 1, -1, 1, -1, -1, -1};
const Values s_mirroredCross{1, 0,  0, -1, 0,  0, -1, 0, 0, 1, 0, 0, 0, 1, 0,  0, 1, 0,
                             0, -1, 0, 0,  -1, 0, 0,  0, 1, 0, 0, 1, 0, 0, -1, 0, 0, -1};
/// Of t = 0 to 5, a point by two polynomials: on a curve, a line or at one place.
template <class Point>
Values along(const Point& point) {
  Values values;
  for (int t = 0; t < 6; ++t) {
    const Values pair = point(omReal64(t));
    values.insert(values.end(), pair.begin(), pair.end());
  }
  return values;
}

std::vector<Degenerate> degenerates() {
  const Values oneSource2 = along([](omReal64 t) { return Values{3, 4, t * t, t}; });
  const Values oneTarget2 = along([](omReal64 t) { return Values{t, t * t, 3, 4}; });
  const Values onePair2 = along([](omReal64) { return Values{3, 4, 5, 6}; });
  const Values oneSource3 = along([](omReal64 t) { return Values{3, 4, 5, t * t, t, t * t * t}; });
  const Values oneTarget3 = along([](omReal64 t) { return Values{t, t * t, t * t * t, 3, 4, 5}; });
  const Values onePair3 = along([](omReal64) { return Values{3, 4, 5, 5, 6, 7}; });
  const Values lineSources2 = along([](omReal64 t) { return Values{t, 2 * t + 1, t * t, t}; });
  const Values lineTargets2 = along([](omReal64 t) { return Values{t, t * t, 3 * t, 4 - t}; });
  const Values lineSources3 = along([](omReal64 t) { return Values{t, 2 * t + 1, -t, t * t, t, t * t * t}; });
  const Values lineTargets3 = along([](omReal64 t) { return Values{t, t * t, t * t * t, 3 * t, 4 - t, t}; });
  const Values planeSources3 = along([](omReal64 t) { return Values{t, t * t, t + t * t, t * t, t, t * t * t}; });
  const Values planeTargets3 = along([](omReal64 t) { return Values{t, t * t, t * t * t, t, t * t, 1 - t}; });
  const char* maps2 = "Translation Rigid Similarity Homography";
  const char* turned2 = "Translation Rigid Similarity";
  const char* turned3 = "Rigid Similarity";
  return {
      {maps2, 2, "one source", oneSource2, eEC_Coincident},
      {maps2, 2, "one target", oneTarget2, eEC_Coincident},
      {maps2, 2, "one pair", onePair2, eEC_Coincident, {1, 2, 3, 4, 5}},
      {maps2, 3, "one source", oneSource3, eEC_Coincident},
      {maps2, 3, "one target", oneTarget3, eEC_Coincident},
      {maps2, 3, "one pair", onePair3, eEC_Coincident, {1, 2, 3, 4, 5}},
      {turned2, 2, "mirror image of a square", s_mirroredSquare, eEC_NotUnique},
      {turned3, 3, "mirror image of a cross", s_mirroredCross, eEC_NotUnique},
      {turned3, 3, "sources on a line", lineSources3, eEC_Collinear},
      {turned3, 3, "targets on a line", lineTargets3, eEC_Collinear},
      {"Homography", 2, "sources on a line", lineSources2, eEC_Collinear},
      {"Homography", 2, "targets on a line", lineTargets2, eEC_Collinear},
      {"Homography", 3, "sources on a line", lineSources3, eEC_Coplanar},
      {"Homography", 3, "targets on a line", lineTargets3, eEC_Coplanar},
      {"Homography", 3, "sources in a plane", planeSources3, eEC_Coplanar},
      {"Homography", 3, "targets in a plane", planeTargets3, eEC_Coplanar},
      {"Homography", 2, "a pair twice", {0, 0, 1, 1, 4, 0, 5, 0, 0, 3, 2, 4, 4, 0, 5, 0}, eEC_RankDeficient, {3}},
  };
}

/// Of points, for estimators of entities, whose names are given whole.
std::vector<Degenerate> clouds() {
  const Values one2 = along([](omReal64) { return Values{3, 4}; });
  const Values line2 = along([](omReal64 t) { return Values{t, 2 * t + 1}; });
  const Values cross2{1, 0, 0, 1, -1, 0, 0, -1};
  const Values parabola2 = along([](omReal64 t) { return Values{t, t * t}; });
  const Values one3 = along([](omReal64) { return Values{3, 4, 5}; });
  const Values line3 = along([](omReal64 t) { return Values{t, 2 * t + 1, -t}; });
  Values plane3, saddle3, cross3{1, 0, 0, -1, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 1, 0, 0, -1};
  for (int x = -2; x < 3; ++x)
    for (int y = -2; y < 3; ++y) {
      plane3.insert(plane3.end(), {omReal64(x), omReal64(y), omReal64(x + y + 1)});
      saddle3.insert(saddle3.end(), {omReal64(x), omReal64(y), omReal64(x * x - y * y)});
    }
  const auto repeated = [](const Values& values, std::size_t times) {
    Values result;
    for (std::size_t k = 0; k < times; ++k) result.insert(result.end(), values.begin(), values.end());
    return result;
  };
  return {
      {"Circle2d Ellipse2d Line2d", 2, "one point", one2, eEC_Coincident, {1, 2, 3, 4, 5}},
      {"Circle2d Ellipse2d", 2, "a line", line2, eEC_Collinear},
      {"Line2d", 2, "a cross", cross2, eEC_NoDirection},
      {"Ellipse2d", 2, "a parabola", parabola2, eEC_NotOfThisType},
      {"Sphere3d Plan3d", 3, "one point", one3, eEC_Coincident, {1, 2, 3, 4, 5}},
      {"Ellipsoid3d", 3, "one point", repeated({3, 4, 5}, 9), eEC_Coincident, {1, 2, 3, 4, 5, 6, 7, 8}},
      {"Sphere3d Plan3d", 3, "a line", line3, eEC_Collinear},
      {"Sphere3d Ellipsoid3d", 3, "a plane", plane3, eEC_Coplanar},
      {"Plan3d", 3, "a cross", cross3, eEC_NoDirection},
      {"Ellipsoid3d", 3, "a saddle", saddle3, eEC_NotOfThisType},
  };
}

/// Moves whole numbers by 2^30 and scales them, exactly.
Values moved(Values values, omReal64 scale, omReal64 offset) {
  for (omReal64& value : values) value = (value + offset) * scale;
  return values;
}

void expectStatus(BaseEstimator& estimator, const SampleView& samples, eEstimationCode code,
                  const std::vector<std::size_t>& indices) {
  SCOPED_TRACE(estimator.getClassName());
  RealVector params = vectorOf({42});
  const BoolResult result = estimator.computeEstimation(samples, params);
  const EstimationStatus& status = estimator.getStatus();
  ASSERT_FALSE(result);
  EXPECT_EQ(status.code, code) << status;
  EXPECT_EQ(status.message, result.getMessage()) << "the text is the prescribed one";
  EXPECT_EQ(status.indices, indices);
  EXPECT_FALSE(status.advice.empty());
  EXPECT_EQ(valuesOf(params), Values{42});
}

TEST(DegenerateSamples, HaveTheSameStatusAtEveryScaleAndPlace) {
  int nbInputs = 0;
  for (const Degenerate& input : degenerates())
    for (const auto& estimator : made(EstimatorList())) {
      const std::string name = estimator->getClassName().substr(std::string("ormix::geom::").size());
      const bool isMeant =
          name.find("Transform" + std::to_string(input.dimension) + "d") != std::string::npos &&
          std::string(input.estimators).find(name.substr(0, name.find("Transform"))) != std::string::npos;
      if (!isMeant) continue;
      ++nbInputs;
      for (const omReal64 scale : {0x1p-20, 1.0, 0x1p20})
        for (const omReal64 offset : {0.0, -0x1p10, 0x1p30}) {
          SCOPED_TRACE(std::string(input.what) + ", scale " + std::to_string(scale) + ", at " + std::to_string(offset));
          const Values values = moved(input.values, scale, offset);
          expectStatus(*estimator, viewOf(values, 2 * input.dimension), input.code, input.indices);
        }
    }
  for (const Degenerate& input : clouds())
    for (const auto& estimator : made(EstimatorList())) {
      const std::string name = estimator->getClassName().substr(std::string("ormix::geom::").size());
      const std::string models = " " + std::string(input.estimators) + " ";
      if (models.find(" " + name.substr(0, name.find("Estimator")) + " ") == std::string::npos) continue;
      ++nbInputs;
      for (const omReal64 scale : {0x1p-20, 1.0, 0x1p20})
        for (const omReal64 offset : {0.0, -0x1p10, 0x1p30}) {
          SCOPED_TRACE(std::string(input.what) + ", scale " + std::to_string(scale) + ", at " + std::to_string(offset));
          const Values values = moved(input.values, scale, offset);
          expectStatus(*estimator, viewOf(values, input.dimension), input.code, input.indices);
        }
    }
  // Whatever the model: too few, numbers that are none, and another dimension.
  for (const auto& estimator : made(EstimatorList())) {
    const std::size_t dimension = estimator->getSampleDimension(), nb = estimator->getMinimalDataSize() + 2;
    Random random(3);
    Values values(nb * (dimension + 1));
    for (omReal64& value : values) value = random.uniform();
    expectStatus(*estimator, {values.data(), nb - 3, dimension}, eEC_TooFewSamples, {});
    expectStatus(*estimator, {values.data(), nb - 1, dimension + 1}, eEC_InvalidInput, {});
    values.resize(nb * dimension);
    for (const omReal64 wrong : {s_nan, s_infinity}) {
      Values damaged = values;
      damaged[dimension + 1] = wrong;
      damaged.back() = wrong;
      expectStatus(*estimator, viewOf(damaged, dimension), eEC_InvalidInput, {1, nb - 1});
    }
    nbInputs += 4;
  }
  Line2dIntersectionEstimator intersection;
  for (const omReal64 scale : {0x1p-20, 1.0, 0x1p20})
    for (const omReal64 offset : {0.0, 0x1p30}) {
      const auto lines = [&](Values rhos) {
        Values values;
        for (const omReal64 rho : rhos) values.insert(values.end(), {0.5, (rho + offset) * scale});
        return values;
      };
      expectStatus(intersection, viewOf(lines({1, 2, 4}), 2), eEC_RankDeficient, {});
      expectStatus(intersection, viewOf(lines({1, 2, 1}), 2), eEC_RankDeficient, {2});
    }
  EXPECT_GE(nbInputs + 2, 60);
}

TEST(DegenerateSamples, NameAPrescribedAbsoluteThreshold) {
  const Values small = moved({0, 0, 0, 0, 3, 0, 0, 3, 0, 4, -4, 0}, 0x1p-20, 0);
  for (const auto& estimator :
       made(ClassList<TranslationTransform2dEstimator, RigidTransform2dEstimator, SimilarityTransform2dEstimator>())) {
    expectStatus(*estimator, viewOf(small, 4), eEC_RankDeficient, {});
    EXPECT_NE(estimator->getStatus().quantity.find("absolute"), std::string::npos);
    EXPECT_LT(estimator->getStatus().value, estimator->getStatus().threshold);
    RealVector params;
    EXPECT_TRUE(estimator->computeEstimation(viewOf(moved(small, 0x1p20, 0), 4), params));
  }
}

}  // namespace

#include <ORMIXMath/Algebra/VectorArithmetic.h>
#include <ORMIXMath/Fitting/MinimalShapes.h>
#include <ORMIXMath/Fitting/SpatialShapesFromSamples.h>
#include <ORMIXMath/Fitting/SurfaceModels.h>

#include <functional>
#include <vector>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix {
namespace {

using namespace detail;

/// A fit to points of space: its status and the sum of squared distances of its shape.
struct Fitted {
  EstimationStatus status;
  omReal64 cost = 0;
};

template <class Shape>
omReal64 costOf(const Shape& shape, const std::vector<omReal64>& xyz) {
  omReal64 cost = 0;
  for (std::size_t i = 0; i < xyz.size(); i += 3)
    cost += std::pow(distanceTo(shape, {xyz[i], xyz[i + 1], xyz[i + 2]}), 2);
  return cost;
}

template <class Shape>
Fitted fitted(EstimationStatus (*fit)(const SampleView&, Shape&), const std::vector<omReal64>& xyz) {
  Shape shape{};
  Fitted result{fit({xyz.data(), xyz.size() / 3, 3}, shape)};
  result.cost = result.status ? costOf(shape, xyz) : 0;
  return result;
}

/// A shape in a frame: a point of it by two numbers in [0, 1], moved off it by a distance.
struct Kind {
  const char* name;
  std::size_t nbLeast;
  std::function<FramePlace(omReal64, omReal64, omReal64)> place;
  std::function<Fitted(const std::vector<omReal64>&)> fit;
  std::function<omReal64(const SurfaceFrame&, omReal64, const std::vector<omReal64>&)> trueCost;
};

FramePlace turned(omReal64 radius, omReal64 height, omReal64 angle) {
  return {height, radius * std::cos(angle), radius * std::sin(angle)};
}

const std::vector<Kind>& kinds() {
  static const std::vector<Kind> all{
      {"line", 2, [](omReal64 s, omReal64 t, omReal64 e) { return turned(e, 5 * s, 6 * t); },
       [](const auto& xyz) { return fitted<SpatialLine>(lineFromSamples, xyz); },
       [](const auto& f, omReal64, const auto& xyz) {
         return costOf(SpatialLine{f.origin, f.axis}, xyz);
       }},
      {"circle", 3, [](omReal64 s, omReal64 t, omReal64 e) { return turned(2 + e, e * t, 1.5 * s); },
       [](const auto& xyz) { return fitted<SpatialCircle>(circleFromSamples, xyz); },
       [](const auto& f, omReal64 k, const auto& xyz) {
         return costOf(SpatialCircle{f.origin, f.axis, 2 * k}, xyz);
       }},
      {"cylinder", 5, [](omReal64 s, omReal64 t, omReal64 e) { return turned(2 + e, 5 * t, 1.5 * s); },
       [](const auto& xyz) { return fitted<SpatialCylinder>(cylinderFromSamples, xyz); },
       [](const auto& f, omReal64 k, const auto& xyz) {
         return costOf(SpatialCylinder{f.origin, f.axis, 2 * k}, xyz);
       }},
      {"cone", 6,
       [](omReal64 s, omReal64 t, omReal64 e) {
         const omReal64 along = 1 + 4 * t;
         return turned(along * std::sin(0.4) + e * std::cos(0.4), along * std::cos(0.4) - e * std::sin(0.4), 3 * s);
       },
       [](const auto& xyz) { return fitted<SpatialCone>(coneFromSamples, xyz); },
       [](const auto& f, omReal64, const auto& xyz) {
         return costOf(SpatialCone{f.origin, f.axis, 0.4}, xyz);
       }},
      {"torus", 7,
       [](omReal64 s, omReal64 t, omReal64 e) {
         return turned(3 + (1 + e) * std::cos(6.2 * t), (1 + e) * std::sin(6.2 * t), 2 * s);
       },
       [](const auto& xyz) { return fitted<SpatialTorus>(torusFromSamples, xyz); },
       [](const auto& f, omReal64 k, const auto& xyz) {
         return costOf(SpatialTorus{f.origin, f.axis, 3 * k, k}, xyz);
       }}};
  return all;
}

TEST(SpatialShapesFromSamples, AreNeverWorseThanTheShapeThatWasSampled) {
  support::Random draw(1201);
  for (const Kind& kind : kinds())
    for (const omReal64 noise : {0.0, 1e-3})
      for (const omReal64 scale : {1e-6, 1.0, 1e6})
        for (const omReal64 offset : {0.0, 1e9})
          for (const std::size_t nbPoints : {3 * kind.nbLeast, std::size_t{700}}) {
            if (offset > 0 && scale < 1) continue;
            SCOPED_TRACE(std::string(kind.name) + " of scale " + std::to_string(scale) + ", offset " +
                         std::to_string(offset) + ", noise " + std::to_string(noise));
            const SurfaceFrame frame = SurfaceFrame::of({offset, -offset, scale}, {1, draw.uniform(), draw.uniform()},
                                                        {draw.uniform(), 1, -draw.uniform()});
            std::vector<omReal64> xyz;
            for (std::size_t i = 0; i < nbPoints; ++i) {
              const FramePlace p = kind.place((static_cast<omReal64>(i) + 0.5) / static_cast<omReal64>(nbPoints),
                                              std::abs(draw.uniform()), noise * draw.uniform());
              const SpatialPoint point = frame.origin + frame.axis * (scale * p.height) + frame.normal * (scale * p.x) +
                                         frame.across * (scale * p.y);
              xyz.insert(xyz.end(), {point.x, point.y, point.z});
            }
            const Fitted result = kind.fit(xyz);
            ASSERT_TRUE(result.status) << result.status;
            const omReal64 rounding = 4e-15 * std::max(offset, scale);
            EXPECT_LE(result.cost, kind.trueCost(frame, scale, xyz) * (1 + 1e-9) +
                                       rounding * rounding * static_cast<omReal64>(nbPoints));
          }
}

/// How many of 200 sets of points of a kind lead back to the shape, through all of its points; and from a shape that is
/// a little off to the best one.
template <class Shape, std::size_t N>
std::size_t nbFoundBack(const std::string& name, std::size_t (*through)(const SampleView&, std::array<Shape, N>&),
                        EstimationStatus (*refine)(const SampleView&, Shape&)) {
  const auto& all = kinds();
  const Kind& kind = *std::find_if(all.begin(), all.end(), [&](const Kind& each) { return each.name == name; });
  support::Random draw(1203);
  std::size_t nbFound = 0;
  for (int set = 0; set < 200; ++set) {
    const SurfaceFrame frame = SurfaceFrame::of({300, -200, 100}, {1, draw.uniform(), draw.uniform()}, {0, 1, 2});
    const auto points = [&](std::size_t count, omReal64 noise) {
      std::vector<omReal64> xyz;
      for (std::size_t i = 0; i < count; ++i) {
        const FramePlace p = kind.place(std::abs(draw.uniform()), std::abs(draw.uniform()), noise * draw.uniform());
        const SpatialPoint point = frame.origin + frame.axis * p.height + frame.normal * p.x + frame.across * p.y;
        xyz.insert(xyz.end(), {point.x, point.y, point.z});
      }
      return xyz;
    };
    const auto viewed = [](const std::vector<omReal64>& xyz) { return SampleView{xyz.data(), xyz.size() / 3, 3}; };
    const std::vector<omReal64> few = points(kind.nbLeast, 0), many = points(100, 0.02);
    std::array<Shape, N> found;
    const std::size_t nbShapes = through(viewed(few), found);
    for (std::size_t k = 0; k < nbShapes; ++k) {
      EXPECT_LE(costOf(found[k], few), 1e-5) << name << " set " << set;
      if (!(costOf(found[k], many) < 1)) continue;
      ++nbFound;
      EXPECT_TRUE(refine(viewed(many), found[k]));
      EXPECT_LE(costOf(found[k], many), kind.trueCost(frame, 1, many));
      break;
    }
  }
  return nbFound;
}

TEST(MinimalShapes, PassThroughTheirPointsAndOftenAreTheOneSampled) {
  EXPECT_GE(nbFoundBack<SpatialCylinder>("cylinder", cylindersThrough, refineCylinder), 180u);
  EXPECT_GE(nbFoundBack<SpatialCone>("cone", conesThrough, refineCone), 60u);
  EXPECT_GE(nbFoundBack<SpatialTorus>("torus", toriThrough, refineTorus), 10u);
}

TEST(SpatialShapesFromSamples, SayWhatTheSamplesLackAtEveryScale) {
  support::Random draw(1202);
  for (const Kind& kind : kinds())
    for (const omReal64 scale : {1e-6, 1.0, 1e6})
      for (const omReal64 offset : {0.0, 1e9 * scale}) {
        SCOPED_TRACE(std::string(kind.name) + " of scale " + std::to_string(scale));
        std::vector<omReal64> point, line, plane;
        for (int i = 0; i < 20; ++i) {
          const omReal64 s = scale * draw.uniform(), t = scale * draw.uniform();
          point.insert(point.end(), {offset + scale, offset, offset});
          line.insert(line.end(), {offset + s, offset + 2 * s, offset - s});
          plane.insert(plane.end(), {offset + s, offset + t, offset + s + t});
        }
        EXPECT_EQ(kind.fit(point).status.code, eEC_Coincident);
        EXPECT_EQ(kind.fit(line).status.code, kind.nbLeast > 2 ? eEC_Collinear : eEC_Success);
        EXPECT_EQ(kind.fit(plane).status.code, kind.nbLeast > 3 ? eEC_Coplanar : eEC_Success);
        point.resize(3 * (kind.nbLeast - 1));
        EXPECT_EQ(kind.fit(point).status.code, eEC_TooFewSamples);
        line[7] = support::s_infinity;
        EXPECT_EQ(kind.fit(line).status.code, eEC_InvalidInput);
        EXPECT_EQ(kind.fit(line).status.indices, std::vector<std::size_t>{2});
      }
}

TEST(ArcFromSamples, HoldsTheFeetOfAllSamplesAndFindsShortArcs) {
  support::Random draw(1203);
  for (const omReal64 sweep : {0.1, 1.0, 4.0, 5.5})
    for (int trial = 0; trial < 50; ++trial) {
      const omReal64 start = 3 * draw.uniform();
      std::vector<omReal64> xy;
      for (int i = 0; i <= 40; ++i) {
        const omReal64 angle = start + sweep * i / 40;
        xy.insert(xy.end(), {1e6 + 7 * std::cos(angle), 7 * std::sin(angle) - 1e6});
      }
      PlanarArc arc{};
      const EstimationStatus status = arcFromSamples({xy.data(), 41, 2}, arc);
      ASSERT_TRUE(status) << status;
      EXPECT_NEAR(arc.radius, 7, 1e-9 / (sweep * sweep));
      EXPECT_NEAR(arc.sweep, sweep, 1e-9 / sweep);
      for (std::size_t i = 0; i < xy.size(); i += 2) EXPECT_LE(distanceTo(arc, {xy[i], xy[i + 1]}), 2e-9);
      const omReal64 beyond = arc.startAngle + arc.sweep + 0.01;
      EXPECT_NEAR(distanceTo(arc, {arc.center.x + 7 * std::cos(beyond), arc.center.y + 7 * std::sin(beyond)}), 0.07,
                  1e-5);
    }
}

}  // namespace
}  // namespace ormix

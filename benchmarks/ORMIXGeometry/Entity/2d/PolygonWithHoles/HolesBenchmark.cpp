#include <ORMIXGeometry/Entity/2d/PolygonWithHoles/PolygonWithHoles2d.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>
#include <benchmark/benchmark.h>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <utility>

namespace ormix::benchmarks {
namespace {

using Node = geom::PolygonWithHoles2d<omReal64>;
using BoostPoint = boost::geometry::model::d2::point_xy<omReal64>;
using BoostPolygon = boost::geometry::model::polygon<BoostPoint, false, true>;

constexpr std::size_t nbHoles = 10000;
constexpr omReal64 step = 1e-7;

/// Calls `add(x, y)` with the vertices of a square of side 1, one of a hundred in a row.
template <class Add>
void addSquare(std::size_t index, Add add) {
  const auto x = static_cast<omReal64>(3 * (index % 100) + 1), y = static_cast<omReal64>(3 * (index / 100) + 1);
  add(x, y);
  add(x, y + 1);
  add(x + 1, y + 1);
  add(x + 1, y);
  add(x, y);
}

boost::shared_ptr<Node> ours() {
  const auto root = boost::make_shared<Node>();
  root->getPolygonHoles().reserve(nbHoles);
  for (std::size_t index = 0; index < nbHoles; ++index) {
    auto hole = boost::make_shared<Node>();
    hole->getExteriorPolygon().setPolygon2dType(geom::eP2DT_Interior);
    auto& points = hole->getExteriorPolygon().getPointColl();
    points.reserve(5);
    addSquare(index, [&points](omReal64 x, omReal64 y) { points.emplace_back(x, y); });
    hole->setParent(root);
    root->getPolygonHoles().push_back(std::move(hole));
  }
  return root;
}

/// The same, of holes that are made together.
boost::shared_ptr<Node> oursTogether() {
  const auto root = boost::make_shared<Node>();
  auto hole = root->addHoles(nbHoles);
  for (std::size_t index = 0; index < nbHoles; ++index, ++hole) {
    (*hole)->getExteriorPolygon().setPolygon2dType(geom::eP2DT_Interior);
    auto& points = (*hole)->getExteriorPolygon().getPointColl();
    points.reserve(5);
    addSquare(index, [&points](omReal64 x, omReal64 y) { points.emplace_back(x, y); });
  }
  return root;
}

BoostPolygon boosts() {
  BoostPolygon polygon;
  polygon.inners().resize(nbHoles);
  for (std::size_t index = 0; index < nbHoles; ++index) {
    polygon.inners()[index].reserve(5);
    addSquare(index, [&](omReal64 x, omReal64 y) { polygon.inners()[index].emplace_back(x, y); });
  }
  return polygon;
}

// Each row but that in place releases what it makes.
void holesBuild(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(ours().get());
}
void holesBuildTogether(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(oursTogether().get());
}
void holesBuildBoost(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(boosts().inners().data());
}

void holesCopy(benchmark::State& state) {
  const auto tree = ours();
  for (auto _ : state) benchmark::DoNotOptimize(Node(*tree).getNbHoles());
}
void holesCopyBoost(benchmark::State& state) {
  const BoostPolygon polygon = boosts();
  for (auto _ : state) benchmark::DoNotOptimize(BoostPolygon(polygon).inners().data());
}

void holesInSitu(benchmark::State& state) {
  const auto tree = ours();
  const geom::TranslationTransform2d shift(Translation2d(step, -step));
  for (auto _ : state) benchmark::DoNotOptimize(shift.applyInSitu(*tree));
}
void holesInSituBoost(benchmark::State& state) {
  BoostPolygon polygon = boosts();
  for (auto _ : state) {
    boost::geometry::for_each_point(polygon, [](BoostPoint& point) {
      point.x(point.x() + step);
      point.y(point.y() - step);
    });
    benchmark::ClobberMemory();
  }
}

void holesIntoNew(benchmark::State& state) {
  const auto tree = ours();
  const geom::TranslationTransform2d shift(Translation2d(step, -step));
  for (auto _ : state) benchmark::DoNotOptimize(shift.apply(*tree));
}
void holesIntoNewBoost(benchmark::State& state) {
  const BoostPolygon polygon = boosts();
  const boost::geometry::strategy::transform::translate_transformer<omReal64, 2, 2> shift(step, -step);
  for (auto _ : state) {
    BoostPolygon image;
    boost::geometry::transform(polygon, image, shift);
    benchmark::DoNotOptimize(image.inners().data());
  }
}

}  // namespace

// clang-format off
BENCHMARK(holesBuild)->Unit(benchmark::kMillisecond);
BENCHMARK(holesBuildTogether)->Unit(benchmark::kMillisecond);
BENCHMARK(holesBuildBoost)->Unit(benchmark::kMillisecond);
BENCHMARK(holesCopy)->Unit(benchmark::kMillisecond);
BENCHMARK(holesCopyBoost)->Unit(benchmark::kMillisecond);
BENCHMARK(holesInSitu)->Unit(benchmark::kMillisecond);
BENCHMARK(holesInSituBoost)->Unit(benchmark::kMillisecond);
BENCHMARK(holesIntoNew)->Unit(benchmark::kMillisecond);
BENCHMARK(holesIntoNewBoost)->Unit(benchmark::kMillisecond);
// clang-format on

}  // namespace ormix::benchmarks

#include <benchmark/benchmark.h>
#include <benchmarks/support/StarPolygon.h>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <charconv>
#include <string>

namespace ormix::benchmarks {
namespace {

constexpr std::size_t nbPoints = 100000;

/// "x y, x y, ..." with the shortest decimals that read back as the same numbers.
template <class T>
std::string ringText() {
  std::string text;
  const std::vector<T> xy = starRing<T>(nbPoints);
  for (std::size_t i = 0; i < xy.size(); ++i) {
    char number[32];
    const auto end = std::to_chars(number, number + sizeof number, xy[i]).ptr;
    text.append(number, end).append(i % 2 == 0 ? " " : ", ");
  }
  text.resize(text.size() - 2);
  return text;
}

template <class T>
void wktReadOurs(benchmark::State& state) {
  const std::string text = ringText<T>();
  for (auto _ : state) {
    geom::Polygon2d<T> polygon;
    fromString(polygon, text);
    benchmark::DoNotOptimize(polygon.getNbPoints());
  }
}

template <class T>
void wktReadBoost(benchmark::State& state) {
  using Point = boost::geometry::model::d2::point_xy<T>;
  const std::string text = "POLYGON((" + ringText<T>() + "))";
  for (auto _ : state) {
    boost::geometry::model::polygon<Point, false, true> polygon;
    boost::geometry::read_wkt(text, polygon);
    benchmark::DoNotOptimize(polygon.outer().size());
  }
}

/// Converting the numbers alone, separators skipped unseen.
template <class T>
void wktReadLimit(benchmark::State& state) {
  const std::string text = ringText<T>();
  for (auto _ : state) {
    std::vector<T> xy;
    const char* const end = text.data() + text.size();
    for (const char* at = text.data();; at += xy.size() % 2 == 0 ? 2 : 1) {
      T value{};
      at = std::from_chars(at, end, value).ptr;
      xy.push_back(value);
      if (at == end) break;
    }
    benchmark::DoNotOptimize(xy.data());
  }
}

}  // namespace

// clang-format off
BENCHMARK_TEMPLATE(wktReadLimit, omReal64)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(wktReadOurs, omReal64)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(wktReadBoost, omReal64)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(wktReadLimit, omInt32)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(wktReadOurs, omInt32)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(wktReadBoost, omInt32)->Unit(benchmark::kMillisecond);
// clang-format on

}  // namespace ormix::benchmarks

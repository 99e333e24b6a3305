#include <ORMIXGeometry/Entity/2d/Shape/LabelShapes.h>
#include <ORMIXGeometry/Entity/3d/Mesh/QuickHull.h>
#include <ORMIXGeometry/Tools/Contact/ContactLength.h>
#include <ORMIXGeometry/Tools/Contact/ContactSurface.h>
#include <ORMIXGeometry/Tools/Contact/RegionContacts.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>

namespace ormix::benchmarks {
namespace {

using namespace geom;

constexpr omReal64 s_pi = 3.14159265358979323846;

/// A wavy ring of 10⁵ vertices, about 1000 across, and all around it a frame whose hole is wider by 2.
Polygon2d<omReal64> wavyRing(omReal64 wider) {
  constexpr int n = 100000;
  Polygon2d<omReal64> ring;
  for (int i = 0; i < n; ++i) {
    const omReal64 angle = 2 * s_pi * i / n;
    const omReal64 radius = 300 + wider + 150 * std::sin(40 * angle) + 20 * std::sin(400 * angle);
    ring.getPointColl().emplace_back(radius * std::cos(angle), radius * std::sin(angle));
  }
  return ring;
}
PolygonWithHoles2d<omReal64> frame() {
  PolygonWithHoles2d<omReal64> result;
  result.getExteriorPolygon().getPointColl() = {{-600, -600}, {600, -600}, {600, 600}, {-600, 600}};
  result.getPolygonHoles().push_back(boost::make_shared<PolygonWithHoles2d<omReal64>>());
  result.getPolygonHoles().back()->getExteriorPolygon() = wavyRing(2);
  return result;
}

/// \param state the gap; 10 is a hundredth of the size
void contactLengthInterlocking(benchmark::State& state) {
  const Polygon2d<omReal64> inner = wavyRing(0);
  const PolygonWithHoles2d<omReal64> outer = frame();
  const auto gap = static_cast<omReal64>(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(contactLength(inner, outer, gap));
}

/// A mosaic of 10⁴ regions of 4096² pixels: each pixel belongs to the nearest seed, of which there is one in each
/// square.
Shape2dPtrColl mosaic() {
  constexpr int side = 4096, nb = 100;
  const auto seedOf = [](int i, omReal64 ratio) { return 0.1 + 0.8 * std::fmod(ratio * i, 1.0); };
  std::vector<omInt32> labels(std::size_t{side} * side);
  for (int y = 0; y < side; ++y)
    for (int x = 0; x < side; ++x) {
      const omReal64 u = (x + 0.5) * nb / side, v = (y + 0.5) * nb / side;
      omReal64 nearest = 1e9;
      for (int cellY = std::max(0, static_cast<int>(v) - 2); cellY < std::min(nb, static_cast<int>(v) + 3); ++cellY)
        for (int cellX = std::max(0, static_cast<int>(u) - 2); cellX < std::min(nb, static_cast<int>(u) + 3); ++cellX) {
          const int cell = cellY * nb + cellX;
          const omReal64 square = std::pow(cellX + seedOf(cell, 0.7548776662466927) - u, 2) +
                                  std::pow(cellY + seedOf(cell, 0.5698402909980532) - v, 2);
          if (square >= nearest) continue;
          nearest = square;
          labels[static_cast<std::size_t>(y) * side + static_cast<std::size_t>(x)] = cell + 1;
        }
    }
  return shapesOfLabels(MaskView<omInt32>{labels.data(), side, side, side});
}

/// \param state the gap, in tenths of a pixel
void contactsOfMosaic(benchmark::State& state) {
  const Shape2dPtrColl regions = mosaic();
  const omReal64 gap = static_cast<omReal64>(state.range(0)) / 10;
  for (auto _ : state) benchmark::DoNotOptimize(contacts(regions, gap));
}

/// A sphere of 10⁵ triangles of about 1.6.
Mesh3d<omReal64> sphere(omReal64 x) {
  constexpr int n = 50000;
  std::vector<Point3dData<omReal64>> points;
  for (int k = 0; k < n; ++k) {
    const omReal64 z = 1 - (2 * k + 1) / static_cast<omReal64>(n), r = std::sqrt(1 - z * z);
    const omReal64 angle = k * s_pi * (3 - std::sqrt(5.0));
    points.emplace_back(x + 150 * r * std::cos(angle), 150 * r * std::sin(angle), 150 * z);
  }
  Mesh3d<omReal64> mesh;
  quickHull(points, mesh);
  return mesh;
}

void contactSurfaceOfSpheres(benchmark::State& state) {
  const Mesh3d<omReal64> a = sphere(0), b = sphere(300);
  ContactSurface surface;
  for (auto _ : state) surface = contactSurface(a, b, 0.5, {0.03, 200});
  state.counters["area"] = surface.area;
  state.counters["bound"] = surface.bound;
}

}  // namespace

// clang-format off
BENCHMARK(contactLengthInterlocking)->ArgName("gap")->Arg(0)->Arg(2)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(contactsOfMosaic)->ArgName("gap_in_tenths")->Arg(0)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(contactSurfaceOfSpheres)->Unit(benchmark::kMillisecond);
// clang-format on

}  // namespace ormix::benchmarks

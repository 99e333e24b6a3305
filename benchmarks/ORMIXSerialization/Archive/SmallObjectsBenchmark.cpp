#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXSerialization/Archive/CborIArchive.h>
#include <ORMIXSerialization/Archive/CborOArchive.h>
#include <ORMIXSerialization/Object/ObjectArchive.h>
#include <benchmark/benchmark.h>
#include <benchmarks/support/CerealObjects.h>
#include <benchmarks/support/MemoryBuffer.h>
#include <benchmarks/support/StarPolygon.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <istream>
#include <ostream>
#include <random>

#if defined(ORMIX_BENCHMARK_CEREAL)
// Four lines a class of cereal's: what our objects by name are measured beside.
CEREAL_REGISTER_TYPE_WITH_NAME(ormix::benchmarks::peer::Numbers<2>, "Point")
CEREAL_REGISTER_TYPE_WITH_NAME(ormix::benchmarks::peer::Numbers<3>, "Circle")
CEREAL_REGISTER_TYPE_WITH_NAME(ormix::benchmarks::peer::Numbers<4>, "Segment")
CEREAL_REGISTER_TYPE_WITH_NAME(ormix::benchmarks::peer::Numbers<5>, "Ellipse")
CEREAL_REGISTER_TYPE_WITH_NAME(ormix::benchmarks::peer::Ring, "Ring")
CEREAL_REGISTER_TYPE_WITH_NAME(ormix::benchmarks::peer::RingWithHoles, "RingWithHoles")
CEREAL_REGISTER_POLYMORPHIC_RELATION(ormix::benchmarks::peer::Shape, ormix::benchmarks::peer::Numbers<2>)
CEREAL_REGISTER_POLYMORPHIC_RELATION(ormix::benchmarks::peer::Shape, ormix::benchmarks::peer::Numbers<3>)
CEREAL_REGISTER_POLYMORPHIC_RELATION(ormix::benchmarks::peer::Shape, ormix::benchmarks::peer::Numbers<4>)
CEREAL_REGISTER_POLYMORPHIC_RELATION(ormix::benchmarks::peer::Shape, ormix::benchmarks::peer::Numbers<5>)
CEREAL_REGISTER_POLYMORPHIC_RELATION(ormix::benchmarks::peer::Shape, ormix::benchmarks::peer::Ring)
CEREAL_REGISTER_POLYMORPHIC_RELATION(ormix::benchmarks::peer::Shape, ormix::benchmarks::peer::RingWithHoles)
#endif

namespace ormix::benchmarks {
namespace {

using Real = omReal64;
using Polygon = geom::Polygon2d<Real>;
using WithHoles = geom::PolygonWithHoles2d<Real>;
using Point = geom::Point2dData<Real>;
constexpr std::size_t nbObjects = 100000;
constexpr std::size_t nbHoles = 10000;

/// Points, circles, segments and ellipses in random order.
SerializationObjectPtrColl mixedObjects() {
  std::mt19937_64 generator(18);
  std::uniform_real_distribution<Real> random(1, 100);
  SerializationObjectPtrColl objects;
  for (std::size_t i = 0; i < nbObjects; ++i) {
    const Point p(random(generator), random(generator)), q(random(generator), random(generator));
    switch (generator() % 4) {
      case 0:
        objects.push_back(boost::make_shared<geom::Point2d<Real>>(p));
        break;
      case 1:
        objects.push_back(boost::make_shared<geom::Circle2d<Real>>(p, q.getX()));
        break;
      case 2:
        objects.push_back(boost::make_shared<geom::Segment2d<Real>>(p, q));
        break;
      default:
        objects.push_back(boost::make_shared<geom::Ellipse2d<Real>>(p, q.getX() + 100, q.getY(), 0.5));
        break;
    }
  }
  return objects;
}

SerializationObjectPtrColl smallPolygons() {
  SerializationObjectPtrColl polygons;
  const Polygon ring = starPolygon<Real>(20);
  for (std::size_t i = 0; i < nbObjects; ++i) polygons.push_back(boost::make_shared<Polygon>(ring));
  return polygons;
}

boost::shared_ptr<WithHoles> manyHoles() {
  auto polygon = boost::make_shared<WithHoles>();
  const Polygon ring = starPolygon<Real>(20);
  polygon->getExteriorPolygon() = ring;
  for (std::size_t i = 0; i < nbHoles; ++i) {
    auto hole = boost::make_shared<WithHoles>();
    hole->getExteriorPolygon() = ring;
    polygon->getPolygonHoles().push_back(hole);
    hole->setParent(polygon);
  }
  return polygon;
}

std::string saved(const SerializationObjectPtrColl& objects) {
  StringSink sink;
  std::ostream stream(&sink);
  saveAll(stream, objects);
  return sink.take();
}

void write(benchmark::State& state, const SerializationObjectPtrColl& objects) {
  for (auto _ : state) benchmark::DoNotOptimize(saved(objects).data());
}

void read(benchmark::State& state, const SerializationObjectPtrColl& objects) {
  const std::string text = saved(objects);
  for (auto _ : state) {
    StringSource source(text);
    std::istream stream(&source);
    benchmark::DoNotOptimize(loadAll(stream).data());
  }
}

void readTypedPolygons(benchmark::State& state) {
  StringSink sink;
  {
    std::ostream stream(&sink);
    CborOArchive archive(stream);
    for (const auto& polygon : smallPolygons()) polygon->write(archive);
  }
  const std::string text = sink.take();
  for (auto _ : state) {
    StringSource source(text);
    std::istream stream(&source);
    CborIArchive archive(stream);
    std::vector<Polygon> polygons(nbObjects);
    for (auto& polygon : polygons)
      if (const BoolResult result = polygon.read(archive); !result)
        return state.SkipWithError(result.getMessage().c_str());
    benchmark::DoNotOptimize(polygons.data());
  }
}

void writeMixedObjects(benchmark::State& state) { write(state, mixedObjects()); }
void readMixedObjects(benchmark::State& state) { read(state, mixedObjects()); }
void readSmallPolygons(benchmark::State& state) { read(state, smallPolygons()); }
void readManyHoles(benchmark::State& state) { read(state, {manyHoles()}); }

#if defined(ORMIX_BENCHMARK_CEREAL)
template <int nbNumbers>
std::shared_ptr<peer::Shape> peerNumbers() {
  return std::make_shared<peer::Numbers<nbNumbers>>();
}

peer::Shapes peerMixedObjects() {
  std::mt19937_64 generator(18);
  peer::Shapes shapes;
  for (std::size_t i = 0; i < nbObjects; ++i) {
    constexpr std::shared_ptr<peer::Shape> (*make[])() = {peerNumbers<2>, peerNumbers<3>, peerNumbers<4>,
                                                          peerNumbers<5>};
    shapes.push_back(make[generator() % 4]());
  }
  return shapes;
}

peer::Shapes peerPolygons() {
  peer::Shapes shapes;
  for (std::size_t i = 0; i < nbObjects; ++i) {
    auto ring = std::make_shared<peer::Ring>();
    ring->xy = starRing<Real>(20);
    shapes.push_back(ring);
  }
  return shapes;
}

peer::Shapes peerManyHoles() {
  auto polygon = std::make_shared<peer::RingWithHoles>();
  polygon->exterior.xy = starRing<Real>(20);
  for (std::size_t i = 0; i < nbHoles; ++i) {
    auto hole = std::make_shared<peer::RingWithHoles>();
    hole->exterior.xy = polygon->exterior.xy;
    polygon->holes.push_back(hole);
  }
  return {polygon};
}

template <class Values>
std::string peerSaved(const Values& values) {
  StringSink sink;
  std::ostream stream(&sink);
  cereal::BinaryOutputArchive archive(stream);
  archive(values);
  return sink.take();
}

template <class Values>
void peerWrite(benchmark::State& state, const Values& values) {
  for (auto _ : state) benchmark::DoNotOptimize(peerSaved(values).data());
}

template <class Values>
void peerRead(benchmark::State& state, const Values& values) {
  const std::string text = peerSaved(values);
  for (auto _ : state) {
    StringSource source(text);
    std::istream stream(&source);
    cereal::BinaryInputArchive archive(stream);
    Values read;
    archive(read);
    benchmark::DoNotOptimize(read.data());
  }
}

void cerealWriteMixedObjects(benchmark::State& state) { peerWrite(state, peerMixedObjects()); }
void cerealReadMixedObjects(benchmark::State& state) { peerRead(state, peerMixedObjects()); }
void cerealReadTypedPolygons(benchmark::State& state) {
  std::vector<peer::Ring> rings(nbObjects);
  for (auto& ring : rings) ring.xy = starRing<Real>(20);
  peerRead(state, rings);
}
void cerealReadSmallPolygons(benchmark::State& state) { peerRead(state, peerPolygons()); }
void cerealReadManyHoles(benchmark::State& state) { peerRead(state, peerManyHoles()); }
#endif

}  // namespace

// clang-format off
BENCHMARK(writeMixedObjects)->Unit(benchmark::kMillisecond);
BENCHMARK(readMixedObjects)->Unit(benchmark::kMillisecond);
BENCHMARK(readTypedPolygons)->Unit(benchmark::kMillisecond);
BENCHMARK(readSmallPolygons)->Unit(benchmark::kMillisecond);
BENCHMARK(readManyHoles)->Unit(benchmark::kMillisecond);
#if defined(ORMIX_BENCHMARK_CEREAL)
BENCHMARK(cerealWriteMixedObjects)->Unit(benchmark::kMillisecond);
BENCHMARK(cerealReadMixedObjects)->Unit(benchmark::kMillisecond);
BENCHMARK(cerealReadTypedPolygons)->Unit(benchmark::kMillisecond);
BENCHMARK(cerealReadSmallPolygons)->Unit(benchmark::kMillisecond);
BENCHMARK(cerealReadManyHoles)->Unit(benchmark::kMillisecond);
#endif
// clang-format on

}  // namespace ormix::benchmarks

#include <ORMIXGeometry/Entity/2d/Circle/Circle2d.h>
#include <ORMIXUtil/Object/DynamicObjectFactory.h>
#include <benchmark/benchmark.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <memory>

namespace ormix::benchmarks {
namespace {

using Circle = geom::Circle2d<omReal64>;

/// Meant to stay under 200 ns.
void createNewByName(benchmark::State& state) {
  const std::string name = Circle::getTypeName();
  const DynamicObjectFactory& factory = DynamicObjectFactory::getInstance();
  for (auto _ : state) {
    const std::unique_ptr<BaseDynamicObject> object(factory.createNew(name));
    benchmark::DoNotOptimize(object.get());
  }
}

void createSharedByName(benchmark::State& state) {
  const std::string name = Circle::getTypeName();
  const DynamicObjectFactory& factory = DynamicObjectFactory::getInstance();
  for (auto _ : state) benchmark::DoNotOptimize(factory.createShared(name));
}

/// The same without a name: what no factory can beat.
void createSharedLimit(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(boost::make_shared<Circle>());
}

}  // namespace

BENCHMARK(createNewByName);
BENCHMARK(createSharedByName);
BENCHMARK(createSharedLimit);

}  // namespace ormix::benchmarks

#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <memory>
#include <vector>

#if __has_include(<cereal/cereal.hpp>)
#define ORMIX_BENCHMARK_CEREAL 1
#include <cereal/archives/binary.hpp>
#include <cereal/types/memory.hpp>
#include <cereal/types/polymorphic.hpp>
#include <cereal/types/vector.hpp>

/// \file
/// Shapes as a program has them that archives with cereal: classes known by name behind one base class, shared, with
/// their coordinates as members.

namespace ormix::benchmarks::peer {

struct Shape {
  virtual ~Shape() = 0;
};
inline Shape::~Shape() = default;

/// A shape of so many numbers, such as a circle of three.
template <int nbNumbers>
struct Numbers : Shape {
  omReal64 values[nbNumbers]{};
  template <class Archive>
  void serialize(Archive& archive) {
    for (omReal64& value : values) archive(value);
  }
};

/// A ring with its coordinates in one block.
struct Ring : Shape {
  omInt32 role = 0;
  std::vector<omReal64> xy;
  template <class Archive>
  void serialize(Archive& archive) {
    archive(role, xy);
  }
};

/// A ring with holes, each of them such a shape again.
struct RingWithHoles : Shape {
  Ring exterior;
  std::vector<std::shared_ptr<Shape>> holes;
  template <class Archive>
  void serialize(Archive& archive) {
    archive(exterior, holes);
  }
};

using Shapes = std::vector<std::shared_ptr<Shape>>;

}  // namespace ormix::benchmarks::peer

#endif

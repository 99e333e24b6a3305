// What happens where memory ends: each allocation of an operation fails once, and nothing has changed then.

#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Tools/Mesh/Repair.h>
#include <ORMIXGeometry/Transform/3d/TriMeshTransforms.h>
#include <ORMIXSerialization/ORMIXSerialization.h>

#include <cstdlib>
#include <new>

#include "support/SampleObjects.h"

namespace {
thread_local std::size_t g_nbLeft = 0;  // allocations until one fails; 0: none does
}  // namespace

// Of the whole program, its shared libraries too. Not inlined: the compiler would see one half of a pair only.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return g_nbLeft > 0 && --g_nbLeft == 0 ? nullptr : std::malloc(size);
}
[[gnu::noinline]] void* operator new(std::size_t size) {
  if (void* bytes = operator new(size, std::nothrow)) return bytes;
  throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* bytes) noexcept { std::free(bytes); }
[[gnu::noinline]] void operator delete(void* bytes, std::size_t) noexcept { std::free(bytes); }

namespace {

using namespace samples;

/// Lets the n-th allocation of `operation(object)` fail for n = 1, 2, … until it needs fewer, each time on an object
/// made anew. `operation` may also answer false for its failure.
template <class Make, class Operation, class Describe>
void expectAllOrNothing(Make make, Operation operation, Describe describe, const std::string& afterwards) {
  const std::string before = describe(*make());
  ASSERT_NE(before, afterwards);
  for (std::size_t nth = 1;; ++nth) {
    const auto object = make();
    bool isDone = false;
    bool hasFailed = false;
    g_nbLeft = nth;
    try {
      isDone = operation(*object);
    } catch (const std::exception&) {
    }
    hasFailed = g_nbLeft == 0;
    g_nbLeft = 0;
    ASSERT_EQ(describe(*object), isDone ? afterwards : before) << "allocation " << nth << " failed";
    if (!hasFailed) {
      ASSERT_TRUE(isDone);
      return;
    }
  }
}

TEST(OutOfMemory, ChangesNoObjectOfAnyClass) {
  for (const ClassCase& each : classCases(AllClasses())) {
    SCOPED_TRACE(each.name);
    const auto sample = each.makeSample();
    const std::string expected = each.describe(*sample);
    if (expected.empty()) continue;  // holds nothing
    expectAllOrNothing(
        each.makeDefault,
        [&](BaseDynamicObject& object) {
          object.copy(*sample);
          return true;
        },
        each.describe, expected);
    std::stringstream bytes;
    {
      CborOArchive archive(bytes);
      ASSERT_TRUE(sample->write(archive));
    }
    expectAllOrNothing(
        each.makeDefault,
        [&](BaseSerializationObject& object) {
          bytes.clear();
          bytes.seekg(0);
          CborIArchive archive(bytes);
          return static_cast<bool>(object.read(archive));
        },
        each.describe, expected);
  }
}

template <class Transform, class Entity, class Classes>
void expectTransformedOrNot(const Transform& transform, Classes classes) {
  for (const ClassCase& each : classCases(classes)) {
    SCOPED_TRACE(each.name);
    const auto move = [&](BaseDynamicObject& object) {
      return static_cast<bool>(transform.applyInSitu(dynamic_cast<Entity&>(object)));
    };
    const auto moved = each.makeSample();
    if (move(*moved)) expectAllOrNothing(each.makeSample, move, each.describe, each.describe(*moved));
  }
}

TEST(OutOfMemory, TransformsNoEntityInPart) {
  expectTransformedOrNot<TranslationTransform2d, BaseGeometryEntity2d>({3, 5}, PlanarEntityList());
  expectTransformedOrNot<TranslationTransform3d, BaseGeometryEntity3d>({3, 5, 7}, SpatialEntityList());
}

TEST(OutOfMemory, ChangesNoMeshThatTakesAnothersParts) {
  const auto mesh = Sample<Mesh3d<omReal64>>::make();
  const auto text = [](const auto& each) {
    EXPECT_TRUE(each.checkIntegrity());
    return describe(each);
  };
  const auto makeVertices = [&mesh] {
    auto vertices = boost::make_shared<Mesh3d<omReal64>>();
    vertices->getVertexColl() = mesh.getVertexColl();
    return vertices;
  };
  expectAllOrNothing(
      makeVertices, [&](Mesh3d<omReal64>& object) { return object.copyTriangles(mesh); }, text, text(mesh));
  expectAllOrNothing([] { return boost::make_shared<Mesh3d<omInt32>>(); },
                     [&](Mesh3d<omInt32>& object) {
                       cast(mesh, object);
                       return true;
                     },
                     text, text(cast<omInt32>(mesh)));
}

TEST(OutOfMemory, ChangesNoMeshThatIsNoEntity) {
  const auto mesh = Sample<Mesh3d<omReal64>>::make();
  using FaceVertex = FaceVertexAdjTriMesh3d<omReal64>;
  const FaceVertex neighbours = toFaceVertexAdjTriMesh3d(mesh);
  const auto text = [](const auto& each) { return support::printed(each); };
  const auto textWithNeighbours = [&](const FaceVertex& each) {
    std::string all = text(each);
    for (const auto& triple : each.getNeighbourColl())
      for (const omUInt32 neighbour : triple) all += " " + std::to_string(neighbour);
    return all;
  };
  const auto makeEmpty = [] { return boost::make_shared<FaceVertex>(); };
  expectAllOrNothing(
      makeEmpty,
      [&](FaceVertex& object) {
        object = neighbours;
        return true;
      },
      textWithNeighbours, textWithNeighbours(neighbours));
  expectAllOrNothing(
      makeEmpty,
      [&](FaceVertex& object) {
        return static_cast<bool>(object.build(neighbours.getVertexColl(), neighbours.getTriangleColl()));
      },
      textWithNeighbours, textWithNeighbours(neighbours));
  expectAllOrNothing([] { return boost::make_shared<Mesh3d<omReal64>>(); },
                     [&](Mesh3d<omReal64>& object) { return static_cast<bool>(toMesh3d(neighbours, object)); }, text,
                     text(mesh));
  FaceVertex moved = neighbours;
  const TranslationTransform3d transform(3, 5, 7);
  ASSERT_TRUE(applyInSitu(transform, moved));
  expectAllOrNothing([&] { return boost::make_shared<FaceVertex>(neighbours); },
                     [&](FaceVertex& object) { return static_cast<bool>(applyInSitu(transform, object)); }, text,
                     text(moved));
}

TEST(OutOfMemory, RepairsNoMeshByHalves) {
  using FaceVertex = FaceVertexTriMesh3d<omReal64>;
  FaceVertex broken = toFaceVertexTriMesh3d(Sample<Mesh3d<omReal64>>::make());
  auto triangles = broken.getTriangleColl();
  triangles.erase(triangles.begin());
  triangles.push_back(triangles.front());
  ASSERT_TRUE(broken.build(broken.getVertexColl(), triangles));
  RepairReport report;
  const auto repaired = [&](FaceVertex& object) { return static_cast<bool>(repair(object, {}, report)); };
  FaceVertex whole = broken;
  ASSERT_TRUE(repaired(whole));
  ASSERT_EQ(report.nbDuplicate, 1u);
  expectAllOrNothing([&] { return boost::make_shared<FaceVertex>(broken); }, repaired,
                     [](const FaceVertex& each) { return support::printed(each); }, support::printed(whole));
}

/// Every slice has memory for the runs of the other shape but the last.
TEST(OutOfMemory, ChangesNoSlices) {
  const RowIntersections3d sample = Sample<Shape3d>::make().getRowIntersections();
  const auto make = [&sample] {
    auto rows = boost::make_shared<RowIntersections3d>(sample);
    rows->rowIntersectionsColl[0].clear();
    rows->rowIntersectionsColl[1] = {};
    return rows;
  };
  const auto text = [](const RowIntersections3d& rows) {
    Shape3d shape;
    shape.getRowIntersections() = rows;
    return describe(shape);
  };
  expectAllOrNothing(
      make,
      [&](RowIntersections3d& rows) {
        rows = sample;
        return true;
      },
      text, text(sample));
}

}  // namespace

// The order of the virtual functions is part of the library's interface: programs compiled against an older header call
// by slot number.

#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace ormix;
using namespace ormix::geom;

/// Slot number, from 1, of a virtual function: in the Itanium C++ ABI a pointer to it holds its offset in the table
/// + 1.
template <class F>
std::size_t slot(F function) {
  std::size_t offset = 0;
  std::memcpy(&offset, &function, sizeof(offset));
  return (offset - 1) / sizeof(void*) + 1;
}

// Function types are given to choose among the overloads.
template <class Transform>
std::size_t inSitu() {
  return slot(static_cast<bool (BaseGeometryEntity2d::*)(const Transform&)>(&BaseGeometryEntity2d::visitInSitu));
}
template <class Transform>
std::size_t nonInSitu() {
  return slot(static_cast<GeometryEntity2dPtr (BaseGeometryEntity2d::*)(const Transform&) const>(
      &BaseGeometryEntity2d::visitNonInSitu));
}
template <class Measure, class Value>
std::size_t visit() {
  return slot(static_cast<bool (BaseGeometryEntity2d::*)(const Measure&, Value&) const>(&BaseGeometryEntity2d::visit));
}

TEST(SlotOrder, OfDynamicObjects) {
  EXPECT_EQ(slot(&BaseDynamicObject::getClassName), 3u);
  EXPECT_EQ(slot(&BaseDynamicObject::createNew), 4u);
  EXPECT_EQ(slot(&BaseDynamicObject::createShared), 5u);
  EXPECT_EQ(slot(&BaseDynamicObject::hasCopySupport), 6u);
  EXPECT_EQ(slot(&BaseDynamicObject::duplicate), 7u);
  EXPECT_EQ(slot(&BaseDynamicObject::duplicateShared), 8u);
  EXPECT_EQ(slot(&BaseDynamicObject::initCtorCopy), 9u);
  EXPECT_EQ(slot(&BaseDynamicObject::copy), 10u);
  EXPECT_EQ(slot(&BaseSerializationObject::write), 11u);
  EXPECT_EQ(slot(&BaseSerializationObject::read), 12u);
}

template <class... Transforms>
void expectTransformPairs(std::size_t first) {
  std::size_t next = first;
  const auto expectPair = [&next](std::size_t inSituSlot, std::size_t nonInSituSlot) {
    EXPECT_EQ(inSituSlot, next);
    EXPECT_EQ(nonInSituSlot, next + 1);
    next += 2;
  };
  (expectPair(inSitu<Transforms>(), nonInSitu<Transforms>()), ...);
}

TEST(SlotOrder, OfPlanarEntities) {
  EXPECT_EQ(slot(&BaseGeometryEntity::getCoordinateDimension), 13u);
  expectTransformPairs<AnisotropicScaleTransform2d, HomographyTransform2d, RigidTransform2d, RotationTransform2d,
                       ScaleTransform2d, SimilarityTransform2d, TranslationTransform2d, CentroidTransform2d,
                       ConvexHullTransform2d, EnvelopeTransform2d, SimplifyTransform2d, MinEnclosingCircleTransform2d>(
      14);
  EXPECT_EQ((visit<PerimeterMsr2d, omReal64>()), 38u);
  EXPECT_EQ((visit<AreaMsr2d, omReal64>()), 39u);
  EXPECT_EQ((visit<MomentsMsr2d, Moments2dO3>()), 40u);
  EXPECT_EQ((visit<HuMomentsMsr2d, HuMoments2dO3>()), 41u);
  EXPECT_EQ(slot(&BaseGeometryEntity2d::getCoordinateSystem2dType), 42u);
  EXPECT_EQ(slot(&BaseGeometryEntity2d::getEntity2dType), 43u);
}

TEST(SlotOrder, OfPlanarMeasures) {
  using Measure = BaseTypedGeometryMeasure2d<omReal64>;
  EXPECT_EQ(slot(&BaseGeometryMeasure::getCoordinateDimension), 13u);
  EXPECT_EQ(slot(&BaseGeometryMeasure2d::getMeasure2dType), 14u);
  EXPECT_EQ(slot(static_cast<bool (Measure::*)(const BaseGeometryEntity2d&, omReal64&) const>(&Measure::measure)), 15u);
}

TEST(SlotOrder, OfPlanarTransforms) {
  using Transform = BaseGeometryTransform2d;
  EXPECT_EQ(slot(&BaseGeometryTransform::getCoordinateDimension), 13u);
  EXPECT_EQ(slot(&Transform::getTransform2dType), 14u);
  EXPECT_EQ(slot(static_cast<BoolResult (Transform::*)(BaseGeometryEntity2d&) const>(&Transform::applyInSitu)), 15u);
  EXPECT_EQ(slot(static_cast<GeometryEntity2dPtr (Transform::*)(const BaseGeometryEntity2d&) const>(&Transform::apply)),
            16u);
}

}  // namespace

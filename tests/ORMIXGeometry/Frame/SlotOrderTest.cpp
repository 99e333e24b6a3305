// The order of the virtual functions is part of the library's interface: programs compiled against an older header call
// by slot number.

#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include <cstring>
#include <utility>

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
template <class Base, class EntityPtr, class Transform>
void expectTransformPair(std::size_t first) {
  EXPECT_EQ(slot(static_cast<bool (Base::*)(const Transform&)>(&Base::visitInSitu)), first);
  EXPECT_EQ(slot(static_cast<EntityPtr (Base::*)(const Transform&) const>(&Base::visitNonInSitu)), first + 1);
}
template <class Base, class EntityPtr, class... Transforms>
void expectTransformPairs(std::size_t next) {
  (expectTransformPair<Base, EntityPtr, Transforms>(std::exchange(next, next + 2)), ...);
}
template <class Base, class Measure, class Value>
std::size_t visit() {
  return slot(static_cast<bool (Base::*)(const Measure&, Value&) const>(&Base::visit));
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

TEST(SlotOrder, OfPlanarEntities) {
  using Base = BaseGeometryEntity2d;
  EXPECT_EQ(slot(&BaseGeometryEntity::getCoordinateDimension), 13u);
  expectTransformPairs<Base, GeometryEntity2dPtr, AnisotropicScaleTransform2d, HomographyTransform2d, RigidTransform2d,
                       RotationTransform2d, ScaleTransform2d, SimilarityTransform2d, TranslationTransform2d,
                       CentroidTransform2d, ConvexHullTransform2d, EnvelopeTransform2d, SimplifyTransform2d,
                       MinEnclosingCircleTransform2d>(14);
  EXPECT_EQ((visit<Base, PerimeterMsr2d, omReal64>()), 38u);
  EXPECT_EQ((visit<Base, AreaMsr2d, omReal64>()), 39u);
  EXPECT_EQ((visit<Base, MomentsMsr2d, Moments2dO3>()), 40u);
  EXPECT_EQ((visit<Base, HuMomentsMsr2d, HuMoments2dO3>()), 41u);
  EXPECT_EQ(slot(&Base::getCoordinateSystem2dType), 42u);
  EXPECT_EQ(slot(&Base::getEntity2dType), 43u);
}

TEST(SlotOrder, OfSpatialEntities) {
  using Base = BaseGeometryEntity3d;
  expectTransformPairs<Base, GeometryEntity3dPtr, AnisotropicScaleTransform3d, HomographyTransform3d, RigidTransform3d,
                       RotationTransform3d, ScaleTransform3d, SimilarityTransform3d, TranslationTransform3d,
                       CentroidTransform3d, ConvexHullTransform3d, EnvelopeTransform3d, MinEnclosingSphereTransform3d>(
      14);
  EXPECT_EQ((visit<Base, AreaMsr3d, omReal64>()), 36u);
  EXPECT_EQ((visit<Base, VolumeMsr3d, omReal64>()), 37u);
  EXPECT_EQ(slot(&Base::getCoordinateSystem3dType), 38u);
  EXPECT_EQ(slot(&Base::getEntity3dType), 39u);
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

TEST(SlotOrder, OfSpatialTransforms) {
  using Transform = BaseGeometryTransform3d;
  EXPECT_EQ(slot(&Transform::getTransform3dType), 14u);
  EXPECT_EQ(slot(static_cast<BoolResult (Transform::*)(BaseGeometryEntity3d&) const>(&Transform::applyInSitu)), 15u);
  EXPECT_EQ(slot(static_cast<GeometryEntity3dPtr (Transform::*)(const BaseGeometryEntity3d&) const>(&Transform::apply)),
            16u);
}

}  // namespace

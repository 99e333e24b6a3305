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

/// The functions stand one after the other.
template <class... F>
void expectSlots(std::size_t first, F... functions) {
  const std::size_t slots[] = {slot(functions)...};
  for (const std::size_t each : slots) EXPECT_EQ(each, first++);
}

// Function types are given to choose among the overloads.
template <class Base, class EntityPtr, class... Transforms>
void expectTransformPairs(std::size_t next) {
  (expectSlots(std::exchange(next, next + 2), static_cast<bool (Base::*)(const Transforms&)>(&Base::visitInSitu),
               static_cast<EntityPtr (Base::*)(const Transforms&) const>(&Base::visitNonInSitu)),
   ...);
}
template <class Measure, class Value, class Base>
auto visit(bool (Base::*function)(const Measure&, Value&) const) {
  return function;
}

TEST(SlotOrder, OfDynamicObjects) {
  expectSlots(3, &BaseDynamicObject::getClassName, &BaseDynamicObject::createNew, &BaseDynamicObject::createShared,
              &BaseDynamicObject::hasCopySupport, &BaseDynamicObject::duplicate, &BaseDynamicObject::duplicateShared,
              &BaseDynamicObject::initCtorCopy, &BaseDynamicObject::copy, &BaseSerializationObject::write,
              &BaseSerializationObject::read);
}

TEST(SlotOrder, OfPlanarEntities) {
  using Base = BaseGeometryEntity2d;
  expectSlots(13, &BaseGeometryEntity::getCoordinateDimension);
  expectTransformPairs<Base, GeometryEntity2dPtr, AnisotropicScaleTransform2d, HomographyTransform2d, RigidTransform2d,
                       RotationTransform2d, ScaleTransform2d, SimilarityTransform2d, TranslationTransform2d,
                       CentroidTransform2d, ConvexHullTransform2d, EnvelopeTransform2d, SimplifyTransform2d,
                       MinEnclosingCircleTransform2d>(14);
  expectSlots(38, visit<PerimeterMsr2d, omReal64, Base>(&Base::visit), visit<AreaMsr2d, omReal64, Base>(&Base::visit),
              visit<MomentsMsr2d, Moments2dO3, Base>(&Base::visit),
              visit<HuMomentsMsr2d, HuMoments2dO3, Base>(&Base::visit), &Base::getCoordinateSystem2dType,
              &Base::getEntity2dType);
}

TEST(SlotOrder, OfSpatialEntities) {
  using Base = BaseGeometryEntity3d;
  expectTransformPairs<Base, GeometryEntity3dPtr, AnisotropicScaleTransform3d, HomographyTransform3d, RigidTransform3d,
                       RotationTransform3d, ScaleTransform3d, SimilarityTransform3d, TranslationTransform3d,
                       CentroidTransform3d, ConvexHullTransform3d, EnvelopeTransform3d, MinEnclosingSphereTransform3d>(
      14);
  expectSlots(36, visit<AreaMsr3d, omReal64, Base>(&Base::visit), visit<VolumeMsr3d, omReal64, Base>(&Base::visit),
              &Base::getCoordinateSystem3dType, &Base::getEntity3dType);
}

TEST(SlotOrder, OfPlanarMeasures) {
  using Measure = BaseTypedGeometryMeasure2d<omReal64>;
  expectSlots(13, &BaseGeometryMeasure::getCoordinateDimension, &BaseGeometryMeasure2d::getMeasure2dType,
              static_cast<bool (Measure::*)(const BaseGeometryEntity2d&, omReal64&) const>(&Measure::measure));
}

template <class Transform, class Entity, class EntityPtr, class Type>
void expectTransformSlots(Type getType) {
  expectSlots(13, &BaseGeometryTransform::getCoordinateDimension, getType,
              static_cast<BoolResult (Transform::*)(Entity&) const>(&Transform::applyInSitu),
              static_cast<EntityPtr (Transform::*)(const Entity&) const>(&Transform::apply));
}

TEST(SlotOrder, OfTransforms) {
  expectTransformSlots<BaseGeometryTransform2d, BaseGeometryEntity2d, GeometryEntity2dPtr>(
      &BaseGeometryTransform2d::getTransform2dType);
  expectTransformSlots<BaseGeometryTransform3d, BaseGeometryEntity3d, GeometryEntity3dPtr>(
      &BaseGeometryTransform3d::getTransform3dType);
}

}  // namespace

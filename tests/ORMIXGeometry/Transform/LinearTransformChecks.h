#pragma once

#include <ORMIXGeometry/ORMIXGeometry.h>
#include <gtest/gtest.h>

#include <array>
#include <boost/smart_ptr/make_shared_object.hpp>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/LogCapture.h"
#include "support/SampleObjects.h"

// What is asked of the transforms of the plane and of space alike.
namespace transforms {

using namespace samples;

inline std::string typeName(const BaseGeometryEntity2d& entity) { return toString(entity.getEntity2dType()); }
inline std::string typeName(const BaseGeometryEntity3d& entity) { return toString(entity.getEntity3dType()); }

template <class Transform>
using EntityOf = std::conditional_t<std::is_base_of_v<BaseGeometryTransform2d, Transform>, BaseGeometryEntity2d,
                                    BaseGeometryEntity3d>;

/// Which of the transforms accept a class, in place and, after the bar, as a copy: "1001010|1001010". Both are the same
/// image; a refusal says what was refused and changes nothing.
template <class Transform, std::size_t N>
std::string supportOf(const ClassCase& classCase, const std::array<const Transform*, N>& transforms) {
  const auto makeSample = [&classCase] {
    return boost::dynamic_pointer_cast<EntityOf<Transform>>(classCase.makeSample());
  };
  const auto sample = makeSample();
  const std::string before = classCase.describe(*sample);
  std::string inSitu;
  std::string copied;
  for (const Transform* transform : transforms) {
    const auto entity = makeSample();
    const BoolResult result = transform->applyInSitu(*entity);
    inSitu += result ? '1' : '0';
    EXPECT_EQ(classCase.describe(*entity) != before, static_cast<bool>(result)) << transform->getClassName();
    EXPECT_EQ(
        result.getMessage(),
        result ? "" : "Transform " + transform->getClassName() + " failed for geometry entity " + typeName(*sample));
    const auto image = transform->apply(*sample);
    copied += image ? '1' : '0';
    EXPECT_EQ(classCase.describe(*sample), before);
    EXPECT_TRUE(image || !result) << transform->getClassName();
    if (image && result) {
      EXPECT_EQ(classCase.describe(*image), classCase.describe(*entity)) << transform->getClassName();
    }
  }
  return inSitu + "|" + copied;
}

/// `printed` tells everything of an entity.
template <class Transform, std::size_t N, class Printed>
void expectImagesAreThoseInPlace(const EntityOf<Transform>& entity, const std::array<const Transform*, N>& transforms,
                                 const Printed& printed) {
  const std::string before = printed(entity);
  for (const Transform* transform : transforms) {
    const auto inPlace = boost::dynamic_pointer_cast<EntityOf<Transform>>(entity.duplicateShared());
    ASSERT_TRUE(transform->applyInSitu(*inPlace));
    const auto image = transform->apply(entity);
    ASSERT_TRUE(image);
    EXPECT_EQ(printed(*image), printed(*inPlace)) << transform->getClassName();
    EXPECT_NE(printed(*image), before);
    EXPECT_EQ(image->getClassName(), entity.getClassName());
  }
  EXPECT_EQ(printed(entity), before);
}

/// Neither an image nor a change in place; both log `message` and nothing else.
template <class Transform, class Printed>
void expectNoImage(const Transform& transform, EntityOf<Transform>& entity, const Printed& printed,
                   const std::string& message) {
  const std::string before = printed(entity);
  for (const bool isInPlace : {false, true}) {
    const support::LogCapture log(getORMIXGeometryLoggerName());
    EXPECT_FALSE(isInPlace ? static_cast<bool>(transform.applyInSitu(entity)) : transform.apply(entity) != nullptr);
    EXPECT_EQ(log.messages(), (support::LogCapture::Messages{{40000, message}}));
  }
  EXPECT_EQ(printed(entity), before);
}

template <class Call>
void expectThrows(const Call& call, const std::string& message) {
  try {
    call();
    ADD_FAILURE() << "not refused: " << message;
  } catch (const ORMIXGeometryException& exception) {
    EXPECT_EQ(exception.what(), message);
  }
}

/// The transform of a map's parameters maps the point as the map does.
template <class Transform, class Point>
void expectConverted(const Transform& expected, Point point) {
  const auto transform = convert(expected.getGeometricTransform());
  ASSERT_TRUE(transform);
  EXPECT_EQ(describe(dynamic_cast<const Transform&>(*transform)), describe(expected));
  const auto image =
      boost::dynamic_pointer_cast<Point>(apply(expected.getGeometricTransform(), boost::make_shared<Point>(point)));
  EXPECT_TRUE(apply(expected, point));
  EXPECT_EQ(*image, point);
}

template <class Affine>
void expectAffineIsRefused(const Affine& affine) {
  const std::string message = "Input geometric transformation " + std::string(toString(affine.getType())) +
                              " is not yet supported for geometric entities transformation";
  const support::LogCapture log(getORMIXGeometryLoggerName());
  expectThrows([&affine] { convert(affine); }, message);
  EXPECT_EQ(log.messages(), (support::LogCapture::Messages{{40000, message}}));
}

/// \param makeRound gives a new circle or sphere of radius 1 each time, which the transform scales by 2
/// \param refused the transform has no image of it
template <class Transform, class MakeRound>
void expectApplyAllStopsAtTheFirstFailure(const Transform& scale, const MakeRound& makeRound,
                                          const boost::shared_ptr<EntityOf<Transform>>& refused) {
  using Entities = std::vector<boost::shared_ptr<EntityOf<Transform>>>;
  Entities entities{makeRound(), refused, makeRound()};
  Entities images{makeRound(), makeRound(), makeRound(), makeRound()};
  const std::string message = "Transform " + scale.getClassName() + " failed for geometry entity " + typeName(*refused);
  EXPECT_EQ(applyAll(scale, entities, images).getMessage(), message);
  EXPECT_EQ(images.size(), 1u);
  expectThrows([&] { applyAll(scale, std::as_const(entities)); }, message);
  expectThrows([&] { applyAll(scale.getGeometricTransform(), std::as_const(entities)); }, message);
  EXPECT_EQ(applyAll(scale, entities).getMessage(), message);
  const auto radius = [&entities](std::size_t index) {
    return boost::dynamic_pointer_cast<typename decltype(makeRound())::element_type>(entities[index])->getRadius();
  };
  EXPECT_EQ(radius(0), 2);
  EXPECT_EQ(radius(2), 1);

  Entities none;
  EXPECT_TRUE(applyAll(scale, none));
  EXPECT_TRUE(applyAll(scale, std::as_const(none)).empty());
  EXPECT_TRUE(applyAll(scale, none, images));
  EXPECT_TRUE(images.empty());
  entities.resize(1);
  ASSERT_TRUE(applyAll(scale, entities, entities));
  EXPECT_EQ(radius(0), 4);
}

template <class Transform>
void expectNullPointersFail(const Transform& transform) {
  using Entity = EntityOf<Transform>;
  EXPECT_EQ(transform.applyInSitu(boost::shared_ptr<Entity>()).getMessage(), "Input shared pointer should not be null");
  EXPECT_FALSE(transform.apply(boost::shared_ptr<const Entity>()));
  std::vector<boost::shared_ptr<Entity>> withNull{nullptr};
  EXPECT_FALSE(applyAll(transform, withNull));
  EXPECT_THROW(applyAll(transform, std::as_const(withNull)), ORMIXGeometryException);
}

}  // namespace transforms

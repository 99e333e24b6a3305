// What every registered class does the same way, checked once over the list of all of them.

#include <ORMIXSerialization/ORMIXSerialization.h>

#include <memory>
#include <sstream>

#include "support/SampleObjects.h"

namespace {

using namespace samples;

struct Cbor {
  using Out = CborOArchive;
  using In = CborIArchive;
};
struct Json {
  using Out = JsonOArchive;
  using In = JsonIArchive;
};

template <class Format, class... Objects>
std::string written(const Objects&... objects) {
  std::ostringstream stream;
  {
    typename Format::Out archive(stream);
    const auto write = [&archive](const BaseSerializationObject& object) {
      const BoolResult result = object.write(archive);
      EXPECT_TRUE(result) << result.getMessage();
    };
    (write(objects), ...);
    EXPECT_TRUE(archive.close());
  }
  return stream.str();
}

template <class Format, class X>
BoolResult readInto(const std::string& text, X& object) {
  std::istringstream stream(text);
  typename Format::In archive(stream);
  return object.read(archive);
}

std::size_t occurrences(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

std::string replaced(std::string text, const std::string& part, const std::string& by) {
  const auto at = text.find(part);
  EXPECT_NE(at, std::string::npos) << part << " is not in " << text;
  if (at != std::string::npos) text.replace(at, part.size(), by);
  return text;
}

template <class X>
class UniformClass : public ::testing::Test {
 protected:
  const X sample = Sample<X>::make();
};
TYPED_TEST_SUITE(UniformClass, AllClasses);

TYPED_TEST(UniformClass, IsCreatedByName) {
  auto& factory = DynamicObjectFactory::getInstance();
  const std::string& name = TypeParam::getTypeName();
  ASSERT_TRUE(factory.isRegistered(name)) << name;
  const std::unique_ptr<BaseDynamicObject> object(factory.createNew(name));
  ASSERT_NE(dynamic_cast<TypeParam*>(object.get()), nullptr);
  EXPECT_EQ(object->getClassName(), name);
  EXPECT_TRUE(object->hasCopySupport());
  EXPECT_NE(boost::dynamic_pointer_cast<TypeParam>(factory.createShared(name)), nullptr);
  const std::unique_ptr<BaseDynamicObject> another(this->sample.createNew());
  EXPECT_EQ(describe(dynamic_cast<const TypeParam&>(*another)), describe(TypeParam()));
  EXPECT_EQ(describe(dynamic_cast<const TypeParam&>(*this->sample.createShared())), describe(TypeParam()));
}

TYPED_TEST(UniformClass, IsCopiedThroughItsBase) {
  const std::string expected = describe(this->sample);
  ASSERT_NE(expected, describe(TypeParam()));
  const BaseDynamicObject& base = this->sample;
  const std::unique_ptr<BaseDynamicObject> duplicate(base.duplicate());
  EXPECT_EQ(describe(dynamic_cast<const TypeParam&>(*duplicate)), expected);
  EXPECT_EQ(describe(dynamic_cast<const TypeParam&>(*base.duplicateShared())), expected);
  TypeParam copied;
  copied.copy(base);
  EXPECT_EQ(describe(copied), expected);
  TypeParam initialised;
  initialised.initCtorCopy(base);
  EXPECT_EQ(describe(initialised), expected);
}

template <class Format, class X>
void expectRoundTrip(const X& sample) {
  const std::string bytes = written<Format>(sample);
  X object;
  const BoolResult result = readInto<Format>(bytes, object);
  ASSERT_TRUE(result) << result.getMessage();
  EXPECT_EQ(describe(object), describe(sample));
  EXPECT_EQ(written<Format>(object), bytes);
}

TYPED_TEST(UniformClass, SurvivesBothArchives) {
  expectRoundTrip<Cbor>(this->sample);
  expectRoundTrip<Json>(this->sample);
  expectRoundTrip<Cbor>(TypeParam());
  expectRoundTrip<Json>(TypeParam());
}

TYPED_TEST(UniformClass, StatesItsVersionOnceAnArchive) {
  const std::string section = "{\"" + TypeParam::getTypeName() + "\": [{\"version\": 1}]}";
  const std::string text = written<Json>(this->sample, this->sample, this->sample);
  EXPECT_EQ(occurrences(text, section), 1u) << text;
  std::istringstream stream(text);
  JsonIArchive archive(stream);
  for (int count = 0; count < 3; ++count) {
    TypeParam object;
    const BoolResult result = object.read(archive);
    ASSERT_TRUE(result) << result.getMessage();
    EXPECT_EQ(describe(object), describe(this->sample));
  }
}

TYPED_TEST(UniformClass, RefusesANewerVersionAndTakesAnOlderOne) {
  const std::string section = "{\"" + TypeParam::getTypeName() + "\": [{\"version\": ";
  const std::string text = written<Json>(this->sample);
  TypeParam object;
  try {
    readInto<Json>(replaced(text, section + "1", section + "2"), object);
    FAIL() << "a newer version was read";
  } catch (const ORMIXSerializationException& exception) {
    EXPECT_NE(exception.getMessage().find(TypeParam::getTypeName()), std::string::npos) << exception.what();
  }
  EXPECT_EQ(describe(object), describe(TypeParam()));
  EXPECT_TRUE(readInto<Json>(replaced(text, section + "1", section + "0"), object));
  EXPECT_EQ(describe(object), describe(this->sample));
}

TYPED_TEST(UniformClass, FailedReadChangesNothing) {
  const std::string bytes = written<Cbor>(this->sample);
  const std::string untouched = describe(TypeParam());
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    TypeParam object;
    const BoolResult result = readInto<Cbor>(bytes.substr(0, size), object);
    if (result) {
      // Only the end of the archive itself is missing.
      EXPECT_EQ(describe(object), describe(this->sample));
    } else {
      ASSERT_EQ(describe(object), untouched) << "cut after " << size << " bytes";
      ASSERT_FALSE(result.getMessage().empty());
    }
  }
}

TEST(RegisteredNames, AreSpelledWithTheFamilysScalars) {
  const auto names = DynamicObjectFactory::getInstance().getRegisteredNames();
  std::vector<std::string> expected{"ormix::geom::Line2d", "ormix::geom::Parabola2d", "ormix::geom::Vector2d",
                                    "ormix::geom::AreaMsr2d", "ormix::geom::PerimeterMsr2d"};
  for (const char* name : {"Translation", "Rotation", "Rigid", "Scale", "Similarity", "AnisotropicScale", "Homography"})
    expected.push_back("ormix::geom::" + std::string(name) + "Transform2d");
  for (const char* name : {"BoundingBox2d", "Circle2d", "Ellipse2d", "Point2d", "PointCloud2d", "Polygon2d",
                           "PolygonWithHoles2d", "Rectangle2d", "Segment2d", "Square2d"})
    for (const char* scalar : {"omInt32", "omUInt32", "omReal32", "omReal64"})
      expected.push_back("ormix::geom::" + std::string(name) + "<ormix::" + scalar + ">");
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(names, expected);
  EXPECT_EQ(BaseGeometryEntity::getTypeName(), "ormix::geom::BaseGeometryEntity");
  EXPECT_EQ(BaseTypedGeometryEntity2d<omInt64>::getTypeName(),
            "ormix::geom::BaseTypedGeometryEntity2d<ormix::omInt64>");
}

TEST(VersionSections, StandInOrderOfTheClassChain) {
  const std::string text = written<Json>(Circle2d<omReal64>({1, 2}, 3));
  std::size_t last = 0;
  for (const char* part : {"{\"ormix::geom::BaseGeometryEntity\": [{\"version\": 1}]}",
                           "{\"ormix::geom::BaseGeometryEntity2d\": [{\"version\": 1}]}",
                           "{\"ormix::geom::BaseTypedGeometryEntity2d<ormix::omReal64>\": [{\"version\": 1}]}",
                           "{\"ormix::geom::Circle2d<ormix::omReal64>\": [{\"version\": 1}]}",
                           "{\"_centerPt\": [{\"x\": 1}, {\"y\": 2}]}", "{\"_radius\": 3}"}) {
    const auto at = text.find(part);
    ASSERT_NE(at, std::string::npos) << part << " is not in " << text;
    EXPECT_GE(at, last) << part;
    last = at;
  }
}

}  // namespace

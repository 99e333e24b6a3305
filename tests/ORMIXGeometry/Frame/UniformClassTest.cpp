// What every registered class does the same way, checked once over the list of all of them.

#include <memory>

#include "support/ArchiveFormats.h"
#include "support/Checks.h"
#include "support/SampleObjects.h"

namespace {

using namespace samples;
using support::Cbor;
using support::Json;
using support::readInto;

template <class Format, class... Objects>
std::string written(const Objects&... objects) {
  return support::archived<Format>([&](BaseOArchive& archive) {
    const auto write = [&archive](const BaseSerializationObject& object) { EXPECT_SUCCESS(object.write(archive)); };
    (write(objects), ...);
  });
}

std::string replaced(std::string text, const std::string& part, const std::string& by) {
  const auto at = text.find(part);
  EXPECT_NE(at, std::string::npos) << part << " is not in " << text;
  if (at != std::string::npos) text.replace(at, part.size(), by);
  return text;
}

class UniformClass : public ::testing::TestWithParam<ClassCase> {
 protected:
  using Object = boost::shared_ptr<BaseSerializationObject>;
  static std::string describe(const BaseDynamicObject& object) { return GetParam().describe(object); }
  const Object sample = GetParam().makeSample();
  const Object object = GetParam().makeDefault();
  const std::string sampleText = describe(*sample), defaultText = describe(*object);
};
/// The class's name without what a file's or a test's name may not hold.
std::string fileName(std::string name) {
  const auto isOther = [](char c) { return c == ':' || c == '<' || c == '>' || c == ' '; };
  std::replace_if(name.begin(), name.end(), isOther, '_');
  return name;
}
std::string caseName(const ::testing::TestParamInfo<ClassCase>& testCase) {
  return fileName(testCase.param.name).substr(std::string("ormix::geom::").size());
}
INSTANTIATE_TEST_SUITE_P(Each, UniformClass, ::testing::ValuesIn(classCases(AllClasses())), caseName);

TEST_P(UniformClass, IsCreatedByName) {
  auto& factory = DynamicObjectFactory::getInstance();
  const std::unique_ptr<BaseDynamicObject> created(factory.createNew(GetParam().name));
  EXPECT_EQ(describe(*created), defaultText);
  EXPECT_EQ(created->getClassName(), GetParam().name);
  EXPECT_TRUE(created->hasCopySupport());
  EXPECT_EQ(describe(*factory.createShared(GetParam().name)), defaultText);
  EXPECT_EQ(describe(*std::unique_ptr<BaseDynamicObject>(sample->createNew())), defaultText);
  EXPECT_EQ(describe(*sample->createShared()), defaultText);
}

TEST_P(UniformClass, IsCopiedThroughItsBase) {
  ASSERT_TRUE(sampleText != defaultText || sampleText.empty());
  EXPECT_EQ(describe(*std::unique_ptr<BaseDynamicObject>(sample->duplicate())), sampleText);
  EXPECT_EQ(describe(*sample->duplicateShared()), sampleText);
  object->copy(*sample);
  EXPECT_EQ(describe(*object), sampleText);
  const Object initialised = GetParam().makeDefault();
  initialised->initCtorCopy(*sample);
  EXPECT_EQ(describe(*initialised), sampleText);
}

template <class Format>
void expectRoundTrip(const BaseSerializationObject& object, BaseSerializationObject& into) {
  const std::string bytes = written<Format>(object);
  EXPECT_SUCCESS(readInto<Format>(bytes, into));
  EXPECT_EQ(written<Format>(into), bytes);
}

TEST_P(UniformClass, SurvivesBothArchives) {
  for (const Object& original : {sample, GetParam().makeDefault()}) {
    expectRoundTrip<Cbor>(*original, *object);
    EXPECT_EQ(describe(*object), describe(*original));
    const Object other = GetParam().makeDefault();
    expectRoundTrip<Json>(*original, *other);
    EXPECT_EQ(describe(*other), describe(*original));
  }
}

TEST_P(UniformClass, StatesItsVersionOnceAnArchive) {
  const std::string section =
      "{\"" + GetParam().name + "\": [{\"version\": " + std::to_string(GetParam().version) + "}]}";
  const std::string text = written<Json>(*sample, *sample, *sample);
  EXPECT_NE(text.find(section), std::string::npos) << text;
  EXPECT_EQ(text.find(section), text.rfind(section)) << text;
  support::Reading<Json> reading(text);
  for (int count = 0; count < 3; ++count) {
    const Object next = GetParam().makeDefault();
    EXPECT_SUCCESS(next->read(reading.archive));
    EXPECT_EQ(describe(*next), sampleText);
  }
}

TEST_P(UniformClass, RefusesVersionsThatItDoesNotKnow) {
  const std::string section = "{\"" + GetParam().name + "\": [{\"version\": ";
  const std::string text = written<Json>(*sample);
  const auto withVersion = [&](omUInt32 version) {
    return replaced(text, section + std::to_string(GetParam().version), section + std::to_string(version));
  };
  const std::string message = support::thrownBy<ORMIXSerializationException>(
      [&] { readInto<Json>(withVersion(GetParam().version + 1), *object); });
  EXPECT_NE(message.find(GetParam().name), std::string::npos) << message;
  EXPECT_EQ(describe(*object), defaultText);
  const omUInt32 older = GetParam().version - 1;
  const BoolResult result = readInto<Json>(withVersion(older), *object);
  EXPECT_EQ(result.getResult(), older >= GetParam().oldestVersion) << result.getMessage();
  EXPECT_EQ(describe(*object), result ? sampleText : defaultText);
}

TEST(TransformArchive, RefusesParametersThatAreNoneAndNamesThem) {
  for (const ClassCase& each : classCases(AllLinearTransforms())) {
    SCOPED_TRACE(each.name);
    const std::string text = written<Json>(*each.makeSample()), key = "\"params\": [";
    const std::string first = text.substr(text.find(key) + key.size());
    for (const std::string by : {"\"nan\"", "\"-inf\"", "1, 2"}) {
      const auto object = each.makeDefault();
      const BoolResult result =
          readInto<Json>(replaced(text, key + first.substr(0, first.find_first_of(",]")), key + by), *object);
      EXPECT_FALSE(result) << by;
      EXPECT_EQ(result.getMessage().find("Class " + each.name + ": Key \"params\": "), 0u) << result.getMessage();
      EXPECT_EQ(each.describe(*object), each.describe(*each.makeDefault()));
    }
  }
}

// Files written once and for all, in both formats: what they hold is read for ever.
TEST_P(UniformClass, GoldenArchivesAreRead) {
  for (const char* format : {"cbor", "json"}) {
    const std::string path = std::string(ORMIX_TEST_SEEDS) + "/" + format + "/" + fileName(GetParam().name);
    boost::shared_ptr<BaseDynamicObject> golden;
    ASSERT_NO_THROW(golden = load(path)) << path;
    EXPECT_EQ(describe(*golden), sampleText) << path;
  }
}

TEST_P(UniformClass, FailedReadChangesNothing) {
  const std::string bytes = written<Cbor>(*sample);
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    const BoolResult result = readInto<Cbor>(bytes.substr(0, size), *object);
    // Where it succeeds, only the end of the archive itself is missing.
    ASSERT_EQ(describe(*object), result ? sampleText : defaultText) << "cut after " << size << " bytes";
    if (result) break;
    ASSERT_FALSE(result.getMessage().empty());
  }
}

// How they are spelled the golden archives pin, and for estimators the table of their sizes.
TEST(RegisteredNames, AreThoseOfTheLists) {
  std::vector<std::string> expected;
  for (const ClassCase& each : classCases(AllClasses())) expected.push_back(each.name);
  forEachClass(EstimatorList(), [&expected](auto tag) { expected.push_back(decltype(tag)::Type::getTypeName()); });
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(DynamicObjectFactory::getInstance().getRegisteredNames(), expected);
  EXPECT_EQ(BaseGeometryEntity::getTypeName(), "ormix::geom::BaseGeometryEntity");
  EXPECT_EQ(BaseTypedGeometryEntity2d<omInt64>::getTypeName(),
            "ormix::geom::BaseTypedGeometryEntity2d<ormix::omInt64>");
}

}  // namespace

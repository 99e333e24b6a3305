#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <gtest/gtest.h>

#include <charconv>
#include <locale>
#include <random>

#include "ORMIXGeometry/Entity/2d/Polygon/RingTextOracle.h"

namespace {

using namespace ringtext;
using boost::geometry::read_wkt_exception;

template <class T>
class FromString : public ::testing::Test {
 protected:
  std::mt19937 random{20240531};

  std::size_t below(std::size_t bound) { return random() % bound; }

  std::string digits(std::size_t maxCount) {
    std::string text(1 + below(maxCount), '0');
    for (char& c : text) c = static_cast<char>('0' + below(10));
    return text;
  }

  /// A real of any bits, printed shortest, with excess digits or in full; or digits at random.
  std::string randomReal() {
    if (below(3) == 0)
      return (below(2) ? "-" : "") + digits(25) + "." + digits(30) +
             (below(2) ? "e" + std::to_string(int(below(700)) - 350) : "");
    std::uint64_t bits = (std::uint64_t(random()) << 32) | random();
    // Every third one is subnormal.
    if (below(3) == 0) bits &= std::is_same_v<T, omReal32> ? 0x807fffffu : 0x800fffffffffffffu;
    T value;
    std::memcpy(&value, &bits, sizeof(value));
    char buffer[2048];
    const auto end = below(2) ? std::to_chars(buffer, buffer + sizeof(buffer), value).ptr
                              : std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::scientific,
                                              static_cast<int>(below(800)))
                                    .ptr;
    return {buffer, end};
  }

  std::string randomNumber() {
    switch (below(8)) {
      case 0:
        return "+" + digits(3);
      case 1:
        return "-" + digits(3);
      case 2:
        return digits(12);
      case 3:
        return digits(2);
      default:
        break;
    }
    if constexpr (std::is_floating_point_v<T>) return randomReal();
    return std::to_string(static_cast<T>(random()));
  }

  std::string randomRing(std::size_t maxPoints) {
    std::string text;
    for (std::size_t count = below(maxPoints + 1); count > 0; --count) {
      text += std::string(below(2), ' ') + randomNumber() + std::string(1 + below(2), ' ') + randomNumber();
      text += std::string(below(2), ' ') + (count > 1 || below(9) == 0 ? "," : "");
    }
    return text;
  }

  std::string mutated(std::string text) {
    static constexpr char s_alphabet[] = "0123456789+-.eEpx ,,()naifNAIFtyTY\t\n\v\xff";
    for (std::size_t count = 1 + below(3); count > 0; --count) {
      const char c = s_alphabet[below(sizeof(s_alphabet))];
      const std::size_t at = below(text.size() + 1);
      if (below(3) == 0)
        text.insert(at, 1, c);
      else if (at < text.size() && below(2))
        text.erase(at, 1 + below(3));
      else if (at < text.size())
        text[at] = c;
    }
    return text;
  }

  static void expectAsOracle(const std::string& text) {
    auto expected = expectedRing<T>(text);
    Polygon2d<T> polygon;
    polygon.getPointColl().resize(3);
    polygon.setPolygon2dType(eP2DT_Interior);
    if (!expected) {
      EXPECT_THROW(fromString(polygon, text), read_wkt_exception) << '"' << text << '"';
      EXPECT_TRUE(polygon.isEmpty()) << '"' << text << '"';
    } else {
      ASSERT_NO_THROW(fromString(polygon, text)) << '"' << text << '"';
      Polygon2d<T> closed;
      closed.getPointColl() = *expected;
      closePolygon(closed);
      EXPECT_TRUE(sameBits(polygon.getPointColl(), closed.getPointColl())) << '"' << text << "\" gave " << polygon;
    }
    EXPECT_EQ(polygon.getPolygon2dType(), eP2DT_Interior);
  }
};
using Scalars = ::testing::Types<omInt32, omUInt32, omReal32, omReal64>;
TYPED_TEST_SUITE(FromString, Scalars);

TYPED_TEST(FromString, ReadsAndClosesARing) {
  using Points = std::vector<Point2dData<TypeParam>>;
  Polygon2d<TypeParam> polygon;
  fromString(polygon, "1 1, 4 1, 4 5");
  const Points closed{{1, 1}, {4, 1}, {4, 5}, {1, 1}};
  EXPECT_EQ(polygon.getPointColl(), closed);
  fromString(polygon, "1 1,4 1,4 5,1 1");
  EXPECT_EQ(polygon.getPointColl(), closed);
  fromString(polygon, " 7   8 ");
  EXPECT_EQ(polygon.getPointColl(), (Points{{7, 8}, {7, 8}}));
}

// As Boost's reader has it.
TYPED_TEST(FromString, TakesAnEmptyTextAsAnEmptyRing) {
  Polygon2d<TypeParam> polygon;
  for (const char* text : {"", " ", "    "}) {
    polygon.getPointColl().resize(2);
    EXPECT_NO_THROW(fromString(polygon, text));
    EXPECT_TRUE(polygon.isEmpty());
  }
}

TYPED_TEST(FromString, RefusesWhatIsNotOneRingOfPairs) {
  for (const char* text : {",",
                           "1",
                           "1 2, 3",
                           "1, 2 3",
                           "1 2, , 3 4",
                           ", 1 2",
                           "1 2,,",
                           "1 2 3, 4 5 6",
                           "1 2 3 4",
                           "1 2; 3 4",
                           "1 2), (3 4",
                           "1 2)(3 4",
                           "(1 2",
                           "1 2)",
                           ")",
                           "(",
                           "1 2)) POINT((3 4",
                           "1\t2",
                           "1 2,\n3 4",
                           "a b",
                           "1 2 x",
                           "- 1",
                           "+ 1",
                           "1 -",
                           "+-1 1",
                           "--1 1",
                           "1 1e",
                           "0x10 1",
                           "1 1'000",
                           "99999999999999999999999999999999999999999999 x"}) {
    Polygon2d<TypeParam> polygon;
    EXPECT_THROW(fromString(polygon, text), read_wkt_exception) << text;
    this->expectAsOracle(text);
  }
  this->expectAsOracle(std::string("1 1\0, 2 2", 9));
  this->expectAsOracle(std::string(1, '\0'));
}

TYPED_TEST(FromString, TakesTheSpellingsOfBoost) {
  for (const char* text : {"+1 +2",
                           "-0 0",
                           "-0 -000",
                           "+0 0",
                           "007 1",
                           "1 2,",
                           "1 2 , ",
                           ".5 5.",
                           "-.5 -5.",
                           "5.e1 .5E+1",
                           "1e5 1e-5",
                           ". 1",
                           "1e999 1",
                           "-1e999 1",
                           "1e-999 -1e-999",
                           "0e999999999999 0",
                           "1e39 1",
                           "1e-46 7e-46",
                           "4.9e-324 2e-324",
                           "nan NaN",
                           "-nan +NAN",
                           "inf -INF",
                           "+Infinity -iNFINITY",
                           "infi nity",
                           "nan(1) 1",
                           "na 1",
                           "-1 5",
                           "2147483647 -2147483648",
                           "2147483648 0",
                           "-2147483649 0",
                           "4294967295 4294967296",
                           "00000000000000000000000000000000000000004294967295 1"})
    this->expectAsOracle(text);
}

TYPED_TEST(FromString, AgreesWithBoostOnWellFormedTexts) {
  for (int count = 0; count < 3000; ++count) this->expectAsOracle(this->randomRing(6));
}

TYPED_TEST(FromString, AgreesWithBoostOnMutatedTexts) {
  for (int count = 0; count < 20000; ++count) this->expectAsOracle(this->mutated(this->randomRing(3)));
}

TYPED_TEST(FromString, NamesTheOffendingWord) {
  Polygon2d<TypeParam> polygon;
  try {
    fromString(polygon, "1 2, 3 here" + std::string(10000, '!'));
    FAIL();
  } catch (const read_wkt_exception& exception) {
    const std::string message = exception.what();
    EXPECT_NE(message.find("at 'here"), std::string::npos) << message;
    EXPECT_LT(message.size(), 400u);
  }
}

TEST(FromStringIntegers, RefusesFractionsAndWrapping) {
  Polygon2d<omInt32> signedPolygon;
  EXPECT_THROW(fromString(signedPolygon, "0.5 1, 2 3, 4 4"), read_wkt_exception);
  Polygon2d<omUInt32> unsignedPolygon;
  EXPECT_THROW(fromString(unsignedPolygon, "-1 1, 2 3, 4 4"), read_wkt_exception);
}

struct GermanNumbers : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TYPED_TEST(FromString, DoesNotDependOnTheGlobalLocale) {
  const bool isReal = std::is_floating_point_v<TypeParam>;
  const std::vector<std::string> texts{"1234 5678, +4 1", isReal ? "+0.5 1.25, 1e-999 +1.5e1" : "+2147483647 0",
                                       "1.234 1", "1.234.567 2"};
  std::vector<std::optional<std::vector<Point2dData<TypeParam>>>> expected;
  for (const auto& text : texts) expected.push_back(expectedRing<TypeParam>(text));
  const std::locale former = std::locale::global(std::locale(std::locale::classic(), new GermanNumbers));
  for (std::size_t i = 0; i < texts.size(); ++i) {
    Polygon2d<TypeParam> polygon;
    if (expected[i]) {
      EXPECT_NO_THROW(fromString(polygon, texts[i])) << texts[i];
      polygon.getPointColl().resize(expected[i]->size());
      EXPECT_TRUE(sameBits(polygon.getPointColl(), *expected[i])) << texts[i];
    } else {
      EXPECT_THROW(fromString(polygon, texts[i]), read_wkt_exception) << texts[i];
    }
  }
  std::locale::global(former);
}

}  // namespace

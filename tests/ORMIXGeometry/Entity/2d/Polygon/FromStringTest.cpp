#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>

#include <charconv>

#include "ORMIXGeometry/Entity/2d/Polygon/RingTextOracle.h"
#include "support/Checks.h"
#include "support/Random.h"

namespace {

using namespace ringtext;
using boost::geometry::read_wkt_exception;

template <class T>
class FromString : public ::testing::Test {
 protected:
  support::Random random{20240531};

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
    T value = random.bits<T>();
    // Every third one is subnormal.
    if (below(3) == 0)
      value = std::copysign(static_cast<T>(below(8000000)) * std::numeric_limits<T>::denorm_min(), value);
    char buffer[2048];
    const auto end = below(2) ? std::to_chars(buffer, buffer + sizeof(buffer), value).ptr
                              : std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::scientific,
                                              static_cast<int>(below(800)))
                                    .ptr;
    return {buffer, end};
  }

  std::string randomNumber() {
    const std::size_t kind = below(8);
    if (kind < 4) return (kind == 0 ? "+" : kind == 1 ? "-" : "") + digits(kind == 2 ? 12 : 3);
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
TYPED_TEST_SUITE(FromString, support::Scalars);

TYPED_TEST(FromString, AgreesWithBoostOnRandomTexts) {
  // What lies within the random texts but for these.
  for (const std::string& text : {std::string("1 1\0, 2 2", 9), std::string(1, '\0'), std::string("1 1, 4 1, 4 5")})
    this->expectAsOracle(text);
  for (int count = 0; count < 3000; ++count) this->expectAsOracle(this->randomRing(6));
  for (int count = 0; count < 20000; ++count) this->expectAsOracle(this->mutated(this->randomRing(3)));
}

TYPED_TEST(FromString, NamesTheOffendingWord) {
  Polygon2d<TypeParam> polygon;
  const std::string message =
      support::thrownBy<read_wkt_exception>([&] { fromString(polygon, "1 2, 3 here" + std::string(10000, '!')); });
  EXPECT_NE(message.find("at 'here"), std::string::npos) << message;
  EXPECT_LT(message.size(), 400u);
}

TYPED_TEST(FromString, DoesNotDependOnTheGlobalLocale) {
  const bool isReal = std::is_floating_point_v<TypeParam>;
  const std::string texts[] = {"1234 5678, +4 1", isReal ? "+0.5 1.25, 1e-999 +1.5e1" : "+2147483647 0", "1.234 1",
                               "1.234.567 2"};
  for (const std::string& text : texts) {
    const auto expected = expectedRing<TypeParam>(text);
    const support::CommaLocale locale;
    Polygon2d<TypeParam> polygon;
    if (!expected) {
      EXPECT_THROW(fromString(polygon, text), read_wkt_exception) << text;
      continue;
    }
    fromString(polygon, text);
    polygon.getPointColl().resize(expected->size());
    EXPECT_TRUE(sameBits(polygon.getPointColl(), *expected)) << text;
  }
}

}  // namespace

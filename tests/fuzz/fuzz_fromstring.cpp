// Any text, for the four scalar types: `fromString` gives what the slow oracle says or throws `read_wkt_exception`.

#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>

#include <cstdint>
#include <cstdlib>

#include "ORMIXGeometry/Entity/2d/Polygon/RingTextOracle.h"

namespace {

using namespace ringtext;

template <class T>
void check(const std::string& text) {
  const auto expected = expectedRing<T>(text);
  Polygon2d<T> polygon;
  try {
    fromString(polygon, text);
  } catch (const boost::geometry::read_wkt_exception&) {
    if (expected || !polygon.isEmpty()) std::abort();
    return;
  }
  if (!expected) std::abort();
  Polygon2d<T> closed;
  closed.getPointColl() = *expected;
  closePolygon(closed);
  if (!sameBits(polygon.getPointColl(), closed.getPointColl())) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  check<omInt32>(text);
  check<omUInt32>(text);
  check<omReal32>(text);
  check<omReal64>(text);
  return 0;
}

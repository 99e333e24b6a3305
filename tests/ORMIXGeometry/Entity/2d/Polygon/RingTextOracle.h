#pragma once

#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>

#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <boost/geometry/io/wkt/read.hpp>
#include <cstring>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

// What `fromString` must make of a text, slowly: Boost's own reader in the classic locale and, apart from it, the
// refusals that go beyond it.
namespace ringtext {

using namespace ormix;
using namespace ormix::geom;

inline std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts{""};
  for (const char c : text) {
    if (c == separator)
      parts.emplace_back();
    else
      parts.back() += c;
  }
  return parts;
}

/// The words of each comma-separated part; a part may be empty where Boost's reader ignores it: as the whole text, and
/// after the last comma.
inline std::vector<std::vector<std::string>> words(const std::string& text) {
  std::vector<std::vector<std::string>> result;
  for (const std::string& part : split(text, ',')) {
    result.emplace_back();
    for (std::string& word : split(part, ' '))
      if (!word.empty()) result.back().push_back(std::move(word));
  }
  if (result.back().empty()) result.pop_back();
  return result;
}

template <class T>
bool wraps(const std::string& word) {
  return std::is_unsigned_v<T> && word[0] == '-' && word.find_first_not_of('0', 1) != std::string::npos;
}

/// The ring before it is closed; nothing where the text must be refused.
template <class T>
std::optional<std::vector<Point2dData<T>>> expectedRing(const std::string& text) {
  using Point = boost::geometry::model::d2::point_xy<T>;
  boost::geometry::model::polygon<Point, false, true> read;
  try {
    boost::geometry::read_wkt("POLYGON((" + text + "))", read);
  } catch (const boost::geometry::read_wkt_exception&) {
    return std::nullopt;
  }
  if (!read.inners().empty()) return std::nullopt;
  for (const auto& point : words(text))
    if (point.size() != 2 || wraps<T>(point[0]) || wraps<T>(point[1])) return std::nullopt;
  std::vector<Point2dData<T>> ring;
  for (const Point& point : read.outer()) ring.emplace_back(point.x(), point.y());
  return ring;
}

/// Bit for bit, so that NaN equals itself and 0 differs from -0.
template <class T>
bool sameBits(const std::vector<Point2dData<T>>& a, const std::vector<Point2dData<T>>& b) {
  return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(a[0])) == 0);
}

}  // namespace ringtext

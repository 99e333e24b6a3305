#pragma once

#include <ORMIXMath/Contact/RegionLengths.h>

#include <cstring>
#include <vector>

/// \file
/// The borders that regions have in common on lines along the axes; not installed.

namespace ormix::detail {

/// Edges on lines along one axis.
class SharedLines {
 public:
  /// One more than the highest number of a region.
  static constexpr std::size_t s_maxNbRegions = std::size_t{1} << 31;

  /// \param nbEdges how many edges to expect
  explicit SharedLines(std::size_t nbEdges) { _edges.reserve(nbEdges); }

  /// Adds an edge.
  /// \param line the coordinate that is constant along it
  /// \param from,to the other coordinate at its start and at its end, which differ
  void add(omReal64 line, omReal64 from, omReal64 to, omUInt32 region) {
    const omReal64 unsignedZero = line == 0 ? 0 : line;
    omUInt64 key = 0;
    std::memcpy(&key, &unsignedZero, sizeof key);
    const omUInt32 number = _lines[key];
    if (number == _nbOnLine.size()) _nbOnLine.push_back(0);
    ++_nbOnLine[number];
    const bool isForward = from < to;
    _edges.push_back({isForward ? from : to, isForward ? to : from, number, region & 0x7FFFFFFF, isForward});
  }

  /// Gives each part of each edge to the region of an edge that lies on the same part of the same line and runs the
  /// other way; of several regions to that with the lowest number, never to its own. What is left is left to nobody.
  /// O(n log n) in the edges, linear but for sorting those of one line, where few edges lie on each other; at worst
  /// O(n^2), where all do.
  ORMIX_MATH_API void divide(RegionLengths& lengths) const;

  /// One of them; 24 bytes, as images have millions.
  struct Edge {
    omReal64 low;
    omReal64 high;
    omUInt32 line;  ///< by number
    omUInt32 region : 31;
    omUInt32 isForward : 1;  ///< whether it runs from low to high
  };

 private:
  std::vector<Edge> _edges;
  KeyNumbers _lines;
  std::vector<std::size_t> _nbOnLine;
};

}  // namespace ormix::detail

#pragma once

#include <ORMIXGeometry/Tools/Svg/SvgShape.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

/// \file
/// Where the labels of a picture stand, so that none covers another; not installed.

namespace ormix::geom::detail {

/// A place for a label, in pixels.
struct SvgLabelPlace {
  SvgPoint center;               ///< of the text
  std::optional<SvgPoint> lead;  ///< where a line from the anchor ends, for labels that are not beside it
};

/// Places labels one after the other: at their anchors, else beside them, else farther away with a line to the anchor.
/// Each tries at most 33 places, and looks at the few labels that can be near each: a label takes O(log n).
class SvgLabelPlacer {
 public:
  /// \param width,height of the picture in pixels
  SvgLabelPlacer(omReal64 width, omReal64 height) : _width(width), _height(height) {}

  /// Keeps labels away from a box.
  void reserve(const SvgPoint& low, const SvgPoint& high);

  /// The place of the next label; nothing when the anchor is outside of the picture or there is no room.
  std::optional<SvgLabelPlace> place(const SvgPoint& anchor, std::string_view text);

 private:
  struct Box {
    omReal64 left, top, right, bottom;
  };
  bool isFree(const Box& box) const;
  template <class Visit>
  void visitCells(const Box& box, Visit visit) const;

  omReal64 _width, _height;
  std::vector<Box> _boxes;
  std::map<std::pair<omInt64, omInt64>, std::vector<std::size_t>> _cells;  ///< boxes that meet a cell of a grid
};

}  // namespace ormix::geom::detail

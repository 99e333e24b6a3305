#pragma once

#include <ORMIXGeometry/Entity/3d/Shape/CornerFans.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelRuns.h>

#include <array>
#include <limits>
#include <vector>

/// \file
/// The corners of voxels between two slices that lie on the boundary; not installed.

namespace ormix::geom::detail {

/// A corner with voxels and background around it.
struct BoundaryCorner {
  omUInt32 x;
  omUInt32 firstFan;  ///< index of the first of its fans among those of the plane
  omUInt8 pattern;    ///< see CornerFans
};

/// The corners of the boundary in one plane of constant z, line by line, and the vertex of each of their fans.
class CornerPlane {
 public:
  static constexpr omUInt32 s_noVertex = std::numeric_limits<omUInt32>::max();  ///< a fan without a vertex yet

  /// Takes the corners between the slice before `slice` and that one; the set may have only one of them. Memory is
  /// used again. Linear in the rows and runs of the slices and in the corners.
  void set(const NumberedRows& rows, std::size_t slice, const CornerFansTable& fans);

  /// The first corner of the line between the rows y - 1 and y, of one that a voxel of either row touches.
  const BoundaryCorner* line(omUInt64 y) const {
    const Range& range = y - _ranges[0].begin < _ranges[0].nbLines ? _ranges[0] : _ranges[1];
    return _corners.data() + _lineBegins[range.firstLine + static_cast<std::size_t>(y - range.begin)];
  }
  /// The vertices of the fans; written by who makes them.
  std::vector<omUInt32>& vertices() { return _vertices; }

 private:
  /// Lines of consecutive y.
  struct Range {
    omUInt64 begin = 0;
    omUInt64 nbLines = 0;
    std::size_t firstLine = 0;
  };
  /// The rows y - 1 and y of the slice before, then of the slice.
  using RowsAtLine = std::array<RowIntersections::Row, 4>;

  void addLine(const RowsAtLine& rows, const CornerFansTable& fans);
  void addCorner(omUInt32 x, std::size_t pattern, const CornerFansTable& fans);

  std::array<Range, 2> _ranges;
  std::vector<std::size_t> _lineBegins;
  std::vector<BoundaryCorner> _corners;
  std::vector<omUInt32> _vertices;
};

}  // namespace ormix::geom::detail

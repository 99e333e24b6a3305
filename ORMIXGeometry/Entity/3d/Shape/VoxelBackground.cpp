#include <ORMIXGeometry/Entity/2d/Shape/RunForest.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelBackground.h>

#include <limits>

namespace ormix::geom::detail {

namespace {

/// The gaps of the rows of one slice. The gap k of a row is before its run k; the first and the last one are not
/// bounded. In the forest the first one is node 0, and the one behind the run r is node r + 1.
class SliceGaps {
 public:
  /// A row of gaps, and the node of its gap k for k > 0, less k.
  struct GapRow {
    RowIntersections::Row gaps;
    omUInt32 firstNode;

    omUInt32 nodeOf(const PixelRun& gap) const {
      const auto index = static_cast<omUInt32>(&gap - gaps.begin());
      return index == 0 ? 0 : firstNode + index;
    }
  };

  /// Takes the gaps of a slice, the index of which may be one that the set does not have.
  void set(const NumberedRows& rows, std::size_t slice) {
    _gaps.clear();
    _rows.clear();
    if (slice >= rows.nbSlices()) return;
    _startRow = rows.slice(slice).getStartRow();
    for (omUInt64 y = _startRow; y < rows.slice(slice).getEndRow(); ++y) {
      const NumberedRow row = rows.row(slice, y);
      _rows.push_back({_gaps.size(), row.first});
      PixelRun gap{0, 0};
      for (const PixelRun& run : row.runs) {
        gap.end = run.begin;
        _gaps.push_back(gap);
        gap.begin = run.end;
      }
      _gaps.push_back({gap.begin, s_unbounded});
    }
    _rows.push_back({_gaps.size(), 0});
  }

  /// The gaps of a row; of one that the slice does not have, one gap from end to end.
  GapRow row(omUInt64 y) const {
    static constexpr PixelRun none{0, s_unbounded};
    if (_rows.empty() || y < _startRow || y - _startRow >= _rows.size() - 1) return {{&none, &none + 1}, 0};
    const auto index = static_cast<std::size_t>(y - _startRow);
    const auto& [begin, firstNode] = _rows[index];
    const std::size_t end = _rows[index + 1].first;
    return {{_gaps.data() + begin, _gaps.data() + end}, firstNode};
  }

 private:
  // No gap between runs reaches it, and it begins behind all of them.
  static constexpr omUInt32 s_unbounded = std::numeric_limits<omUInt32>::max();

  omUInt64 _startRow = 0;
  RowIntersections::RunColl _gaps;
  std::vector<std::pair<std::size_t, omUInt32>> _rows;  // by row: its first gap, its first run; and an end
};

template <ePixelConnectivity InSlice>
void joinGaps(const SliceGaps::GapRow& a, const SliceGaps::GapRow& b, RunForest& forest) {
  if (a.gaps.size() < 3 && b.gaps.size() < 3) return;  // none is bounded
  visitTouching<InSlice>(a.gaps, b.gaps, [&](const PixelRun& gap, const PixelRun& touched) {
    forest.join(b.nodeOf(gap), a.nodeOf(touched));
  });
}

template <ePixelConnectivity InSlice>
RunComponents gapComponents(const NumberedRows& rows) {
  RunForest forest(rows.nbRuns() + 1);
  forest.add();
  for (std::size_t slice = 0; slice < rows.nbSlices(); ++slice)
    for (omUInt64 y = rows.slice(slice).getStartRow(); y < rows.slice(slice).getEndRow(); ++y)
      for (std::size_t index = rows.row(slice, y).runs.size(); index > 0; --index)
        if (index == 1)
          forest.addTo(0);
        else
          forest.add();
  SliceGaps former, gaps;
  const SliceGaps none;
  for (std::size_t slice = 0; slice < rows.nbSlices(); ++slice) {
    gaps.set(rows, slice);
    for (omUInt64 y = rows.slice(slice).getStartRow(); y < rows.slice(slice).getEndRow(); ++y) {
      const SliceGaps::GapRow row = gaps.row(y);
      joinGaps<InSlice>(gaps.row(y - 1), row, forest);
      if (!rows.has(slice, y + 1)) joinGaps<InSlice>(none.row(y + 1), row, forest);
      for (omUInt64 k = InSlice == ePC_4 ? 1 : 0; k < (InSlice == ePC_4 ? 2u : 3u); ++k) {
        joinGaps<InSlice>(former.row(y + k - 1), row, forest);
        if (!rows.has(slice + 1, y + k - 1)) joinGaps<InSlice>(none.row(y), row, forest);
      }
    }
    std::swap(former, gaps);
  }
  return forest.take();
}

}  // namespace

VoxelBackground backgroundOf(const NumberedRows& rows, eVoxelConnectivity connectivity) {
  RunComponents nodes =
      backgroundConnectivity(connectivity) == eVC_6 ? gapComponents<ePC_4>(rows) : gapComponents<ePC_8>(rows);
  nodes.componentOfRun.erase(nodes.componentOfRun.begin());
  return {nodes.nbComponents, std::move(nodes.componentOfRun)};
}

// The first voxel of a component is one of its lowest, and there, on the side of lower z, is what surrounds it. The
// voxel before it in its row is connected with that, over the one that is before and below: this would be a neighbour
// of both if it were of the component's kind, or connects them if it is not.
std::vector<omUInt32> surroundings(const NumberedRows& rows, const RunComponents& components,
                                   const VoxelBackground& background) {
  std::vector<omUInt32> result;
  result.reserve(components.nbComponents);
  for (std::size_t slice = 0; slice < rows.nbSlices(); ++slice)
    for (omUInt64 y = rows.slice(slice).getStartRow(); y < rows.slice(slice).getEndRow(); ++y) {
      const NumberedRow row = rows.row(slice, y);
      for (const PixelRun& run : row.runs)
        if (components.componentOfRun[row.indexOf(run)] == result.size())
          result.push_back(background.before(row.indexOf(run), row.first));
    }
  return result;
}

std::vector<omUInt32> enclosing(const RunComponents& components, const VoxelBackground& background) {
  std::vector<omUInt32> result{0};
  result.reserve(background.nbComponents);
  for (std::size_t run = 0; run < background.componentOfGap.size(); ++run)
    if (background.componentOfGap[run] == result.size()) result.push_back(components.componentOfRun[run]);
  return result;
}

}  // namespace ormix::geom::detail

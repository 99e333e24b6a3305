#include <ORMIXGeometry/Entity/2d/Shape/ConnectedComponents.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersectionsBuilder.h>
#include <ORMIXGeometry/Entity/2d/Shape/RunNeighbours.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>

#include <limits>
#include <string>

namespace ormix::geom {

namespace {

/// Trees of runs, of which each node but the roots has a parent with a smaller index.
class RunForest {
 public:
  explicit RunForest(std::size_t nbRuns) { _parents.reserve(nbRuns); }

  /// Adds the next run, in the tree of an earlier one, beside that. Looking for the root here takes longer than joins
  /// save, which shorten the ways that they take.
  void addTo(omUInt32 run) { _parents.push_back(_parents[run]); }
  /// Adds the next run as a tree of its own.
  void add() { _parents.push_back(static_cast<omUInt32>(_parents.size())); }
  /// Joins the trees of two runs.
  void join(omUInt32 a, omUInt32 b) {
    const omUInt32 rootOfA = rootOf(a);
    const omUInt32 rootOfB = rootOf(b);
    _parents[std::max(rootOfA, rootOfB)] = std::min(rootOfA, rootOfB);
  }

  /// Numbers the trees in order of their roots, which are their first runs; to be called once, at the end.
  RunComponents take() {
    omUInt32 nbTrees = 0;
    // A parent comes first and so has its number already.
    for (std::size_t run = 0; run < _parents.size(); ++run)
      _parents[run] = _parents[run] == run ? nbTrees++ : _parents[_parents[run]];
    return {nbTrees, std::move(_parents)};
  }

 private:
  omUInt32 rootOf(omUInt32 run) {
    while (_parents[run] != run) run = _parents[run] = _parents[_parents[run]];
    return run;
  }

  std::vector<omUInt32> _parents;
};

template <ePixelConnectivity Connectivity>
RunComponents componentsIn(const RowIntersections& rows) {
  using Neighbours = detail::RunNeighbours<Connectivity>;
  const PixelRun* const runs = rows.getRunColl().data();
  const auto indexOf = [runs](const PixelRun* run) { return static_cast<omUInt32>(run - runs); };
  RunForest forest(rows.getRunColl().size());
  const PixelRun* above = runs;
  const PixelRun* endOfAbove = runs;
  for (omUInt64 y = rows.getStartRow(); y < rows.getEndRow(); ++y) {
    const RowIntersections::Row row = rows.getRow(y);
    for (const PixelRun& run : row) {
      while (above != endOfAbove && Neighbours::isLeftOf(*above, run)) ++above;
      const bool isAdjacent = &run != row.begin() && (&run)[-1].end == run.begin;
      const bool isBelow = above != endOfAbove && !Neighbours::isLeftOf(run, *above);
      if (isBelow)
        forest.addTo(indexOf(above));
      else
        forest.add();
      if (isAdjacent) forest.join(indexOf(&run) - 1, indexOf(&run));
      if (!isBelow) continue;
      // Whether the run above ends first is not asked: if not, the one behind it begins behind this run anyway, and the
      // processor would guess half of the answers wrong.
      for (; above + 1 != endOfAbove && !Neighbours::isLeftOf(run, above[1]); ++above)
        forest.join(indexOf(above + 1), indexOf(&run));
    }
    above = row.begin();
    endOfAbove = row.end();
  }
  return forest.take();
}

}  // namespace

RunComponents componentsOf(const RowIntersections& rows, ePixelConnectivity connectivity) {
  const std::size_t nbRuns = rows.getRunColl().size();
  if (nbRuns > std::numeric_limits<omUInt32>::max())
    logAndThrow("Components of " + std::to_string(nbRuns) + " runs: there can be at most " +
                    std::to_string(std::numeric_limits<omUInt32>::max()),
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return connectivity == ePC_4 ? componentsIn<ePC_4>(rows) : componentsIn<ePC_8>(rows);
}

std::vector<RowIntersections> connectedComponents(const RowIntersections& rows, ePixelConnectivity connectivity) {
  struct Size {
    omUInt64 lastRow = 0;
    std::size_t nbRows = 0;
    std::size_t nbRuns = 0;
  };
  const RunComponents components = componentsOf(rows, connectivity);
  const auto visitRuns = [&rows, &components](auto visit) {
    const omUInt32* component = components.componentOfRun.data();
    for (omUInt64 row = rows.getStartRow(); row < rows.getEndRow(); ++row)
      for (const PixelRun& run : rows.getRow(row)) visit(row, run, *component++);
  };
  std::vector<Size> sizes(components.nbComponents);
  visitRuns([&sizes](omUInt64 row, const PixelRun&, omUInt32 component) {
    Size& size = sizes[component];
    size.nbRows += size.nbRuns == 0 || size.lastRow != row;
    size.lastRow = row;
    ++size.nbRuns;
  });
  std::vector<detail::RowIntersectionsBuilder> builders(components.nbComponents);
  for (std::size_t component = 0; component < builders.size(); ++component)
    builders[component].reserve(sizes[component].nbRows, sizes[component].nbRuns);
  visitRuns(
      [&builders](omUInt64 row, const PixelRun& run, omUInt32 component) { builders[component].addRun(row, run); });
  std::vector<RowIntersections> result;
  result.reserve(builders.size());
  for (detail::RowIntersectionsBuilder& builder : builders) result.push_back(builder.take());
  return result;
}

}  // namespace ormix::geom

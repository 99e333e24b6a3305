#include <ORMIXGeometry/Entity/2d/Shape/ConnectedComponents.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersectionsBuilder.h>
#include <ORMIXGeometry/Entity/2d/Shape/RunForest.h>

namespace ormix::geom {

namespace {

template <ePixelConnectivity Connectivity>
RunComponents componentsIn(const RowIntersections& rows) {
  const PixelRun* const runs = rows.getRunColl().data();
  const auto indexOf = [runs](const PixelRun* run) { return static_cast<omUInt32>(run - runs); };
  detail::RunForest forest(rows.getRunColl().size());
  RowIntersections::Row above(runs, runs);
  for (omUInt64 y = rows.getStartRow(); y < rows.getEndRow(); ++y) {
    const RowIntersections::Row row = rows.getRow(y);
    detail::addRow<Connectivity>(above, row, indexOf, forest);
    above = row;
  }
  return forest.take();
}

}  // namespace

RunComponents componentsOf(const RowIntersections& rows, ePixelConnectivity connectivity) {
  detail::checkNbRuns(rows.getRunColl().size());
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

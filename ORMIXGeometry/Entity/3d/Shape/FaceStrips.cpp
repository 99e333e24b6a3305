#include <ORMIXGeometry/Entity/3d/Shape/FaceStrips.h>

#include <utility>

namespace ormix::geom::detail {

FaceStrips::FaceStrips(const NumberedRows& rows, eVoxelConnectivity connectivity, RunComponents components)
    : _rows(rows),
      _components(std::move(components)),
      _background(backgroundOf(rows, connectivity)),
      _surroundings(surroundings(rows, _components, _background)),
      _enclosing(enclosing(_components, _background)) {}

void FaceStrips::collect(std::size_t slice, omUInt64 y, std::vector<FaceStrip>& strips) const {
  strips.clear();
  const NumberedRow row = _rows.row(slice, y);
  for (const PixelRun& run : row.runs) {
    const omUInt32 index = row.indexOf(run);
    strips.push_back({0, false, run.begin, run.begin, shellOf(index, _background.before(index, row.first))});
    strips.push_back({0, true, run.end, run.end, shellOf(index, _background.componentOfGap[index])});
  }
  collectSide(row, _rows.row(slice, y - 1), {1, false, 0, 0, 0}, strips);
  collectSide(row, _rows.row(slice, y + 1), {1, true, 0, 0, 0}, strips);
  collectSide(row, _rows.row(slice - 1, y), {2, false, 0, 0, 0}, strips);
  collectSide(row, _rows.row(slice + 1, y), {2, true, 0, 0, 0}, strips);
}

/// The parts of the runs that the neighbouring row does not cover.
/// \param strip axis and side
void FaceStrips::collectSide(const NumberedRow& row, const NumberedRow& neighbour, FaceStrip strip,
                             std::vector<FaceStrip>& strips) const {
  const PixelRun* next = neighbour.runs.begin();
  const PixelRun* const last = neighbour.runs.end();
  for (const PixelRun& run : row.runs) {
    while (next != last && next->end <= run.begin) ++next;
    strip.begin = run.begin;
    for (const PixelRun* covering = next;; ++covering) {
      strip.end = covering == last || covering->begin > run.end ? run.end : covering->begin;
      if (strip.begin < strip.end) {
        const bool isBeforeAll = covering == neighbour.runs.begin();
        const omUInt32 background = isBeforeAll ? 0 : _background.componentOfGap[neighbour.indexOf(covering[-1])];
        strip.shell = shellOf(row.indexOf(run), background);
        strips.push_back(strip);
      }
      if (strip.end == run.end || covering->end >= run.end) break;
      strip.begin = covering->end;
    }
  }
}

/// A face between voxels and the background around them is of their boundary, each other one of a cavity in them.
omUInt32 FaceStrips::shellOf(omUInt32 run, omUInt32 background) const {
  const omUInt32 component = _components.componentOfRun[run];
  if (_surroundings[component] == background) return component;
  return static_cast<omUInt32>(_components.nbComponents) + background - 1;
}

}  // namespace ormix::geom::detail

#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/2d/Shape/Rasterize.h>
#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <command/frame/Errors.h>
#include <command/io/Masks.h>
#include <command/io/Outputs.h>
#include <images/PngFile.h>

#include <algorithm>

namespace ormix::command {

namespace {

using namespace geom;

template <class Polygon>
RowIntersections pixelsOf(const Polygon& polygon) {
  return rasterize(polygon);
}
RowIntersections pixelsOf(const Shape2d& shape) {
  return shape.getNbPixels() > 0 ? shape.getRowIntersections() : rasterize(shape.getPolygonWithHolesColl());
}

/// Calls `visit(y, run)` with the runs of all rows.
template <class Visit>
void visitRuns(const RowIntersections& rows, const Visit& visit) {
  for (omUInt64 y = rows.getStartRow(); y < rows.getEndRow(); ++y)
    for (const PixelRun& run : rows.getRow(y)) visit(y, run);
}

using RegionList = JoinedLists<ScalarClassList<Polygon2d, PolygonWithHoles2d>, ClassList<Shape2d>>;

}  // namespace

void writeMask(const std::string& path, const Contents& contents,
               const std::optional<std::pair<std::size_t, std::size_t>>& size) {
  std::vector<RowIntersections> regions;
  omUInt64 width = 0, height = 0;
  for (const auto& entity : contents.allEntities()) {
    const auto take = [&](const auto& region) { return regions.push_back(pixelsOf(region)), true; };
    if (!geom::detail::callTyped(RegionList(), *entity, take))
      throw DataError(entity->getClassName() + " has no pixels");
    visitRuns(regions.back(), [&](omUInt64 y, const PixelRun& run) {
      width = std::max<omUInt64>(width, run.end);
      height = std::max(height, y + 1);
    });
  }
  if (size) std::tie(width, height) = *size;
  constexpr omUInt64 most = omUInt64(1) << 30;
  if (width == 0 || height == 0) throw DataError("there are no pixels");
  if (width > most || height > most || width * height > most)
    throw DataError("an image of " + std::to_string(width) + " x " + std::to_string(height) + " pixels is too large");
  images::GrayImage mask{width, height, std::vector<omUInt8>(width * height)};
  for (const RowIntersections& rows : regions)
    visitRuns(rows, [&](omUInt64 y, const PixelRun& run) {
      if (y >= height || run.begin >= width) return;
      omUInt8* const row = mask.pixels.data() + y * width;
      std::fill(row + run.begin, row + std::min<omUInt64>(run.end, width), omUInt8(255));
    });
  const std::string bytes = images::encodeGray(mask);
  writeStream(path, [&](std::ostream& out) {
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return out ? BoolResult() : failure("it cannot be written");
  });
}

}  // namespace ormix::command

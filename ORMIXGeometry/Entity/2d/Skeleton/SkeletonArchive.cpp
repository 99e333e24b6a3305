#include <ORMIXGeometry/Entity/2d/Skeleton/SkeletonArchive.h>

#include <utility>

namespace ormix {

namespace {

/// The numbers of a part of the boundary, split by their type.
struct PartEnds {
  PlanarPoint start;
  PlanarPoint end;
};
struct PartPlace {
  omUInt32 ringIdx;
  omUInt32 pointIdx;
  omUInt32 isVertex;
};

}  // namespace

template <>
struct PackedCoordinates<PartEnds> {
  using Scalar = omReal64;
  static constexpr std::size_t nbColumns = 4;
};
template <>
struct PackedCoordinates<PartPlace> {
  using Scalar = omUInt32;
  static constexpr std::size_t nbColumns = 3;
};

BoolResult writeItem(BaseOArchive& archive, std::string_view key, const std::vector<AxisPart>& parts) {
  std::vector<PartEnds> ends;
  std::vector<PartPlace> places;
  ends.reserve(parts.size());
  places.reserve(parts.size());
  for (const AxisPart& part : parts) {
    ends.push_back({part.start, part.end});
    places.push_back({part.ringIdx, part.pointIdx, part.isVertex ? 1u : 0u});
  }
  BoolResult result = archive.beginSection(key);
  if (result) result = writeItem(archive, "endColl", ends);
  if (result) result = writeItem(archive, "placeColl", places);
  return result ? archive.endSection() : result;
}

BoolResult readItem(BaseIArchive& archive, std::string_view key, std::vector<AxisPart>& parts) {
  std::vector<PartEnds> ends;
  std::vector<PartPlace> places;
  BoolResult result = archive.beginSection(key);
  if (result) result = readItem(archive, "endColl", ends);
  if (result) result = readItem(archive, "placeColl", places);
  if (result) result = archive.endSection();
  if (!result) return result;
  if (ends.size() != places.size())
    return failure("\"endColl\" has " + std::to_string(ends.size()) + " rows and \"placeColl\" " +
                   std::to_string(places.size()));
  std::vector<AxisPart> read;
  read.reserve(ends.size());
  for (std::size_t i = 0; i < ends.size(); ++i) {
    if (places[i].isVertex > 1)
      return failure("Part " + std::to_string(i) + " is neither a vertex (1) nor an edge (0)");
    read.push_back({ends[i].start, ends[i].end, places[i].ringIdx, places[i].pointIdx, places[i].isVertex == 1});
  }
  parts = std::move(read);
  return true;
}

}  // namespace ormix

namespace ormix::geom {

BoolResult writeItem(BaseOArchive& archive, std::string_view key, const std::vector<SkeletonVertex2d>& vertices) {
  std::vector<AxisVertex> packed;
  packed.reserve(vertices.size());
  for (const SkeletonVertex2d& vertex : vertices)
    packed.push_back({{vertex.getPoint().getX(), vertex.getPoint().getY()}, vertex.getRadius()});
  return ormix::writeItem(archive, key, packed);
}

BoolResult readItem(BaseIArchive& archive, std::string_view key, std::vector<SkeletonVertex2d>& vertices) {
  std::vector<AxisVertex> packed;
  const BoolResult result = ormix::readItem(archive, key, packed);
  if (!result) return result;
  std::vector<SkeletonVertex2d> read;
  read.reserve(packed.size());
  for (const AxisVertex& vertex : packed)
    read.emplace_back(Point2dData<omReal64>(vertex.point.x, vertex.point.y), vertex.radius);
  vertices = std::move(read);
  return result;
}

}  // namespace ormix::geom

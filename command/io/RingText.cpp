#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <ORMIXGeometry/Tools/Location/RingsOf.h>
#include <command/io/PointsOf.h>
#include <command/io/RingText.h>
#include <command/io/Rows.h>

#include <ostream>

namespace ormix::command {

namespace {

using namespace geom;

using RegionList = JoinedLists<ScalarClassList<Polygon2d, PolygonWithHoles2d>, ClassList<Shape2d>>;

/// Writes rows of numbers and, before all blocks but the first, an empty line.
template <class T>
void writeBlock(std::ostream& out, const T* values, std::size_t nbRows, std::size_t dimension, bool& isFirst) {
  if (!isFirst) out << '\n';
  isFirst = false;
  for (std::size_t row = 0; row < nbRows; ++row)
    for (std::size_t k = 0; k < dimension; ++k)
      out << textOf(omReal64(values[row * dimension + k])) << (k + 1 < dimension ? ' ' : '\n');
}

}  // namespace

BoolResult writeRings(std::ostream& out, const SerializationObjectPtrColl& entities) {
  bool isFirst = true;
  for (const auto& entity : entities) {
    const auto write = [&](const auto& region) {
      geom::detail::visitRings(
          region, [&](const auto* xy, std::size_t nbPoints) { writeBlock(out, xy, nbPoints, 2, isFirst); });
      return true;
    };
    if (!geom::detail::callTyped(RegionList(), *entity, write))
      return failure(entity->getClassName() + " has no rings");
  }
  return out ? BoolResult() : failure("it cannot be written");
}

omUInt64 countRingVertices(const SerializationObjectPtrColl& entities) {
  omUInt64 nbVertices = 0;
  const auto count = [&](const auto& region) {
    geom::detail::visitRings(region, [&](const auto*, std::size_t nbPoints) { nbVertices += nbPoints; });
    return true;
  };
  for (const auto& entity : entities) geom::detail::callTyped(RegionList(), *entity, count);
  return nbVertices;
}

BoolResult writePoints(std::ostream& out, const SerializationObjectPtrColl& entities) {
  bool isFirst = true;
  for (const auto& entity : entities) {
    const std::optional<PointSet> points = pointsOf(*entity);
    if (!points) return failure(entity->getClassName() + " has no points");
    writeBlock(out, points->values.data(), points->nbRows(), points->dimension, isFirst);
  }
  return out ? BoolResult() : failure("it cannot be written");
}

}  // namespace ormix::command

#include <command/frame/Errors.h>
#include <command/io/PointSets.h>
#include <command/io/PointsOf.h>

namespace ormix::command {

std::vector<PointSet> pointSetsOf(const Document& document) {
  if (document.format == eInputFormat::Points) return document.pointSets;
  if (document.format == eInputFormat::Png) throw DataError("an image has no points");
  std::vector<PointSet> sets;
  for (const auto& entity : entitiesOf(document)) {
    const std::optional<PointSet> points = pointsOf(*entity);
    if (!points) throw DataError(entity->getClassName() + " has no points to fit to");
    sets.push_back(*points);
  }
  return sets;
}

}  // namespace ormix::command

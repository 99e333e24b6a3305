#pragma once

#include <command/io/Documents.h>
#include <command/io/PointText.h>

#include <vector>

namespace ormix::command {

/// The sets of points of a document: rows of a table, or the points of each entity that has some.
/// \throw DataError for images and entities without points
std::vector<PointSet> pointSetsOf(const Document& document);

}  // namespace ormix::command

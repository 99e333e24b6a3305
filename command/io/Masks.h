#pragma once

#include <command/io/Contents.h>

#include <optional>
#include <string>
#include <utility>

namespace ormix::command {

/// Writes a PNG mask, white where a pixel's centre is inside a polygon, a polygon with holes, or a pixel belongs to a
/// shape.
/// \param size width and height of the image; where not given, as far as there are pixels. Pixels beyond it are left out
/// \throw DataError for other entities, for pixels at negative columns or rows, and for more than 2³⁰ pixels
void writeMask(const std::string& path, const Contents& contents,
               const std::optional<std::pair<std::size_t, std::size_t>>& size);

}  // namespace ormix::command

#pragma once

#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace ormix::geom {

/// The rings of a text file, and the lines of it that could not be read.
struct RingFile {
  /// A line that could not be read.
  struct Problem {
    std::size_t line;     ///< counted from 1
    std::string message;  ///< why it could not be read
  };
  /// At most so many problems are stored; `nbProblems` counts the others, too.
  static constexpr std::size_t s_maxProblems = 1000;

  std::vector<Polygon2d<omReal64>> rings;  ///< in order of the file
  std::vector<Problem> problems;           ///< in order of the file
  std::size_t nbProblems = 0;              ///< of the whole file
};

/// Reads rings from a text. There are two forms of a ring, which may be mixed in one text:
/// - a block of lines "x y", with a blank line between two rings; such a ring is kept as given, open or closed;
/// - one line as `fromString` reads it, "0 0, 10 0, 10 10", which closes the ring; tabs count as blanks.
///
/// A '#' and the rest of its line are a comment. A line of neither form is a problem: it is skipped, and a block
/// continues after it. Coordinates are finite numbers in decimal notation, independent of the locale. Linear in the
/// text; the memory is that of the rings and 64 KiB, within which a coordinate and the blanks around it must end.
ORMIX_GEOMETRY_API RingFile readRings(std::istream& stream);
/// The same from a file. Fails, with an empty result and the path in the message, when the file cannot be read.
ORMIX_GEOMETRY_API ProcessingResult<RingFile> readRings(const std::string& path);

}  // namespace ormix::geom

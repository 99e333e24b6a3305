#pragma once

#include <ORMIXGeometry/Entity/2d/Polygon/Polygon2d.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace ormix::geom {

/// What a text file of rings holds, and what of it could not be understood.
struct RingFile {
  struct Problem {
    std::size_t line;  ///< counted from 1
    std::string message;
  };
  /// The reader keeps no more problems than this; `nbProblems` counts on.
  static constexpr std::size_t s_maxProblems = 1000;

  std::vector<Polygon2d<omReal64>> rings;
  std::vector<Problem> problems;
  std::size_t nbProblems = 0;
};

/// Reads rings from a text. Two spellings are understood, also mixed in one text:
/// - blocks of "x y" lines, a blank line between two rings; such a ring is kept as it stands, open or closed;
/// - one ring a line as `fromString` reads it, "0 0, 10 0, 10 10", which closes it; tabs count as blanks.
/// A '#' and what follows it on its line is a comment. A line that is neither is a problem: it is skipped, and a block
/// goes on after it. Coordinates are finite numbers in decimal notation whatever the locale. Linear in the text.
ORMIX_GEOMETRY_API RingFile readRings(std::istream& stream);
/// The same from a file; fails, with an empty result and the path in the message, when the file cannot be read.
ORMIX_GEOMETRY_API ProcessingResult<RingFile> readRings(const std::string& path);

}  // namespace ormix::geom

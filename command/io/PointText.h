#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <istream>
#include <string>
#include <vector>

namespace ormix::command {

/// Rows of equally many numbers.
struct PointSet {
  std::size_t dimension = 0;     ///< numbers of a row
  std::vector<omReal64> values;  ///< row by row
  std::size_t nbRows() const { return dimension == 0 ? 0 : values.size() / dimension; }
};

/// A line of a text that could not be read.
struct LineProblem {
  std::size_t line = 0;  ///< counted from 1
  std::string message;   ///< why
};

/// The sets of points of a text.
struct PointText {
  static constexpr std::size_t s_maxProblems = 100;  ///< so many are stored
  std::vector<PointSet> sets;
  std::vector<LineProblem> problems;
  std::size_t nbProblems = 0;  ///< all of them
};

/// Reads points, one a line, whose coordinates are parted by blanks, tabs, commas or semicolons. A blank line parts two
/// sets, "#" begins a comment, and a first line of words is a head. The first point of a set says how many numbers a
/// point has; a line with another number of them, or with what is no finite number, is a problem and left out.
PointText readPoints(std::istream& stream);

}  // namespace ormix::command

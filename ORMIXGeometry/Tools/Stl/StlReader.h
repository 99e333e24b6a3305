#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXGeometry/Tools/Stl/StlInput.h>
#include <ORMIXGeometry/Tools/Stl/StlTriangles.h>

namespace ormix::geom {

/// Whether the first 256 bytes, or all of a shorter file, contain "solid", "facet", "normal" and a line feed, at any
/// position, in upper or lower case. A binary header with all four is mistaken for text (intended).
ORMIX_GEOMETRY_API bool hasStlAsciiFormat(StlInput& input);

/// Reads the triangles of an ASCII file word by word. The positions of the words are fixed, and keywords are skipped
/// without a check:
/// - one word, then triangles until the word "endsolid", the end of the text or a coordinate that is not a number;
/// - a triangle is "facet" and a word, or any other word (the name of the solid: one word at most, intended) and two
///   words; then five words; three times a word and three numbers; and two words.
///
/// The normal is ignored. A triangle counts when its last word has begun, even if the text ends within that word.
/// Numbers are those of `StlWords::nextNumber`. Linear in the bytes; memory grows with the triangles that are read.
ORMIX_GEOMETRY_API StlTriangles readAsciiTriangles(StlInput& input);

/// Reads an ASCII file with the deviations from the format that are common in practice: names of several words, any
/// number of solids, "end solid", "end loop", upper case, the line ends of other systems, missing normals, coordinates
/// "nan" and "inf". Keywords are checked: reading stops at an unexpected one.
ORMIX_GEOMETRY_API StlTriangles readTolerantAsciiTriangles(StlInput& input);

/// How the declared number of triangles of a binary file is used.
enum class StlCount {
  Binding,  ///< at most so many triangles are read
  Hint      ///< the same, but 0 means all complete records
};

/// Reads the records of a binary file: 80 bytes, the number of triangles, and 50 bytes for each triangle, of which the
/// normal and the attribute are ignored. A triangle counts when its 50 bytes have been read; memory is
/// reserved for no more triangles than the file has room for.
ORMIX_GEOMETRY_API StlTriangles readBinaryTriangles(StlInput& input, StlCount count = StlCount::Binding);

}  // namespace ormix::geom

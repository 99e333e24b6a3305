#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXGeometry/Tools/Stl/StlInput.h>
#include <ORMIXGeometry/Tools/Stl/StlTriangles.h>

namespace ormix::geom {

/// True when the first 256 bytes (fewer if there are fewer), without regard to upper and lower case, contain "solid",
/// "facet", "normal" and a line feed, wherever. A binary header with all four is taken for text (intended).
ORMIX_GEOMETRY_API bool hasStlAsciiFormat(StlInput& input);

/// Reads the triangles of an ASCII file word by word and believes the words to be in their places:
/// - one word, then triangles until the word "endsolid", the end of the text or a coordinate that is no number;
/// - a triangle is "facet" and a word, or any other word (the solid's name: one word at most, intended) and two words;
///   five words; three times a word and three numbers; two words.
/// Keywords are not looked at and the normal is passed over. A triangle counts when its last word has arrived: one that
/// the end of the text cuts is not whole unless it reads "endfacet". Numbers are those of `StlWords::nextNumber`.
/// Linear in the bytes; memory grows with what arrives.
ORMIX_GEOMETRY_API StlTriangles readAsciiTriangles(StlInput& input);

/// Reads an ASCII file as programs write them: names of several words, any number of solids, "end solid", "end loop",
/// upper case, foreign line ends, no normal, coordinates "nan" and "inf". Keywords are looked at: an unexpected one
/// ends the reading.
ORMIX_GEOMETRY_API StlTriangles readTolerantAsciiTriangles(StlInput& input);

/// How much the count field of a binary file is believed.
enum class StlCount {
  Binding,  ///< no more triangles than it says
  Hint      ///< all that is there where it says none
};

/// Reads the records of a binary file: 80 bytes, the count, and 50 bytes a triangle of which the normal and the
/// attribute are passed over. A triangle counts when its 50 bytes have arrived; the count sizes nothing.
ORMIX_GEOMETRY_API StlTriangles readBinaryTriangles(StlInput& input, StlCount count = StlCount::Binding);

}  // namespace ormix::geom

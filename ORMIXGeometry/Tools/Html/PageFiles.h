#pragma once

#include <ORMIXGeometry/Tools/Html/HtmlReport.h>

#include <string>
#include <string_view>

/// \file
/// Files that become part of a page; not installed.

namespace ormix::geom::detail {

/// What a file is in a page.
enum ePageFileKind { eFK_Table, eFK_Picture, eFK_Mesh, eFK_Other };

/// A file by the extension of its path.
struct PageFile {
  ePageFileKind kind;
  const char* mediaType;  ///< of a picture
  std::string name;       ///< without folders
};
PageFile pageFileOf(const std::string& path);

/// Reads all bytes; fails, with the path and the reason, when it cannot.
BoolResult readPageFile(const std::string& path, std::string& bytes);

/// A text of comma-separated values (RFC 4180): cells may stand in double quotes, which are doubled within them. The
/// first line names the columns; where a later one has more cells, columns without a name are added.
/// Reals that are longer are shown with six digits.
HtmlTable parseTable(std::string_view text);

/// Adds the triangles of a file of a mesh, as it has them.
/// \param problem why not all of it could be read; empty when it could
BoolResult drawMeshFile(HtmlScene& scene, const std::string& path, std::string& problem);

}  // namespace ormix::geom::detail

#pragma once

#include <command/io/Contents.h>

#include <string>

namespace ormix::command {

/// How a picture is drawn.
struct PictureOptions {
  omReal64 size = 800;      ///< the larger side, in pixels
  bool hasNumbers = false;  ///< whether entities have their numbers, counted from 1
};

/// Writes a picture in SVG: entities of the plane, over the image they are regions of; or meshes.
/// \throw DataError for what cannot be drawn, and for entities of the plane and of space together
void writeSvg(const std::string& path, const Contents& contents, const PictureOptions& options = {});

/// Writes a page: a picture of what is in the plane, a scene of what is in space, and a table of measures; of an image,
/// the picture with its regions.
/// \throw DataError and ORMIXGeometryException for what cannot be drawn
void writeHtml(const std::string& path, const Contents& contents, const std::string& title,
               const PictureOptions& options = {});

}  // namespace ormix::command

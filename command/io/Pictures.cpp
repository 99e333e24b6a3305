#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>
#include <ORMIXGeometry/Entity/3d/Mesh/MeshConversion.h>
#include <ORMIXGeometry/Tools/Html/HtmlReport.h>
#include <ORMIXGeometry/Tools/Html/ToHtml.h>
#include <ORMIXGeometry/Tools/Svg/MeshView.h>
#include <ORMIXGeometry/Tools/Svg/SvgWriter.h>
#include <command/frame/Errors.h>
#include <command/io/Outputs.h>
#include <command/io/Pictures.h>
#include <images/PngFile.h>

#include <array>
#include <ostream>

namespace ormix::command {

namespace {

using namespace geom;

/// Colours that are told apart on white and on photographs (Okabe2008).
constexpr std::array<const char*, 7> s_colours{"#0072b2", "#d55e00", "#009e73", "#cc79a7",
                                               "#e69f00", "#56b4e9", "#000000"};

void drawPlanar(SvgWriter& writer, const Contents& contents, const PictureOptions& options) {
  if (contents.hasRowsDownwards) writer.setYAxis(eSYA_Down);
  if (contents.images.size() == 1) {
    const images::ValueImage image = images::decodeValues(contents.images.front());
    const BoundingBox2d<omReal64> all(0, 0, static_cast<omReal64>(image.width), static_cast<omReal64>(image.height));
    require(writer.setView(all));
    require(writer.drawImage(contents.images.front(), all));
  }
  std::size_t item = 0;
  for (const auto& object : contents.entities) {
    const auto* const entity = dynamic_cast<const BaseGeometryEntity2d*>(object.get());
    if (!entity) throw DataError(object->getClassName() + " cannot be drawn into a picture of the plane");
    const SvgStyle style{s_colours[item % s_colours.size()], "none", 1.5,
                         options.hasNumbers ? std::to_string(item + 1) : ""};
    require(writer.draw(*entity, style));
    ++item;
  }
}

bool hasSpatial(const Contents& contents) {
  for (const auto& entity : contents.entities)
    if (dynamic_cast<const BaseGeometryEntity3d*>(entity.get())) return true;
  return !contents.mesh.isEmpty();
}

}  // namespace

void writeSvg(const std::string& path, const Contents& contents, const PictureOptions& options) {
  SvgWriter writer(options.size);
  const bool isSpatial = hasSpatial(contents);
  for (const auto& entity : contents.entities)
    if (isSpatial && dynamic_cast<const BaseGeometryEntity2d*>(entity.get()))
      throw DataError("what is in the plane and what is in space have no picture in common");
  if (isSpatial) {
    Mesh3d<omReal64> mesh;
    require(toMesh3d(joinedMesh(contents), mesh));
    require(drawMesh(writer, mesh));
  } else {
    drawPlanar(writer, contents, options);
  }
  writeStream(path, [&](std::ostream& out) { return writer.write(out); });
}

void writeHtml(const std::string& path, const Contents& contents, const std::string& title,
               const PictureOptions& options) {
  HtmlOptions page;
  page.title = title;
  HtmlReport report(page);
  if (contents.images.empty()) {
    HtmlView view;
    for (const auto& object : contents.entities) {
      if (const auto* const planar = dynamic_cast<const BaseGeometryEntity2d*>(object.get()))
        view.add(*planar);
      else if (const auto* const spatial = dynamic_cast<const BaseGeometryEntity3d*>(object.get()))
        view.add(*spatial);
      else
        throw DataError(object->getClassName() + " cannot be drawn");
    }
    if (!contents.mesh.isEmpty()) view.add(contents.mesh);
    view.appendTo(report);
  } else {
    SvgWriter writer(options.size);
    drawPlanar(writer, contents, options);
    require(report.addPicture(writer, title));
  }
  writeStream(path, [&](std::ostream& out) {
    out << report.toHtml();
    return out ? BoolResult() : failure("it cannot be written");
  });
}

}  // namespace ormix::command

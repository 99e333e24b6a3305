#include <ORMIXGeometry/Entity/2d/PlanarEntities.h>
#include <ORMIXGeometry/Entity/3d/SpatialEntities.h>
#include <ORMIXGeometry/Entity/TypedEntity.h>
#include <ORMIXGeometry/Measure/2d/AreaMsr2d.h>
#include <ORMIXGeometry/Measure/2d/PerimeterMsr2d.h>
#include <ORMIXGeometry/Measure/3d/AreaMsr3d.h>
#include <ORMIXGeometry/Measure/3d/MeshMoments3d.h>
#include <ORMIXGeometry/Measure/3d/VolumeMsr3d.h>
#include <ORMIXGeometry/Region/RegionColumns.h>
#include <ORMIXGeometry/Transform/2d/CentroidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/EnvelopeTransform2d.h>
#include <ORMIXGeometry/Transform/3d/CentroidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/EnvelopeTransform3d.h>
#include <command/Subcommands.h>
#include <command/frame/Errors.h>
#include <command/io/Documents.h>
#include <command/io/Regions.h>
#include <command/io/Rows.h>

#include <algorithm>
#include <cctype>
#include <cmath>

namespace ormix::command {

namespace {

using namespace geom;

/// "centroid_x" of "centroid x"; "its angle" takes the name of the column before.
std::string keyOf(std::size_t column) {
  std::string name(geom::detail::s_regionColumns[column].name);
  if (name.substr(0, 4) == "its ") return keyOf(column - 1) + '_' + name.substr(4);
  for (char& c : name) c = c == ' ' || c == '-' ? '_' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return name;
}

Row rowOf(const std::string& file, const Region& region, const PixelSpacing& spacing) {
  const RegionProperties properties = regionProperties(*region.shape, spacing);
  Row row;
  row.add("file", file).add("region", region.label).add("unit", spacing.unit);
  for (std::size_t i = 0; i < geom::detail::s_regionColumns.size(); ++i) {
    const geom::detail::RegionColumn& column = geom::detail::s_regionColumns[i];
    row.add(keyOf(i) + (column.unit == geom::detail::eRegionUnit::Angle ? "_deg" : ""), column.value(properties));
  }
  return row;
}

/// A ring as measures expect it, without the oddities of closePolygon().
template <class T>
Polygon2d<T> closedRing(const Polygon2d<T>& ring) {
  Polygon2d<T> closed = ring;
  if (!isClosed(ring) && !ring.isEmpty()) closed.getPointColl().push_back(ring.getPointColl().front());
  return closed;
}

template <class Entity>
void addCounts(Row&, const Entity&) {}

/// A ring may be stored open: its area is that of the closed one, and its perimeter that of what is stored.
template <class T>
void addCounts(Row& row, const Polygon2d<T>& ring) {
  const omReal64 area = AreaMsr2d::measure(closedRing(ring));
  row.add("area", std::abs(area)).add("vertices", omUInt64(ring.getNbPoints())).add("closed", isClosed(ring));
  if (area != 0)
    row.add("turns", std::string((area > 0) == (ring.getPolygon2dType() == eP2DT_Exterior) ? "ccw" : "cw"));
}
template <class T>
void addCounts(Row& row, const PolygonWithHoles2d<T>& polygon) {
  row.add("vertices", omUInt64(polygon.getNbTotPoints())).add("rings", omUInt64(polygon.getNbTotPolygons()));
}
void addCounts(Row& row, const Shape2d& shape) { row.add("pixels", shape.getNbPixels()); }
void addCounts(Row& row, const Shape3d& shape) { row.add("voxels", shape.getNbVoxels()); }
template <class T>
void addCounts(Row& row, const PointCloud2d<T>& cloud) {
  row.add("points", omUInt64(cloud.getCollection().size()));
}
template <class T>
void addCounts(Row& row, const PointCloud3d<T>& cloud) {
  row.add("points", omUInt64(cloud.getCollection().size()));
}
template <class T>
void addCounts(Row& row, const Mesh3d<T>& mesh) {
  row.add("vertices", omUInt64(mesh.getNbVertices())).add("triangles", omUInt64(mesh.getNbTriangles()));
  row.add("closed", mesh.isClosed());
}

template <class Entity>
constexpr bool s_isRing = false;
template <class T>
constexpr bool s_isRing<Polygon2d<T>> = true;

/// What the volume means nothing for: a mesh that is not closed.
template <class Entity>
bool isOpen(const Entity&) {
  return false;
}
template <class T>
bool isOpen(const Mesh3d<T>& mesh) {
  return !mesh.isClosed();
}

template <class Entity>
void addPlanar(Row& row, const Entity& entity) {
  omReal64 value = 0;
  if constexpr (!s_isRing<Entity> && AreaMsr2d::Supports<Entity>::value)
    if (AreaMsr2d().process(entity, value)) row.add("area", std::abs(value));
  addCounts(row, entity);
  if constexpr (PerimeterMsr2d::Supports<Entity>::value)
    if (PerimeterMsr2d().process(entity, value)) row.add("perimeter", value);
  if constexpr (CentroidTransform2d::Supports<Entity>::value) {
    Point2d<omReal64> centroid;
    if (CentroidTransform2d().derive(entity, centroid)) row.addPoint("centroid", {centroid.getX(), centroid.getY()});
  }
  if constexpr (EnvelopeTransform2d::Supports<Entity>::value) {
    EnvelopeTransform2d::Result<Entity> box;
    if (EnvelopeTransform2d().derive(entity, box))
      row.addPoint("min", {omReal64(box.getXMin()), omReal64(box.getYMin())})
          .addPoint("max", {omReal64(box.getXMax()), omReal64(box.getYMax())});
  }
}

template <class Entity>
void addSpatial(Row& row, const Entity& entity) {
  omReal64 value = 0;
  addCounts(row, entity);
  if constexpr (AreaMsr3d::Supports<Entity>::value)
    if (AreaMsr3d().process(entity, value)) row.add("area", value);
  if constexpr (VolumeMsr3d::Supports<Entity>::value)
    if (!isOpen(entity) && VolumeMsr3d().process(entity, value)) row.add("volume", std::abs(value));
  if constexpr (CentroidTransform3d::Supports<Entity>::value) {
    Point3d<omReal64> centroid;
    if (CentroidTransform3d().derive(entity, centroid))
      row.addPoint("centroid", {centroid.getX(), centroid.getY(), centroid.getZ()});
  }
  if constexpr (EnvelopeTransform3d::Supports<Entity>::value) {
    EnvelopeTransform3d::Result<Entity> box;
    if (EnvelopeTransform3d().derive(entity, box)) {
      const auto &low = box.getMinCornerPt(), &high = box.getMaxCornerPt();
      row.addPoint("min", {omReal64(low.getX()), omReal64(low.getY()), omReal64(low.getZ())})
          .addPoint("max", {omReal64(high.getX()), omReal64(high.getY()), omReal64(high.getZ())});
    }
  }
}

Row rowOf(const std::string& file, std::size_t item, const BaseSerializationObject& object) {
  Row row;
  row.add("file", file).add("item", omUInt64(item)).add("class", object.getClassName());
  const auto planar = [&](const auto& entity) { return addPlanar(row, entity), true; };
  const auto spatial = [&](const auto& entity) { return addSpatial(row, entity), true; };
  if (const auto* const entity = dynamic_cast<const BaseGeometryEntity2d*>(&object))
    geom::detail::callTyped(PlanarEntityList(), *entity, planar);
  else if (const auto* const body = dynamic_cast<const BaseGeometryEntity3d*>(&object))
    geom::detail::callTyped(SpatialEntityList(), *body, spatial);
  return row;
}

int run(const Arguments& arguments) {
  RowPrinter printer(arguments);
  const auto [x, y] = arguments.spacing("spacing");
  const PixelSpacing spacing{x, y, arguments.text("unit", "px")};
  const int status = arguments.forEachInput(arguments.inputs(), [&](const std::string& name) {
    std::size_t item = 0;
    readDocuments(arguments, name, [&](const Document& document) {
      if (document.format == eInputFormat::Png) {
        for (const Region& region : regionsOf(arguments, document.image)) printer.print(rowOf(name, region, spacing));
        return;
      }
      for (const auto& entity : entitiesOf(document)) printer.print(rowOf(name, ++item, *entity));
    });
  });
  printer.finish();
  return status;
}

}  // namespace

Command measureCommand() {
  std::vector<Option> options{fromOption()};
  options.insert(options.end(), rowOptions().begin(), rowOptions().end());
  options.insert(options.end(), regionOptions().begin(), regionOptions().end());
  options.push_back({"spacing", 's', eOptionKind::Spacing, "SX[,SY]",
                     "size of a pixel, by which lengths are multiplied; 1 when not given"});
  options.push_back(
      {"unit", 'u', eOptionKind::Text, "NAME", "unit of the spacing, for the results; px when not given"});
  return {
      "measure",
      "[FILE...]",
      "area, perimeter, volume, centroid and box of what files hold; regions of images",
      "Prints a row for each entity: of archives, of meshes (STL, OBJ, PLY, OFF), of texts of rings (\"0 0, 4 0, 4 3\" "
      "on a line, or blocks of \"x y\" lines) and of points; for each region of a PNG image its shape, moments, Feret "
      "diameters and circles.\n\n"
      "Areas and volumes are positive; \"turns\" says how a ring is stored. The area of an open ring is that of the "
      "ring closed by a straight edge, its perimeter that of what is stored. An open mesh has no volume. Keys that end "
      "in \"_deg\" are in degrees, all other angles in radians.",
      {},
      std::move(options),
      {{"ormix measure part.stl", "One row for a mesh"},
       {"ormix measure --format csv --fields item,area,perimeter contours.txt",
        "Areas and perimeters of all rings, for a spreadsheet"},
       {"ormix measure --threshold otsu --spacing 0.5 --unit um blobs.png",
        "The regions of a photograph, whose pixels are half a micrometre wide"},
       {"ormix convert contours.txt --to jsonl | ormix measure - | head -n 3",
        "The entities of a stream of archives, a line each"}},
      run};
}

}  // namespace ormix::command

// Draws one of each planar entity to entities.svg.
#include <ORMIXGeometry/ORMIXGeometry.h>
#include <ORMIXGeometry/Tools/Svg/SvgWriter.h>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <iostream>

int main() {
  using namespace ormix;
  using namespace ormix::geom;
  using Point = Point2dData<omReal64>;

  PolygonWithHoles2d<omReal64> plate;
  fromString(plate.getExteriorPolygon(), "0 0, 6 0, 6 4, 0 4");
  const auto bore = boost::make_shared<PolygonWithHoles2d<omReal64>>();
  bore->getExteriorPolygon().setPolygon2dType(eP2DT_Interior);
  fromString(bore->getExteriorPolygon(), "1 1, 1 3, 3 3, 3 1");
  plate.getPolygonHoles().push_back(bore);
  Polygon2d<omReal64> star;
  fromString(star, "14 0, 15 1.5, 17 1, 16 2.5, 17 4, 15 3.5, 14 5, 13.7 3, 12 2.5, 13.7 2");

  SvgWriter picture;
  const auto draw = [&picture](const BaseGeometryEntity2d& entity, const char* stroke, const char* fill,
                               const char* label) {
    const BoolResult drawn = picture.draw(entity, {stroke, fill, 1.5, label});
    if (!drawn) std::cerr << drawn.getMessage() << '\n';
  };
  draw(BoundingBox2d<omReal64>(-1, -1, 18, 15), "silver", "none", "");
  draw(plate, "#204060", "#a0c0e0", "holes");
  draw(star, "#206020", "#b0e0b0", "polygon");
  draw(Circle2d<omReal64>(Point(9, 2), 2), "#602020", "#e0b0b0", "circle");
  draw(Ellipse2d<omReal64>(Point(3, 8), 3, 1.5, 0.5), "#604020", "#e0d0b0", "ellipse");
  draw(Rectangle2d<omReal64>(Point(9, 8), 2, 1, 0.4), "#402060", "#d0b0e0", "rectangle");
  draw(Square2d<omReal64>(Point(14.5, 8), 1.3, 0.8), "#206060", "#b0e0e0", "square");
  draw(Parabola2d(Point(9, 12), Line2d(11, 1.5707963267948966)), "crimson", "none", "parabola");
  draw(Line2d(10.2, 1.45), "gray", "none", "line");
  draw(Segment2d<omReal64>(1, 11, 5, 14), "navy", "none", "segment");
  draw(PointCloud2d<omReal64>({{13, 12}, {14, 13.5}, {15, 12.2}, {16, 14}, {16.5, 12.6}}), "teal", "none", "points");
  if (const BoolResult drawn = picture.draw(Vector2d(3, 0.6), Point(6, 4.7)); !drawn) return 1;

  const BoolResult written = picture.write("entities.svg");
  if (!written) std::cerr << written.getMessage() << '\n';
  return written ? 0 : 1;
}

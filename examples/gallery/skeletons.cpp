// The skeleton of a polygon with a hole, coloured by the width of the region, and circles that touch its boundary.
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <boost/smart_ptr/make_shared_object.hpp>

int main() {
  using namespace ormix;
  using namespace ormix::geom;

  PolygonWithHoles2d<double> key;
  fromString(key.getExteriorPolygon(),
             "0 20, 4 8, 14 1, 26 1, 36 8, 40 16, 96 17, 96 4, 104 4, 104 13, 110 13, 110 2, 120 2, 120 25, 40 26,"
             "36 34, 26 40, 14 40, 4 33");
  const auto hole = boost::make_shared<PolygonWithHoles2d<double>>();
  hole->getExteriorPolygon().setPolygon2dType(eP2DT_Interior);
  fromString(hole->getExteriorPolygon(), "10 20, 14 28, 24 29, 29 21, 24 12, 15 12");
  key.getPolygonHoles().push_back(hole);

  // Without the branches that reach into each corner by less than 2.
  const Skeleton2d skeleton = pruneSkeleton(computeSkeleton(key), 2);
  SvgWriter picture(640);
  picture.draw(key, {"#2f4858", "#eef2f5", 1.5, ""});
  drawSkeleton(picture, skeleton, {3, 6, 12});  // lines of 3 pixels, a circle every 6 units
  return picture.write("skeletons.svg") ? 0 : 1;
}

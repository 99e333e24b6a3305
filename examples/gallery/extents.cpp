// How large an outline is: its smallest circle and rectangle, the largest circle inside, least and greatest diameter.
#include <ORMIXGeometry/ORMIXGeometry.h>

int main() {
  using namespace ormix::geom;

  Polygon2d<double> leaf;
  fromString(leaf, "0 0, 9 -5, 21 -7, 30 -4, 36 -9, 45 -6, 52 2, 62 6, 57 14, 47 14, 41 21, 31 17, 22 22, 15 14, 5 12");

  const Circle2d<double> around = MinEnclosingCircleTransform2d::minEnclosingCircle(leaf);
  const Rectangle2d<double> box = smallestRectangle(leaf);
  const Circle2d<double> inside = largestInscribedCircle(leaf);
  const ormix::FeretDiameter greatest = greatestFeretDiameter(leaf), least = leastFeretDiameter(leaf);

  SvgWriter picture(560);
  picture.draw(around, {"#1f78b4", "none", 1.5, ""});
  picture.draw(box, {"#e0a000", "none", 1.5, ""});
  picture.draw(leaf, {"#2f4858", "#d8e8d0", 2, ""});
  picture.draw(inside, {"#1f78b4", "#bcd9ec", 1.5, ""});
  for (const ormix::FeretDiameter& diameter : {greatest, least})
    picture.draw(Segment2d<double>(diameter.from.x, diameter.from.y, diameter.to.x, diameter.to.y),
                 {"#c8402f", "none", 2, ""});
  return picture.write("extents.svg") ? 0 : 1;
}

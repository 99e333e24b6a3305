// Two outlines: where they are nearest to each other (red), and where one is farthest from the other (yellow).
#include <ORMIXGeometry/ORMIXGeometry.h>

int main() {
  using namespace ormix::geom;

  Polygon2d<double> island, coast;
  fromString(island, "2 4, 8 1, 15 3, 19 9, 16 15, 12 11, 8 17, 3 13, 5 9");
  fromString(coast, "20 0, 40 0, 42 22, 6 26, 10 21, 17 22, 22 17, 25 10, 21 6");
  const Ellipse2d<double> buoy({33, 11}, 4, 2, 0.6);

  const PlanarNearestPoints nearest = nearestPoints(island, coast);
  const PlanarHausdorff farthest = directedHausdorff(island, coast);
  const PlanarNearestPoints toShore = nearestPoints(buoy, coast, eIP_Boundary);  // it lies inside

  SvgWriter picture(640);
  picture.draw(coast, {"#2f4858", "#d8e8d0", 1.5, ""});
  picture.draw(island, {"#2f4858", "#f3ead9", 1.5, ""});
  picture.draw(buoy, {"#2f4858", "#bcd9ec", 1.5, ""});
  picture.draw(Segment2d<double>(nearest.onA, nearest.onB), {"#c8402f", "none", 3, ""});
  picture.draw(Segment2d<double>(toShore.onA, toShore.onB), {"#c8402f", "none", 3, ""});
  picture.draw(Segment2d<double>(farthest.onA, farthest.onB), {"#e0a000", "none", 3, ""});
  return picture.write("distances.svg") ? 0 : 1;
}

// How round a profile is: the two circles with a common centre, as near to each other as can be, between which all
// points lie (blue), and the points that touch them (red); the deviations are drawn fifty times as large.
#include <ORMIXGeometry/ORMIXGeometry.h>

#include <cmath>

int main() {
  using namespace ormix::geom;

  // A bore of radius 10 with three and eleven waves.
  std::vector<Point2dData<double>> points;
  for (int i = 0; i < 360; ++i) {
    const double angle = 0.0174533 * i;
    const double radius = 10 + 0.02 * std::sin(3 * angle) + 0.012 * std::sin(11 * angle + 1);
    points.emplace_back(radius * std::cos(angle), radius * std::sin(angle));
  }

  ormix::FormDeviation form;
  if (!ormix::roundness(toSamples(points), ormix::eFR_MinimumZone, form)) return 1;
  const FormZone<Circle2d<double>> zone = zoneOfCircle(form);

  // Where a point is drawn: fifty times as far from the middle of the zone.
  const Point2dData<double> center = zone.reference.center();
  const double middle = zone.reference.getRadius();
  const auto enlarged = [middle](double radius) { return middle + 50 * (radius - middle); };
  const auto place = [&](const Point2dData<double>& point) {
    const double x = point.getX() - center.getX(), y = point.getY() - center.getY();
    const double factor = enlarged(std::hypot(x, y)) / std::hypot(x, y);
    return Point2dData<double>(factor * x, factor * y);
  };
  SvgWriter picture(480);
  for (const double radius : {zone.inner.getRadius(), zone.outer.getRadius()})
    picture.draw(Circle2d<double>({0, 0}, enlarged(radius)), {"#1f78b4", "none", 2, ""});
  Polygon2d<double> profile;
  for (const auto& point : points) profile.getPointColl().push_back(place(point));
  profile.getPointColl().push_back(place(points.front()));
  picture.draw(profile, {"#2f4858", "none", 1.5, ""});
  for (const int side : {1, -1})
    for (const auto& contact : form.contacts)
      if (contact.side == side) picture.draw(Point2d<double>(place(points[contact.index])), {"#c8402f", "none", 3, ""});
  return picture.write("fit_form.svg") ? 0 : 1;
}

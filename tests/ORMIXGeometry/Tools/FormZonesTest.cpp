#include <ORMIXGeometry/Tools/Form/FormZones.h>

#include <vector>

#include "support/Checks.h"
#include "support/Random.h"

namespace ormix::geom {
namespace {

TEST(FormZones, HoldAllPointsAndPassTheirContacts) {
  support::Random draw(1401);
  FormDeviation form;
  for (int trial = 0; trial < 100; ++trial) {
    std::vector<omReal64> xy, xyz;
    for (int i = 0; i < 30; ++i) {
      const omReal64 turn = 4 * draw.uniform(), radius = 5 + 0.1 * draw.uniform(), z = draw.uniform();
      xy.insert(xy.end(), {3 + radius * std::cos(turn), radius * std::sin(turn) - 2});
      const omReal64 across = radius * std::sqrt(1 - z * z);
      xyz.insert(xyz.end(), {across * std::cos(turn), across * std::sin(turn), radius * z});
    }
    const SampleView planar{xy.data(), 30, 2}, spatial{xyz.data(), 30, 3};
    // The distances of each point from the zone's elements: not negative from the inner one outwards, 0 at contacts.
    const auto check = [&](const auto& toInner, const auto& toOuter) {
      for (std::size_t i = 0; i < 30; ++i) {
        EXPECT_GE(toInner(i), -1e-12);
        EXPECT_LE(toOuter(i), 1e-12);
      }
      for (const FormContact& contact : form.contacts)
        EXPECT_NEAR(contact.side > 0 ? toOuter(contact.index) : toInner(contact.index), 0, 1e-9);
    };
    ASSERT_TRUE(roundness(planar, eFR_MinimumZone, form));
    const auto circles = zoneOfCircle(form);
    EXPECT_NEAR(circles.reference.getRadius(), (circles.inner.getRadius() + circles.outer.getRadius()) / 2, 1e-12);
    const auto fromCircle = [&](const Circle2d<omReal64>& circle, std::size_t i) {
      return std::hypot(xy[2 * i] - circle.centerX(), xy[2 * i + 1] - circle.centerY()) - circle.getRadius();
    };
    check([&](std::size_t i) { return fromCircle(circles.inner, i); },
          [&](std::size_t i) { return fromCircle(circles.outer, i); });
    ASSERT_TRUE(planarStraightness(planar, eFR_MinimumZone, form));
    const auto lines = zoneOfLine(form);
    const auto fromLine = [&](const Line2d& line, std::size_t i) {
      // Lines may have turned their normals.
      const omReal64 x = line.getCosTheta(), y = line.getSinTheta();
      const omReal64 sign = x * -form.direction.y + y * form.direction.x > 0 ? 1 : -1;
      return sign * (xy[2 * i] * x + xy[2 * i + 1] * y - line.getRho());
    };
    check([&](std::size_t i) { return fromLine(lines.inner, i); },
          [&](std::size_t i) { return fromLine(lines.outer, i); });
    ASSERT_TRUE(flatness(spatial, eFR_MinimumZone, form));
    const auto plans = zoneOfPlane(form);
    const auto fromPlan = [&](const Plan3d& plan, std::size_t i) {
      const omReal64 x = plan.getSinTheta() * plan.getCosPhi(), y = plan.getSinTheta() * plan.getSinPhi();
      const omReal64 z = plan.getCosTheta();
      const omReal64 sign = x * form.direction.x + y * form.direction.y + z * form.direction.z > 0 ? 1 : -1;
      return sign * (xyz[3 * i] * x + xyz[3 * i + 1] * y + xyz[3 * i + 2] * z - plan.getRho());
    };
    check([&](std::size_t i) { return fromPlan(plans.inner, i); },
          [&](std::size_t i) { return fromPlan(plans.outer, i); });
    ASSERT_TRUE(sphericity(spatial, eFR_MinimumZone, form));
    const auto spheres = zoneOfSphere(form);
    EXPECT_NEAR(spheres.outer.getRadius() - spheres.inner.getRadius(), form.deviation, 1e-12);
    // Points around an upright axis, measured somewhere else: the ends are where they end.
    std::vector<omReal64> tube = xyz;
    for (std::size_t i = 0; i < 30; ++i) {
      tube[3 * i] = xy[2 * i];
      tube[3 * i + 1] = xy[2 * i + 1];
    }
    const SampleView around{tube.data(), 30, 3};
    ASSERT_TRUE(cylindricity(around, eFR_MinimumZone, form));
    const auto cylinders = zoneOfCylinder(form, around);
    const Point3dData<omReal64> start = cylinders.outer.getPoint0(), along = cylinders.outer.getAxis();
    const auto footOf = [&](std::size_t i) {
      const Point3dData<omReal64> p = (Point3dData<omReal64>(tube[3 * i], tube[3 * i + 1], tube[3 * i + 2]) - start);
      return p.getX() * along.getX() + p.getY() * along.getY() + p.getZ() * along.getZ();
    };
    const auto fromCylinder = [&](const Cylinder3d<omReal64>& cylinder, std::size_t i) {
      const Point3dData<omReal64> p(tube[3 * i], tube[3 * i + 1], tube[3 * i + 2]);
      const Point3dData<omReal64> off = p - start - footOf(i) * along;
      return std::hypot(off.getX(), off.getY(), off.getZ()) - cylinder.getRadius();
    };
    check([&](std::size_t i) { return fromCylinder(cylinders.inner, i); },
          [&](std::size_t i) { return fromCylinder(cylinders.outer, i); });
    omReal64 least = 1e9, most = -1e9;
    for (std::size_t i = 0; i < 30; ++i) {
      least = std::min(least, footOf(i));
      most = std::max(most, footOf(i));
    }
    EXPECT_NEAR(least, 0, 1e-12);
    EXPECT_NEAR(most, cylinders.inner.getHeight(), 1e-12);
  }
}

}  // namespace
}  // namespace ormix::geom

#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>

#include <optional>
#include <variant>
#include <vector>

namespace ormix::geom {

using SvgPoint = Point2dData<omReal64>;

/// Polylines that make one path; one that ends where it starts is closed.
struct SvgPath {
  std::vector<std::vector<SvgPoint>> runs;
};
struct SvgDots {
  std::vector<SvgPoint> points;
};
/// Radius a along the angle theta, b across it, both not negative.
struct SvgEllipse {
  SvgPoint center;
  omReal64 a;
  omReal64 b;
  omReal64 theta;
};
/// { point + t·direction }, the direction of length 1.
struct SvgLine {
  SvgPoint point;
  SvgPoint direction;
};
/// { vertex + t·across + t²/(4·focalLength)·axis }, axis and across (its left normal) of length 1, focalLength > 0.
struct SvgParabola {
  SvgPoint vertex;
  SvgPoint axis;
  omReal64 focalLength;
};

/// What is drawn of an entity, in the entity's coordinates.
using SvgShape = std::variant<SvgPath, SvgDots, SvgEllipse, SvgLine, SvgParabola>;

/// The shape of an entity of any planar class, or nothing where the class is not known. The time of a copy of it.
std::optional<SvgShape> svgShape(const BaseGeometryEntity2d& entity);
SvgShape svgArrow(const Vector2d& vector, const SvgPoint& anchor);

/// Grows with the points it is shown; NaN and infinities make it not finite.
class SvgExtent {
 public:
  void add(const SvgPoint& point);
  void add(const SvgShape& shape);
  bool isEmpty() const { return !_seen; }
  bool isFinite() const;

  omReal64 xMin = 0;
  omReal64 yMin = 0;
  omReal64 xMax = 0;
  omReal64 yMax = 0;

 private:
  bool _seen = false;
  bool _finite = true;
};

/// Whether the shape goes on for ever.
bool isEndless(const SvgShape& shape);

}  // namespace ormix::geom

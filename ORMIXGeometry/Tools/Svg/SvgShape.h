#pragma once

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/2d/Point/Point2dData.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace ormix::geom::detail {

using SvgPoint = Point2dData<omReal64>;     ///< a point in the coordinates of the entity or in pixels
using SvgBezier = std::array<SvgPoint, 3>;  ///< start, control and end point of a quadratic Bézier curve

/// Polylines that form one path.
struct SvgPath {
  std::vector<std::vector<SvgPoint>> runs;  ///< vertices; a polyline that ends where it starts is closed
};
/// Segments and arcs of parabolas; of a segment, the control point is in the middle.
struct SvgCurves {
  std::vector<SvgBezier> curves;
};
/// Points drawn as dots.
struct SvgDots {
  std::vector<SvgPoint> points;  ///< centres of the dots
};
/// An ellipse or circle.
struct SvgEllipse {
  SvgPoint center;  ///< centre
  omReal64 a;       ///< radius in the direction theta, not negative
  omReal64 b;       ///< radius across it, not negative
  omReal64 theta;   ///< angle from the x axis, in radians
};
/// An arc of a circle.
struct SvgArc {
  SvgPoint center;  ///< centre
  omReal64 radius;  ///< not negative
  omReal64 start;   ///< angle of its start from the x axis, in radians
  omReal64 sweep;   ///< angle from there, at most a full turn in either direction
};
/// An image that fills a box, its first row at the upper edge of the picture.
struct SvgImage {
  SvgPoint low;           ///< corner of the box with the smallest coordinates
  SvgPoint high;          ///< corner of the box with the largest coordinates
  std::string mediaType;  ///< as "image/png"
  std::string base64;     ///< the bytes of its file
};
/// The unbounded line { point + t·direction }.
struct SvgLine {
  SvgPoint point;      ///< a point of the line
  SvgPoint direction;  ///< of length 1
};
/// The unbounded parabola { vertex + t·across + t²/(4·focalLength)·axis }, where `across` is the left normal of `axis`.
struct SvgParabola {
  SvgPoint vertex;       ///< vertex
  SvgPoint axis;         ///< direction from the vertex to the focus, of length 1
  omReal64 focalLength;  ///< distance from the vertex to the focus, positive
};

/// The curve, region or points that are drawn for an entity, in the coordinates of the entity.
using SvgShape = std::variant<SvgPath, SvgCurves, SvgDots, SvgEllipse, SvgArc, SvgImage, SvgLine, SvgParabola>;

/// The shape of an entity of any planar class; nothing when its class is not supported. Linear in its points.
std::optional<SvgShape> svgShape(const BaseGeometryEntity2d& entity);
/// An arrow from the anchor to the anchor plus the vector, with a head.
SvgShape svgArrow(const Vector2d& vector, const SvgPoint& anchor);

/// The squares of pixels, the pixels of a run as one rectangle.
SvgShape svgPixels(const RowIntersections& pixels);
/// The image of a file; nothing when its bytes begin neither as those of PNG nor as those of JPEG.
std::optional<SvgShape> svgImage(std::string_view file, const SvgPoint& low, const SvgPoint& high);

/// The bounding box of points and shapes.
class SvgExtent {
 public:
  /// Extends the box to contain a point, or a shape. Of an unbounded shape only some points count: vertex and focus of
  /// a parabola, a point within a unit of `point` of a line.
  /// @{
  void add(const SvgPoint& point);
  void add(const SvgShape& shape);
  /// @}
  /// Whether nothing was added; the box is then meaningless.
  bool isEmpty() const { return !_seen; }
  /// False when a coordinate that was added was NaN or infinite.
  bool isFinite() const;

  omReal64 xMin = 0;  ///< smallest x
  omReal64 yMin = 0;  ///< smallest y
  omReal64 xMax = 0;  ///< largest x
  omReal64 yMax = 0;  ///< largest y

 private:
  bool _seen = false;
  bool _finite = true;
};

/// Whether the shape is unbounded: a line or a parabola.
bool isEndless(const SvgShape& shape);

}  // namespace ormix::geom::detail

#pragma once

#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <iosfwd>
#include <memory>
#include <string>

namespace ormix::geom {

/// How an entity is drawn. Colours are anything SVG takes ("navy", "#4080c0", "none"); the width is in pixels of the
/// picture, whatever the scale of the drawing.
struct SvgStyle {
  std::string stroke = "black";
  std::string fill = "none";
  omReal64 width = 1;
  std::string label;
};

/// Draws planar entities as an SVG picture. The y axis points up, as in the coordinates of the entities. Entities are
/// drawn in the order given, labels above all of them.
///
/// Curves stay curves: circles and ellipses are SVG's own, the arcs of a parabola exact quadratic Béziers. Lines and
/// parabolas, being endless, are clipped to the view. A polygon is drawn as stored: its outline is closed where the
/// ring is, its fill is the region either way; holes are left out by the even-odd rule. Negative radii and half sizes
/// are drawn as their absolute values. Points are dots of two widths' radius in the stroke's colour, vectors are
/// arrows.
///
/// Coordinates are written in pixels, rounded to a thousandth, independent of any locale.
class ORMIX_GEOMETRY_API SvgWriter {
 public:
  /// \param size width or height of the picture in pixels, whichever is larger; must be positive and finite, else 800
  explicit SvgWriter(omReal64 size = 800);
  ~SvgWriter();
  SvgWriter(SvgWriter&&) noexcept;
  SvgWriter& operator=(SvgWriter&&) noexcept;

  /// Shows this part of the plane instead of everything drawn. Fails when the box is empty, inverted or not finite.
  BoolResult setView(const BoundingBox2d<omReal64>& view);

  /// Adds an entity; a vector starts at the origin. Fails, and adds nothing, when a number of the entity or the width
  /// is not finite, when a text is not UTF-8, or when the entity is of a class this writer does not know.
  BoolResult draw(const BaseGeometryEntity2d& entity, const SvgStyle& style = {});
  /// Adds a vector as an arrow that starts at `anchor`.
  BoolResult draw(const Vector2d& vector, const Point2dData<omReal64>& anchor, const SvgStyle& style = {});

  /// Writes the picture: the view set, or what encloses everything drawn with a small margin. Where nothing bounded was
  /// drawn, parabolas count with vertex and focus, lines with their point nearest to the origin. Fails with a message
  /// when the stream or file does not take all of it, as on a full disk, or when the drawing's extent overflows.
  BoolResult write(std::ostream& stream) const;
  BoolResult write(const std::string& path) const;

 private:
  struct Drawing;
  std::unique_ptr<Drawing> _drawing;
};

}  // namespace ormix::geom

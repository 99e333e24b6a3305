#pragma once

#include <ORMIXGeometry/Entity/2d/BoundingBox/BoundingBox2d.h>
#include <ORMIXGeometry/Entity/2d/Shape/RowIntersections.h>
#include <ORMIXGeometry/Entity/2d/Vector/Vector2d.h>
#include <ORMIXUtil/ProcessingResult.h>

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

namespace ormix::geom {

/// How an entity is drawn. Colours are those of SVG ("navy", "#4080c0", "none").
struct SvgStyle {
  std::string stroke = "black";  ///< colour of outlines and points
  std::string fill = "none";     ///< colour of the inside
  omReal64 width = 1;            ///< of outlines, in pixels of the picture whatever the scale of the drawing
  std::string label;             ///< text drawn in black on the entity or beside it; none when empty
};

/// The direction of growing y in a picture.
enum eSvgYAxis {
  eSYA_Up,   ///< as in mathematics
  eSYA_Down  ///< as the rows of an image
};

/// Draws planar entities as an SVG picture. The y axis points up unless `setYAxis` turns it. Entities are drawn in the
/// order given, labels above all of them.
///
/// Curves are exact: circles and ellipses are elements of SVG, the arcs of a parabola quadratic Bézier curves. Lines
/// and parabolas are unbounded and clipped to the view. A polygon is drawn as stored: its outline is closed only where
/// the ring is, its fill covers the region in both cases, without the holes (even-odd rule). Negative radii and half
/// sizes are drawn as their absolute values. Points are dots in the colour of the stroke with a radius of two widths,
/// vectors are arrows.
///
/// Labels do not cover each other: each stands in the middle of its entity, else beside that, else farther away with a
/// thin line to it. Those drawn first have the choice. One without room is left out, so is one whose middle lies
/// outside of the view. How wide a text is, is estimated.
///
/// A writer that was moved from is as a new one of 800 pixels.
///
/// Coordinates are written in pixels, rounded to a thousandth, independent of any locale.
class ORMIX_GEOMETRY_API SvgWriter {
 public:
  /// An empty drawing.
  /// \param size the larger of width and height of the picture, in pixels; 800 when not positive or not finite
  explicit SvgWriter(omReal64 size = 800);
  ~SvgWriter();
  /// Moves the drawing; the other writer may then only be destroyed or assigned to.
  /// @{
  SvgWriter(SvgWriter&&) noexcept;
  SvgWriter& operator=(SvgWriter&&) noexcept;
  /// @}

  /// Makes the picture show this part of the plane instead of everything drawn. Fails when the box is inverted, has no
  /// extent on an axis or is not finite.
  BoolResult setView(const BoundingBox2d<omReal64>& view);

  /// Lets the y axis of the whole picture point up or down.
  void setYAxis(eSvgYAxis axis);

  /// Adds a scale bar at the lower left: a round length of up to a quarter of the picture's width.
  /// \param unit the unit of the length, as "mm"
  /// \param length how many of the unit a unit of the coordinates is. Fails when that is not finite and positive, or the
  ///        text is not UTF-8
  BoolResult setScaleBar(const std::string& unit, omReal64 length = 1);

  /// Adds an entity; a vector starts at the origin. Fails, and adds nothing, when a number of the entity or the width
  /// is not finite, when a text is not UTF-8, or when the class of the entity is not supported.
  BoolResult draw(const BaseGeometryEntity2d& entity, const SvgStyle& style = {});
  /// Adds a vector as an arrow that starts at `anchor`.
  BoolResult draw(const Vector2d& vector, const Point2dData<omReal64>& anchor, const SvgStyle& style = {});

  /// Adds pixels as squares of side 1: pixel (x, y) is [x, x + 1) × [y, y + 1).
  BoolResult draw(const RowIntersections& pixels, const SvgStyle& style = {});
  /// Adds an image, which becomes part of the picture; it is drawn with its first row on top, wherever y points.
  /// \param file the bytes of a PNG or JPEG file; fails when they are of another kind
  /// \param box where the image is drawn; for an image of pixels (0, 0) to (width, height)
  BoolResult drawImage(std::string_view file, const BoundingBox2d<omReal64>& box);

  /// Writes the picture to a stream or a file. It shows the view set by `setView`, or the bounding box of everything
  /// drawn with a small margin. If nothing bounded was drawn, parabolas contribute vertex and focus to that box, lines
  /// their point nearest to the origin. Fails with a message when not everything can be written, as on a full disk, or
  /// when the extent of the drawing overflows. An older file is replaced as by `save` of an archive: only when the new
  /// one is complete.
  /// @{
  BoolResult write(std::ostream& stream) const;
  BoolResult write(const std::string& path) const;
  /// @}

 private:
  struct Drawing;
  Drawing& drawing();
  std::unique_ptr<Drawing> _drawing;
};

}  // namespace ormix::geom

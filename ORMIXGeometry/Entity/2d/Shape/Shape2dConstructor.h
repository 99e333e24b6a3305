#pragma once

#include <ORMIXGeometry/Entity/2d/Shape/LabelShapes.h>

#include <memory>

namespace ormix::geom {

/// Makes the connected regions of an image from its rows, which arrive one after the other, so that images need not fit
/// into memory: what is kept are the regions that a later row can still touch, and finished ones that were not taken
/// yet.
class ORMIX_GEOMETRY_API Shape2dConstructor {
 public:
  /// Waits for the first row.
  /// \param tolerance of the polygons, see makeShape()
  explicit Shape2dConstructor(ePixelConnectivity connectivity = ePC_8, omReal64 tolerance = 0);
  ~Shape2dConstructor();
  /// The other constructor is then as after finish().
  /// @{
  Shape2dConstructor(Shape2dConstructor&&) noexcept;
  Shape2dConstructor& operator=(Shape2dConstructor&&) noexcept;
  /// @}

  /// Adds the runs of the row y, in ascending order and without common pixels. Rows that are left out have no pixels.
  /// Amortised nearly linear in the runs of this row and the one before.
  /// \return a failure, with nothing changed, if y is not above the rows added before, if runs are empty, share pixels or
  /// do not ascend, and after finish()
  /// @{
  BoolResult addRow(omUInt64 y, const RowIntersections::RunColl& runs);
  BoolResult addRow(omUInt64 y, const RowIntersections::Row& runs);
  /// @}

  /// The regions that no later row can touch and that were not taken before, in the order of their first pixels.
  /// \throw ORMIXGeometryException, logged, after finish(), and where makeShape() refuses a region
  Shape2dPtrColl takeFinished();

  /// All regions that were not taken yet, in the order of their first pixels; nothing can be added after that.
  /// \throw ORMIXGeometryException, logged, as takeFinished()
  Shape2dPtrColl finish();

 private:
  struct State;
  std::unique_ptr<State> _state;
};

}  // namespace ormix::geom

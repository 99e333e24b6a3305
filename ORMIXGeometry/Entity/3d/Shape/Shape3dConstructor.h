#pragma once

#include <ORMIXGeometry/Entity/3d/Shape/LabelShapes3d.h>

#include <memory>

namespace ormix::geom {

/// Makes the connected regions of a volume from its slices, which arrive one after the other, so that volumes need not
/// fit into memory: what is kept are the last slice, the regions that a later slice can still touch, and finished ones
/// that were not taken yet.
class ORMIX_GEOMETRY_API Shape3dConstructor {
 public:
  /// Waits for the first slice.
  explicit Shape3dConstructor(eVoxelConnectivity connectivity = eVC_26, eShapeSurface surface = eSS_None);
  ~Shape3dConstructor();
  /// The other constructor is then as after finish().
  /// @{
  Shape3dConstructor(Shape3dConstructor&&) noexcept;
  Shape3dConstructor& operator=(Shape3dConstructor&&) noexcept;
  /// @}

  /// Adds the slice z. Slices that are left out have no voxels. Amortised nearly linear in the runs and rows of this
  /// slice and the one before.
  /// \return a failure, with nothing changed, if z is not above the slices added before or is the largest number there
  /// is, and after finish()
  BoolResult addSlice(omUInt64 z, const RowIntersections& slice);

  /// The regions that no later slice can touch and that were not taken before, in the order of their first voxels.
  /// \throw ORMIXGeometryException, logged, after finish(), and where makeShape() refuses a region
  Shape3dPtrColl takeFinished();

  /// All regions that were not taken yet, in the order of their first voxels; nothing can be added after that.
  /// \throw ORMIXGeometryException, logged, as takeFinished()
  Shape3dPtrColl finish();

 private:
  struct State;
  std::unique_ptr<State> _state;
};

}  // namespace ormix::geom

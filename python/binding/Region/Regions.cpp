#include "Regions.h"

#include "../Frame/Enumerations.h"

#include <ORMIXGeometry/Entity/2d/Shape/PixelConnectivity.h>
#include <ORMIXGeometry/Entity/3d/Shape/VoxelConnectivity.h>

namespace ormix::python {

void bindRegions(py::module_& module) {
  bindEnumeration<geom::ePixelConnectivity>(module,
                                            "Which pixels are neighbours: 4 or 8 of them, the background the other.");
  bindEnumeration<geom::eVoxelConnectivity>(module,
                                            "Which voxels are neighbours: 6 or 26 of them, the background the other.");
  // Voxels come before pixels, which take arrays of any dimensions and say what is wrong with them.
  bindVolumes(module);
  bindMasks(module);
  bindPixelSets(module);
  bindLabels(module);
  bindContours(module);
  bindConstructors(module);
  bindPerimeters(module);
  bindRegionProperties(module);
}

}  // namespace ormix::python

#include "Entity/Entities.h"
#include "Estimation/Estimators.h"
#include "Frame/Errors.h"
#include "Frame/Instances.h"
#include "Frame/Object.h"
#include "Measure/Measures.h"
#include "Region/Regions.h"
#include "Tools/MeshTools.h"
#include "Tools/Tools.h"
#include "Transform/Transforms.h"

PYBIND11_MODULE(_core, module) {
  using namespace ormix::python;
  module.doc() = "Typed planar and spatial geometry for image analysis and metrology.";
  module.attr("__version__") = ORMIX_VERSION;
  bindErrors(module);
  bindObjects(module);
  bindEntities2d(module);
  bindEntities3d(module);
  bindRegions(module);
  bindContact(module);
  bindDistance(module);
  bindExtent(module);
  bindForm(module);
  bindLocation(module);
  bindRTree(module);
  bindSkeleton(module);
  bindSvg(module);
  bindHtml(module);
  bindMoments(module);
  bindMeasures(module);
  bindTransforms(module);
  bindFitReports(module);
  bindEstimators(module);
  bindFits(module);
  bindUncertainties(module);
  bindRobustEstimation(module);
  bindMeshTools(module);
  requireConstruction(module);
}

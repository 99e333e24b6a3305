#include "LinearTransforms.h"
#include "Transforms.h"

#include <ORMIXGeometry/Transform/3d/AnisotropicScaleTransform3d.h>
#include <ORMIXGeometry/Transform/3d/HomographyTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RigidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RotationTransform3d.h>
#include <ORMIXGeometry/Transform/3d/ScaleTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SimilarityTransform3d.h>
#include <ORMIXGeometry/Transform/3d/TranslationTransform3d.h>

namespace ormix::python {

void bindLinearTransforms3d(py::module_& module) {
  using namespace geom;
  using Space = SpatialTransforms;
  LinearClass<TranslationTransform3d, Space>(module, "TranslationTransform3d",
                                             "Shifts spatial entities by (tx, ty, tz).\n\n"
                                             ">>> TranslationTransform3d(1, 2, 3) @ (0, 0, 0)\n"
                                             "(1.0, 2.0, 3.0)")
      .parameters("tx", "ty", "tz");
  LinearClass<RotationTransform3d, Space>(
      module, "RotationTransform3d",
      "Rotates spatial entities about the origin by Rz(alpha) Ry(beta) Rx(chi), angles in radians.\n\n"
      ">>> (RotationTransform3d(alpha=np.pi / 2) @ np.array([[1, 0, 0]])).round(9).tolist()\n"
      "[[0.0, 1.0, 0.0]]")
      .parameters("alpha", "beta", "chi");
  LinearClass<RigidTransform3d, Space>(
      module, "RigidTransform3d",
      "Rotates spatial entities about the origin by Rz(alpha) Ry(beta) Rx(chi), then shifts them by (tx, ty, tz).\n\n"
      ">>> TranslationTransform3d(tz=2) @ RotationTransform3d(alpha=0.5)\n"
      "RigidTransform3d(alpha=0.5, beta=0.0, chi=0.0, tx=0.0, ty=0.0, tz=2.0)")
      .parameters("alpha", "beta", "chi", "tx", "ty", "tz");
  LinearClass<ScaleTransform3d, Space>(module, "ScaleTransform3d",
                                       "Scales spatial entities about the origin.\n\n"
                                       ">>> ScaleTransform3d(4).inverse()\n"
                                       "ScaleTransform3d(scale=0.25)")
      .parameters("scale");
  LinearClass<SimilarityTransform3d, Space>(
      module, "SimilarityTransform3d",
      "Rotates spatial entities about the origin by Rz(alpha) Ry(beta) Rx(chi) and scales them, then shifts them.\n\n"
      ">>> SimilarityTransform3d(scale=2, tx=1) @ (1, 2, 3)\n"
      "(3.0, 4.0, 6.0)")
      .parameters("scale", "alpha", "beta", "chi", "tx", "ty", "tz");
  LinearClass<AnisotropicScaleTransform3d, Space>(
      module, "AnisotropicScaleTransform3d",
      "Scales spatial entities about the origin by one factor along each axis. A sphere becomes an ellipsoid.\n\n"
      ">>> AnisotropicScaleTransform3d(sz=2) @ (1, 2, 3)\n"
      "(1.0, 2.0, 6.0)")
      .parameters("sx", "sy", "sz");
  LinearClass<HomographyTransform3d, Space>(
      module, "HomographyTransform3d",
      "Maps spatial entities by the projective map of a matrix of shape (4, 4).\n\n"
      ">>> HomographyTransform3d(np.diag([1, 1, 1, 2])) @ (2, 4, 6)\n"
      "(1.0, 2.0, 3.0)")
      .matrixParameter();
}

}  // namespace ormix::python

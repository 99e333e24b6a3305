#include "LinearTransforms.h"
#include "Transforms.h"

#include <ORMIXGeometry/Transform/2d/AnisotropicScaleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/HomographyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RigidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RotationTransform2d.h>
#include <ORMIXGeometry/Transform/2d/ScaleTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimilarityTransform2d.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>

namespace ormix::python {

void bindLinearTransforms2d(py::module_& module) {
  using namespace geom;
  using Space = PlanarTransforms;
  LinearClass<TranslationTransform2d, Space>(module, "TranslationTransform2d",
                                             "Shifts planar entities by (tx, ty).\n\n"
                                             ">>> TranslationTransform2d(tx=3) @ og.Circle2d(center=(1, 2), radius=3)\n"
                                             "Circle2d(center=(4.0, 2.0), radius=3.0)\n"
                                             ">>> TranslationTransform2d(1, 2) @ [[0, 0], [5, 5]]\n"
                                             "array([[1., 2.],\n"
                                             "       [6., 7.]])")
      .parameters("tx", "ty");
  LinearClass<RotationTransform2d, Space>(module, "RotationTransform2d",
                                          "Rotates planar entities about the origin by theta radians.\n\n"
                                          ">>> RotationTransform2d(theta=0.5).inverse()\n"
                                          "RotationTransform2d(theta=-0.5)")
      .parameters("theta");
  LinearClass<RigidTransform2d, Space>(
      module, "RigidTransform2d",
      "Rotates planar entities about the origin by theta radians, then shifts them by (tx, ty).\n\n"
      ">>> TranslationTransform2d(1, 2) @ RotationTransform2d(0.5)\n"
      "RigidTransform2d(theta=0.5, tx=1.0, ty=2.0)")
      .parameters("theta", "tx", "ty");
  LinearClass<ScaleTransform2d, Space>(module, "ScaleTransform2d",
                                       "Scales planar entities about the origin.\n\n"
                                       ">>> ScaleTransform2d(2) @ og.Circle2d(center=(1, 2), radius=3)\n"
                                       "Circle2d(center=(2.0, 4.0), radius=6.0)")
      .parameters("scale");
  LinearClass<SimilarityTransform2d, Space>(
      module, "SimilarityTransform2d",
      "Rotates planar entities about the origin by theta radians and scales them, then shifts them by (tx, ty).\n\n"
      ">>> SimilarityTransform2d(scale=2, tx=1) @ (3, 4)\n"
      "(7.0, 8.0)")
      .parameters("scale", "theta", "tx", "ty");
  LinearClass<AnisotropicScaleTransform2d, Space>(
      module, "AnisotropicScaleTransform2d",
      "Scales planar entities about the origin, by sx along x and sy along y. A circle becomes an ellipse.\n\n"
      ">>> AnisotropicScaleTransform2d(sx=2, sy=3) @ ScaleTransform2d(2)\n"
      "AnisotropicScaleTransform2d(sx=4.0, sy=6.0)")
      .parameters("sx", "sy");
  LinearClass<HomographyTransform2d, Space>(
      module, "HomographyTransform2d",
      "Maps planar entities by the projective map of a matrix of shape (3, 3): (x, y) to (u/w, v/w) with (u, v, w) =\n"
      "matrix @ (x, y, 1).\n\n"
      ">>> HomographyTransform2d([[1, 0, 0], [0, 1, 0], [0, 1, 1]]) @ (4, 1)\n"
      "(2.0, 0.5)")
      .matrixParameter();
}

}  // namespace ormix::python

#include "../Frame/Arrays.h"
#include "../Frame/Enumerations.h"
#include "../Frame/Errors.h"
#include "Transforms.h"

#include <ORMIXGeometry/Transform/2d/GeometryTransform2dUtils.h>
#include <ORMIXGeometry/Transform/3d/GeometryTransform3dUtils.h>
#include <ORMIXMath/Transform/2d/Affine2d.h>
#include <ORMIXMath/Transform/2d/AnisotropicScale2d.h>
#include <ORMIXMath/Transform/2d/Homography2d.h>
#include <ORMIXMath/Transform/2d/Rigid2d.h>
#include <ORMIXMath/Transform/2d/Rotation2d.h>
#include <ORMIXMath/Transform/2d/Scale2d.h>
#include <ORMIXMath/Transform/2d/Similarity2d.h>
#include <ORMIXMath/Transform/2d/Translation2d.h>
#include <ORMIXMath/Transform/3d/Affine3d.h>
#include <ORMIXMath/Transform/3d/AnisotropicScale3d.h>
#include <ORMIXMath/Transform/3d/Homography3d.h>
#include <ORMIXMath/Transform/3d/Rigid3d.h>
#include <ORMIXMath/Transform/3d/Rotation3d.h>
#include <ORMIXMath/Transform/3d/Scale3d.h>
#include <ORMIXMath/Transform/3d/Similarity3d.h>
#include <ORMIXMath/Transform/3d/Translation3d.h>

#include <boost/numeric/ublas/vector.hpp>
#include <cmath>

namespace ormix::python {
namespace {

using PlanarMaps = geom::ClassList<Translation2d, Rotation2d, Rigid2d, Scale2d, Similarity2d, AnisotropicScale2d,
                                   Affine2d, Homography2d>;
using SpatialMaps = geom::ClassList<Translation3d, Rotation3d, Rigid3d, Scale3d, Similarity3d, AnisotropicScale3d,
                                    Affine3d, Homography3d>;

// The transform of entities of this kind and with these parameters.
template <class Maps, class TransformPtr, class Type>
TransformPtr convertKind(Type type, const py::object& values) {
  const auto numbers = numbersOf<omReal64>(values, "params");
  RealVector params(static_cast<std::size_t>(numbers.size()));
  std::copy_n(numbers.data(), params.size(), params.begin());
  for (const omReal64 number : params)
    if (!std::isfinite(number)) throw py::value_error("params: " + std::to_string(number) + " is not a finite number");
  TransformPtr converted;
  geom::forEachClass(Maps(), [&](auto tag) {
    typename decltype(tag)::Type map;
    if (map.getType() != type) return;
    check(map.setParams(params), toString(type), "params");
    converted = geom::convert(map);
  });
  return converted;
}

}  // namespace

void bindConvert(py::module_& module) {
  bindEnumeration<eGeometricTransform2dType>(module, "Kinds of transforms of the plane, for `convert()`.");
  bindEnumeration<eGeometricTransform3dType>(module, "Kinds of transforms of space, for `convert()`.");
  const char* const doc =
      "The transform of entities of a kind with the given parameters, in the order of the class's constructor.\n\n"
      "Error for an affine transform, which entities have none of, and for another number of parameters.\n\n"
      ">>> og.convert(\"eGT2DT_Rigid\", [0.5, 1, 2])\n"
      "RigidTransform2d(theta=0.5, tx=1.0, ty=2.0)";
  module.def("convert", &convertKind<PlanarMaps, geom::GeometryTransform2dPtr, eGeometricTransform2dType>, "type"_a,
             "params"_a, doc);
  module.def("convert", &convertKind<SpatialMaps, geom::GeometryTransform3dPtr, eGeometricTransform3dType>, "type"_a,
             "params"_a);
}

}  // namespace ormix::python

#pragma once

#include <ORMIXGeometry/Enumeration.h>

namespace ormix::geom {

/// Kinds of transforms of spatial entities. No transform is of the kind eT3DT_Simplify, which keeps the numbers those
/// of the plane.
enum eTransform3dType {
  eT3DT_Translation,
  eT3DT_Rotation,
  eT3DT_Scale,
  eT3DT_AnisotropicScale,
  eT3DT_RigidTransform,
  eT3DT_SimilarityTransform,
  eT3DT_HomographyTransform,
  eT3DT_Centroid,
  eT3DT_ConvexHull,
  eT3DT_Envelope,
  eT3DT_Simplify,
  eT3DT_MinEnclosingSphere
};

}  // namespace ormix::geom

namespace ormix {

template <>
struct EnumerationNames<geom::eTransform3dType> {
  static constexpr std::string_view typeName = "eTransform3dType";
  static constexpr std::array<std::string_view, 12> names{"eT3DT_Translation",
                                                          "eT3DT_Rotation",
                                                          "eT3DT_Scale",
                                                          "eT3DT_AnisotropicScale",
                                                          "eT3DT_RigidTransform",
                                                          "eT3DT_SimilarityTransform",
                                                          "eT3DT_HomographyTransform",
                                                          "eT3DT_Centroid",
                                                          "eT3DT_ConvexHull",
                                                          "eT3DT_Envelope",
                                                          "eT3DT_Simplify",
                                                          "eT3DT_MinEnclosingSphere"};
};

}  // namespace ormix

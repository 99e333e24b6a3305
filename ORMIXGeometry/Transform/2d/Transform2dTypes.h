#pragma once

#include <ORMIXGeometry/Enumeration.h>

namespace ormix::geom {

/// Kinds of transforms of planar entities.
enum eTransform2dType {
  eT2DT_Translation,
  eT2DT_Rotation,
  eT2DT_Scale,
  eT2DT_AnisotropicScale,
  eT2DT_RigidTransform,
  eT2DT_SimilarityTransform,
  eT2DT_HomographyTransform,
  eT2DT_Centroid,
  eT2DT_ConvexHull,
  eT2DT_Envelope,
  eT2DT_Simplify,
  eT2DT_MinEnclosingCircle
};

}  // namespace ormix::geom

namespace ormix {

template <>
struct EnumerationNames<geom::eTransform2dType> {
  static constexpr std::string_view typeName = "eTransform2dType";
  static constexpr std::array<std::string_view, 12> names{"eT2DT_Translation",
                                                          "eT2DT_Rotation",
                                                          "eT2DT_Scale",
                                                          "eT2DT_AnisotropicScale",
                                                          "eT2DT_RigidTransform",
                                                          "eT2DT_SimilarityTransform",
                                                          "eT2DT_HomographyTransform",
                                                          "eT2DT_Centroid",
                                                          "eT2DT_ConvexHull",
                                                          "eT2DT_Envelope",
                                                          "eT2DT_Simplify",
                                                          "eT2DT_MinEnclosingCircle"};
};

}  // namespace ormix

#pragma once

#include <ORMIXUtil/Enumeration.h>

namespace ormix {

/// Kinds of planar transforms.
enum eGeometricTransform2dType {
  eGT2DT_Translation,
  eGT2DT_Rotation,
  eGT2DT_Rigid,
  eGT2DT_Scale,
  eGT2DT_Similarity,
  eGT2DT_AnisotropicScale,
  eGT2DT_Affine,
  eGT2DT_Homography
};

template <>
struct EnumerationNames<eGeometricTransform2dType> {
  static constexpr std::string_view typeName = "eGeometricTransform2dType";
  static constexpr std::array<std::string_view, 8> names{
      "eGT2DT_Translation", "eGT2DT_Rotation",         "eGT2DT_Rigid",  "eGT2DT_Scale",
      "eGT2DT_Similarity",  "eGT2DT_AnisotropicScale", "eGT2DT_Affine", "eGT2DT_Homography"};
};

}  // namespace ormix

#pragma once

#include <ORMIXUtil/Enumeration.h>

namespace ormix {

/// Kinds of spatial transforms.
enum eGeometricTransform3dType {
  eGT3DT_Translation,
  eGT3DT_Rotation,
  eGT3DT_Rigid,
  eGT3DT_Scale,
  eGT3DT_Similarity,
  eGT3DT_AnisotropicScale,
  eGT3DT_Affine,
  eGT3DT_Homography
};

template <>
struct EnumerationNames<eGeometricTransform3dType> {
  static constexpr std::string_view typeName = "eGeometricTransform3dType";
  static constexpr std::array<std::string_view, 8> names{
      "eGT3DT_Translation", "eGT3DT_Rotation",         "eGT3DT_Rigid",  "eGT3DT_Scale",
      "eGT3DT_Similarity",  "eGT3DT_AnisotropicScale", "eGT3DT_Affine", "eGT3DT_Homography"};
};

}  // namespace ormix

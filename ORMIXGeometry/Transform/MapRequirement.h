#pragma once

#include <ORMIXMath/Transform/2d/GeometricTransform2dType.h>
#include <ORMIXMath/Transform/3d/GeometricTransform3dType.h>

#include <type_traits>

namespace ormix::geom {

/// What all maps of a class must preserve of figures for an entity to have an image of its own class.
enum eMapRequirement {
  eMR_StraightLines,  ///< what is straight stays straight
  eMR_Parallels,      ///< and with them ratios along lines
  eMR_Axes,           ///< what is parallel to an axis stays so
  eMR_Angles,         ///< between lines, and with them what is round: all lengths grow by one factor
  eMR_Lengths,        ///< and angles
  eMR_Directions,     ///< up to their sign
  eMR_NotSupported    ///< no map is enough
};

/// Whether all maps of a class, whatever their parameters, preserve what is required. `Math` is a transform of
/// ORMIXMath.
template <class Math>
constexpr bool preserves(eMapRequirement requirement) {
  // The kinds of maps of the plane and of space have the same numbers.
  static_assert(static_cast<int>(eGT2DT_Translation) == static_cast<int>(eGT3DT_Translation) &&
                static_cast<int>(eGT2DT_Homography) == static_cast<int>(eGT3DT_Homography));
  constexpr auto type = static_cast<eGeometricTransform2dType>(Math::s_type);
  constexpr bool isIsometry = type == eGT2DT_Translation || type == eGT2DT_Rotation || type == eGT2DT_Rigid;
  constexpr bool keepsDirections = type == eGT2DT_Translation || type == eGT2DT_Scale;
  switch (requirement) {
    case eMR_StraightLines:
      return true;
    case eMR_Parallels:
      return type != eGT2DT_Homography;
    case eMR_Axes:
      return keepsDirections || type == eGT2DT_AnisotropicScale;
    case eMR_Angles:
      return isIsometry || type == eGT2DT_Scale || type == eGT2DT_Similarity;
    case eMR_Lengths:
      return isIsometry;
    case eMR_Directions:
      return keepsDirections;
    case eMR_NotSupported:
      break;
  }
  return false;
}

namespace detail {
template <class Entity>
constexpr eMapRequirement noMapRequirement() {
  static_assert(sizeof(Entity*) == 0,
                "this entity has no row in the table of LinearTransform2d.h or LinearTransform3d.h: add one that says "
                "what a map must preserve of it, eMR_NotSupported for none, and its rule to the .ipp beside the table");
  return eMR_NotSupported;
}
}  // namespace detail

/// The tables: a row for each entity, in LinearTransform2d.h and LinearTransform3d.h.
template <class Entity>
inline constexpr eMapRequirement s_mapRequirement = detail::noMapRequirement<Entity>();

/// Whether every map of the class gives the entity an image of its own class.
template <class Math, class Entity>
constexpr bool keepsClassOf() {
  if constexpr (std::is_class_v<Entity>)
    return preserves<Math>(s_mapRequirement<Entity>);
  else
    return false;
}

/// Whether the entity is a run of points and little else. Its image is made in one pass: to duplicate it and to map
/// that in place takes up to 1.3 times as long, and 1.6 times beyond the caches.
template <class Entity>
inline constexpr bool s_isRunOfPoints = false;

}  // namespace ormix::geom

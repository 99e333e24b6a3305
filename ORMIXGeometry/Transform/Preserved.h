#pragma once

#include <ORMIXMath/Export.h>

namespace ormix {
class ORMIX_MATH_API AnisotropicScale2d;
class ORMIX_MATH_API AnisotropicScale3d;
class ORMIX_MATH_API Homography2d;
class ORMIX_MATH_API Homography3d;
class ORMIX_MATH_API Rigid2d;
class ORMIX_MATH_API Rigid3d;
class ORMIX_MATH_API Rotation2d;
class ORMIX_MATH_API Rotation3d;
class ORMIX_MATH_API Scale2d;
class ORMIX_MATH_API Scale3d;
class ORMIX_MATH_API Similarity2d;
class ORMIX_MATH_API Similarity3d;
class ORMIX_MATH_API Translation2d;
class ORMIX_MATH_API Translation3d;
}  // namespace ormix

namespace ormix::geom {

/// What a class of linear maps preserves of figures, whatever the parameters.
struct Preserved {
  bool lines;       ///< what is straight stays straight
  bool ratios;      ///< along lines, and with them parallels
  bool axes;        ///< what is parallel to an axis stays so
  bool angles;      ///< between lines, and with them what is round
  bool lengths;     ///< else all grow by one factor, where angles are preserved
  bool directions;  ///< up to their sign
};

// clang-format off
//                                                       lines ratios axes  angles lengths directions
inline constexpr Preserved s_preservedByTranslation      {true, true,  true,  true,  true,  true};
inline constexpr Preserved s_preservedByRotation         {true, true,  false, true,  true,  false};
inline constexpr Preserved s_preservedByScale            {true, true,  true,  true,  false, true};
inline constexpr Preserved s_preservedBySimilarity       {true, true,  false, true,  false, false};
inline constexpr Preserved s_preservedByAnisotropicScale {true, true,  true,  false, false, false};
inline constexpr Preserved s_preservedByHomography       {true, false, false, false, false, false};

template <class Math> inline constexpr Preserved s_preserved{};
template <> inline constexpr Preserved s_preserved<Translation2d>      = s_preservedByTranslation;
template <> inline constexpr Preserved s_preserved<Translation3d>      = s_preservedByTranslation;
template <> inline constexpr Preserved s_preserved<Rotation2d>         = s_preservedByRotation;
template <> inline constexpr Preserved s_preserved<Rotation3d>         = s_preservedByRotation;
template <> inline constexpr Preserved s_preserved<Rigid2d>            = s_preservedByRotation;
template <> inline constexpr Preserved s_preserved<Rigid3d>            = s_preservedByRotation;
template <> inline constexpr Preserved s_preserved<Scale2d>            = s_preservedByScale;
template <> inline constexpr Preserved s_preserved<Scale3d>            = s_preservedByScale;
template <> inline constexpr Preserved s_preserved<Similarity2d>       = s_preservedBySimilarity;
template <> inline constexpr Preserved s_preserved<Similarity3d>       = s_preservedBySimilarity;
template <> inline constexpr Preserved s_preserved<AnisotropicScale2d> = s_preservedByAnisotropicScale;
template <> inline constexpr Preserved s_preserved<AnisotropicScale3d> = s_preservedByAnisotropicScale;
template <> inline constexpr Preserved s_preserved<Homography2d>       = s_preservedByHomography;
template <> inline constexpr Preserved s_preserved<Homography3d>       = s_preservedByHomography;
// clang-format on

/// What a map has to preserve for an entity to have an image of its own class; null for entities that no linear map
/// takes. LinearTransform2d.h and LinearTransform3d.h have the tables.
template <class Entity>
inline constexpr bool Preserved::*s_neededBy = nullptr;

/// Whether every map of the class gives the entity an image of its own class.
template <class Math, class Entity>
constexpr bool keepsClassOf() {
  if constexpr (s_neededBy<Entity> == nullptr)
    return false;
  else
    return s_preserved<Math>.*s_neededBy<Entity>;
}

}  // namespace ormix::geom

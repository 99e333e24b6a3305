#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <iosfwd>

/// \file
/// Macros for explicit instantiations that most class templates of entities need, for the four coordinate types; used
/// at the end of their sources and not installed.

// The output operator.
#define ORMIX_GEOMETRY_INSTANTIATE_PRINT(Class)                                                \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const Class<omInt32>&);  \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const Class<omUInt32>&); \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const Class<omReal32>&); \
  template ORMIX_GEOMETRY_API std::ostream& operator<<(std::ostream&, const Class<omReal64>&);

// cast() to a new object and into an existing one, between all pairs of coordinate types.
#define ORMIX_GEOMETRY_INSTANTIATE_CASTS(Class)          \
  ORMIX_GEOMETRY_INSTANTIATE_CASTS_FROM(Class, omInt32)  \
  ORMIX_GEOMETRY_INSTANTIATE_CASTS_FROM(Class, omUInt32) \
  ORMIX_GEOMETRY_INSTANTIATE_CASTS_FROM(Class, omReal32) \
  ORMIX_GEOMETRY_INSTANTIATE_CASTS_FROM(Class, omReal64)
#define ORMIX_GEOMETRY_INSTANTIATE_CASTS_FROM(Class, TIn)   \
  ORMIX_GEOMETRY_INSTANTIATE_CASTS_OF(Class, omInt32, TIn)  \
  ORMIX_GEOMETRY_INSTANTIATE_CASTS_OF(Class, omUInt32, TIn) \
  ORMIX_GEOMETRY_INSTANTIATE_CASTS_OF(Class, omReal32, TIn) \
  ORMIX_GEOMETRY_INSTANTIATE_CASTS_OF(Class, omReal64, TIn)
#define ORMIX_GEOMETRY_INSTANTIATE_CASTS_OF(Class, TOut, TIn)            \
  template ORMIX_GEOMETRY_API Class<TOut> cast<TOut>(const Class<TIn>&); \
  template ORMIX_GEOMETRY_API void cast(const Class<TIn>&, Class<TOut>&);

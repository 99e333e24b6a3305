#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXUtil/Message/MessageDomain.h>

#include <array>

namespace ormix::geom {

/// Message domain of the tools: ids and texts.
struct ORMIX_GEOMETRY_API eToolsMessage {
  /// Tag whose run-time type name is the name of the domain in the catalogue.
  struct ORMIX_GEOMETRY_API domain {};

  /// Ids of the messages, in the order of `texts`.
  enum eId {
    eTM_ItemNotFinite,     ///< an item of an index with a coordinate that is NaN or infinite
    eTM_NoSuchItem,        ///< the index of an item that was never there
    eTM_ItemRemoved,       ///< the index of an item that is there no more
    eTM_EmptyIndex,        ///< something that an index without items does not have
    eTM_NegativeDistance,  ///< a distance to search within that is negative or NaN
    eTM_NoNeighbours,      ///< the 0 nearest items
    eTM_SearchNotFinite,   ///< a place to search at with a coordinate that is NaN, or infinite where it may not be
    eTM_NoDirection,       ///< a ray whose direction is the zero vector
    eTM_NoPoints,          ///< a distance to what has no points
    eTM_EntityNotFinite,   ///< a distance to what has a coordinate or size that is NaN or infinite
    eTM_NotBounded,        ///< a distance to what is not bounded, where that is not defined
    eTM_NoContact,         ///< a contact of an entity without a boundary
    eTM_RegionNotFinite,   ///< a contact of what has a coordinate that is NaN or infinite
    eTM_NullRegion,        ///< contacts of a collection with a null pointer
    eTM_NoSurface,         ///< a contact of a spatial shape that has voxels only
    eTM_NotNegative,       ///< a number that asks for contacts and is negative, NaN or infinite
    eTM_NoDistance,        ///< a distance to an entity of a class that has none
    eTM_NoFacets,          ///< a Hausdorff distance of what is not made of triangles, edges or points
    eTM_NoDistanceBetween  ///< a distance of entities of two classes for which there is none
  };

  /// The texts by id, with placeholders of Boost.Format; programs may match them, so they do not change.
  static constexpr std::array<MessageText, 19> texts{{
      {eTM_ItemNotFinite, "Item %d of an index has a coordinate that is not finite"},
      {eTM_NoSuchItem, "Item %d is not available, the index has given out %d indices"},
      {eTM_ItemRemoved, "Item %d has been removed from the index"},
      {eTM_EmptyIndex, "An index without items has no %s"},
      {eTM_NegativeDistance, "A distance to search within must be at least 0, %g was given"},
      {eTM_NoNeighbours, "At least 1 nearest item must be asked for, %d were"},
      {eTM_SearchNotFinite, "The %s of a search has a coordinate that is not finite"},
      {eTM_NoDirection, "A ray needs a direction that is not the zero vector"},
      {eTM_NoPoints, "No distance is defined to a %s without points"},
      {eTM_EntityNotFinite, "No distance is defined to a %s with a coordinate or size that is not finite"},
      {eTM_NotBounded, "No distance is defined to a %s, which is not bounded"},
      {eTM_NoContact, "No contact is defined of a %s"},
      {eTM_RegionNotFinite, "No contact is defined of boundaries with a coordinate that is not finite"},
      {eTM_NullRegion, "Region %d of %d regions is null"},
      {eTM_NoSurface, "A shape of %d voxels has no surface to be in contact"},
      {eTM_NotNegative, "The %s of a contact must be finite and at least 0, %g was given"},
      {eTM_NoDistance, "No distance is defined to a %s"},
      {eTM_NoFacets, "No Hausdorff distance is defined of what is not made of triangles, edges or points"},
      {eTM_NoDistanceBetween, "No distance is defined between a %s and a %s"},
  }};

  /// The message catalogue of the library, "ORMIXGeometry".
  static LogMessageManager& manager();
};

}  // namespace ormix::geom

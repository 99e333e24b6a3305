#pragma once

#include "Binding.h"

#include <ORMIXGeometry/Entity/2d/BaseGeometryEntity2d.h>
#include <ORMIXGeometry/Entity/3d/BaseGeometryEntity3d.h>

#include <string>
#include <vector>

namespace ormix::python {

/// An argument that is one entity or an iterable of entities. They live as long as it does, whatever becomes of a list
/// meanwhile. Python computes with many entities in one call by it.
class EntityArgument {
 public:
  /// \param name names the argument in errors
  /// \throw py::type_error for what is neither; of an iterable it names the first element that is no entity
  explicit EntityArgument(const py::handle& argument, const char* name = "entities");

  /// Whether it is one entity and not an iterable.
  bool isOne() const { return _isOne; }
  std::size_t size() const { return _entities.size(); }
  const geom::BaseGeometryEntity& operator[](std::size_t i) const { return *_entities[i]; }

  /// "element 3: " for an element of an iterable, empty for one entity: what messages begin with.
  std::string place(std::size_t i) const;

  /// \throw py::type_error if any is of the other space; the message names it
  void require(geom::eCoordinateDimension dimension) const;

  /// The same entities as shared pointers, all of the plane or of space.
  /// \throw as require()
  /// @{
  geom::GeometryEntity2dPtrColl planar() const;
  geom::GeometryEntity3dPtrColl spatial() const;
  /// @}

 private:
  py::tuple _owners;
  std::vector<const geom::BaseGeometryEntity*> _entities;
  bool _isOne;
};

/// Whether an object is an entity, of the plane or of space.
bool isEntity(const py::handle& object);

}  // namespace ormix::python

#pragma once

namespace ormix::geom::detail {

/// Initial value of a table that must have a row for each entity: a class without a row does not compile.
template <class Entity, class Row>
constexpr Row missingRow() {
  static_assert(sizeof(Entity*) == 0,
                "an entity has no row in this table: state there what is supported of it (see Entity and Row above)");
  return Row{};
}

}  // namespace ormix::geom::detail

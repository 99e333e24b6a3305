#pragma once

namespace ormix::geom::detail {

/// What a table with a row for each entity answers for a class without a row: an error of the compiler.
template <class Entity, class Row>
constexpr Row missingRow() {
  static_assert(sizeof(Entity*) == 0,
                "an entity has no row in this table: state there what is supported of it (see Entity and Row above)");
  return Row{};
}

}  // namespace ormix::geom::detail

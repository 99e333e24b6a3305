#pragma once

#include <array>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>

namespace ormix {

/// The texts of an enumeration whose values count from 0, declared once: a specialisation holds
/// `static constexpr std::string_view typeName` and `static constexpr std::array<std::string_view, N> names`, in order
/// of the values. Printing, archives and messages all take the texts from here.
template <class E>
struct EnumerationNames;

namespace detail {
template <class E, class = void>
struct HasEnumerationNames : std::false_type {};
template <class E>
struct HasEnumerationNames<E, std::void_t<decltype(EnumerationNames<E>::names)>> : std::true_type {};
}  // namespace detail

/// Whether the texts of the enumeration are declared.
template <class E>
inline constexpr bool isNamedEnumeration = detail::HasEnumerationNames<E>::value;

/// The enumerator's name; for a value outside the enumeration its type and number, "ePolygon2dType(7)".
template <class E, std::enable_if_t<isNamedEnumeration<E>, int> = 0>
std::string toString(E value) {
  using Names = EnumerationNames<E>;
  const auto index = static_cast<std::size_t>(value);
  if (index < Names::names.size()) return std::string(Names::names[index]);
  return std::string(Names::typeName) + "(" + std::to_string(static_cast<long long>(value)) + ")";
}

/// The value with this name, or nothing where no value has it. Linear in the number of values.
template <class E, std::enable_if_t<isNamedEnumeration<E>, int> = 0>
std::optional<E> enumerationFromString(std::string_view name) {
  using Names = EnumerationNames<E>;
  for (std::size_t index = 0; index < Names::names.size(); ++index)
    if (Names::names[index] == name) return static_cast<E>(index);
  return std::nullopt;
}

/// Prints as toString().
template <class E, std::enable_if_t<isNamedEnumeration<E>, int> = 0>
std::ostream& operator<<(std::ostream& stream, E value) {
  return stream << toString(value);
}

}  // namespace ormix

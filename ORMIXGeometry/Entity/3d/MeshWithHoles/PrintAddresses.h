#pragma once

#include <boost/smart_ptr/shared_ptr.hpp>
#include <ostream>
#include <vector>

// Not installed.
namespace ormix::geom::detail {

/// Prints the addresses to which the pointers point: "[0x55d0c8, 0x55d0f0]".
template <class V>
std::ostream& printAddresses(std::ostream& stream, const std::vector<boost::shared_ptr<V>>& pointers) {
  stream << '[';
  const char* separator = "";
  for (const boost::shared_ptr<V>& pointer : pointers) {
    stream << separator << static_cast<const void*>(pointer.get());
    separator = ", ";
  }
  return stream << ']';
}

}  // namespace ormix::geom::detail

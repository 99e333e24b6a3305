#pragma once

#include <ORMIXUtil/Export.h>

#include <cstddef>
#include <vector>

namespace ormix {

/// Asks the system to give large pages to memory that was allocated and is about to be written for the first time. The
/// system clears and maps what is touched first page by page: 64 MB in pages of 4 KiB take several times as long as
/// they take to fill. Does nothing for less than 4 MiB, where the system has no such pages or does not want to give
/// them; a hint, which changes neither what is in the memory nor how the process allocates elsewhere.
ORMIX_UTIL_API void adviseLargePages(const void* memory, std::size_t nbBytes) noexcept;

/// Reserves memory for that many values, see adviseLargePages().
/// \throw std::bad_alloc, std::length_error as std::vector::reserve(); `values` is then unchanged
template <class T>
void reserveLarge(std::vector<T>& values, std::size_t nbValues) {
  if (nbValues <= values.capacity()) return;
  values.reserve(nbValues);
  adviseLargePages(values.data(), nbValues * sizeof(T));
}

}  // namespace ormix

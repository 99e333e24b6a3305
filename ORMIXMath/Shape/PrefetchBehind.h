#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// \file
/// Asking ahead for the next of many short runs; not installed.

namespace ormix::detail {

/// Prefetches what lies behind a short run of coordinates: mostly the next one. Processors foresee it late, or, where
/// runs are read backwards one after the other, not at all.
template <class T>
void prefetchBehind(const T* values, std::size_t nbValues) {
  constexpr std::uintptr_t mostBytes = 1024;
  constexpr std::uintptr_t cacheLine = 64;
  const std::uintptr_t bytes = std::min<std::uintptr_t>(nbValues * sizeof(T), mostBytes);
  const std::uintptr_t behind = reinterpret_cast<std::uintptr_t>(values + nbValues);
  for (std::uintptr_t at = 0; at < bytes; at += cacheLine)
    __builtin_prefetch(reinterpret_cast<const void*>(behind + at));
}

}  // namespace ormix::detail

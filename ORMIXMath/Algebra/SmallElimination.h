#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

/// \file
/// Small linear systems by elimination; not installed.

namespace ormix::detail {

/// Solves a small linear system of N equations for K right sides by elimination with partial pivoting. The rows of
/// `system` are the N coefficients and then the right sides, which become the solutions. False for a pivot of at most
/// `smallest` times the largest coefficient.
template <std::size_t N, std::size_t K>
bool solveSmall(std::array<std::array<omReal64, N + K>, N>& system, omReal64 smallest) {
  omReal64 largest = 0;
  for (const auto& row : system)
    for (std::size_t c = 0; c < N; ++c) largest = std::max(largest, std::abs(row[c]));
  for (std::size_t c = 0; c < N; ++c) {
    std::size_t pivot = c;
    for (std::size_t r = c + 1; r < N; ++r)
      if (std::abs(system[r][c]) > std::abs(system[pivot][c])) pivot = r;
    // Not a number is no pivot either.
    if (!(std::abs(system[pivot][c]) > smallest * largest)) return false;
    if (pivot != c) std::swap(system[pivot], system[c]);
    const omReal64 inverse = 1 / system[c][c];
    for (std::size_t k = c + 1; k < N + K; ++k) system[c][k] *= inverse;
    for (std::size_t r = 0; r < N; ++r) {
      if (r == c) continue;
      const omReal64 factor = system[r][c];
      for (std::size_t k = c + 1; k < N + K; ++k) system[r][k] -= factor * system[c][k];
    }
  }
  return true;
}

}  // namespace ormix::detail

#pragma once

#if defined(__x86_64__)
#define ORMIX_HAS_AVX2_VERSION 1
#endif

/// \file
/// Loops that are compiled a second time for wider registers; not installed.

namespace ormix::detail {

/// Calls `evaluate`, which has to be inlined wherever it is called, as compiled for the widest registers that the
/// processor has: the same operations in the same order, with the same bits.
/// @{
#if defined(ORMIX_HAS_AVX2_VERSION)
template <class Evaluate>
[[gnu::target("avx2"), gnu::flatten]] void callForAvx2(const Evaluate& evaluate) {
  evaluate();
}
#endif
template <class Evaluate>
void callForProcessor(const Evaluate& evaluate) {
#if defined(ORMIX_HAS_AVX2_VERSION)
  if (__builtin_cpu_supports("avx2")) return callForAvx2(evaluate);
#endif
  evaluate();
}
/// @}

}  // namespace ormix::detail

#include <ORMIXMath/Shape/PrefetchBehind.h>
#include <ORMIXMath/Shape/Ring.h>
#include <ORMIXMath/Shape/RingLengthBlocks.h>
#if defined(__x86_64__)
#include <ORMIXMath/Shape/RingLengthAvx2.h>
#include <ORMIXMath/Shape/RingLengthAvx512.h>
#endif

#include <cmath>

namespace ormix {
namespace {

using detail::nbLanes;

/// The length of a path of fewer edges than lanes: in one sum, which is faster than adding the lanes.
template <class T>
omReal64 sumOfFewEdges(const T* xy, std::size_t nbPoints) {
  omReal64 sum = 0;
  omReal64 error = 0;
  auto x = static_cast<omReal64>(xy[0]);
  auto y = static_cast<omReal64>(xy[1]);
  for (std::size_t i = 1; i < nbPoints; ++i) {
    const auto xAfter = static_cast<omReal64>(xy[2 * i]);
    const auto yAfter = static_cast<omReal64>(xy[2 * i + 1]);
    detail::addCompensated(detail::length(xAfter - x, yAfter - y), sum, error);
    x = xAfter;
    y = yAfter;
  }
  return detail::roundedSum(sum, error);
}

/// The length of a path, edge i added to lane i % nbLanes: by `Blocks` for full blocks, then the remaining edges. Not
/// inlined, as what it saves on the stack takes longer than a short path.
template <class Blocks, class T>
[[gnu::noinline]] omReal64 sumOfManyEdges(const T* xy, std::size_t nbPoints) {
  const std::size_t nbBlocks = (nbPoints - 1) / nbLanes;
  const std::size_t nbEdgesLeft = (nbPoints - 1) % nbLanes;
  detail::RingLanes lanes;
  Blocks::add(xy, nbBlocks, lanes);
  xy += nbBlocks * detail::blockSize;
  for (std::size_t l = 0; l < nbEdgesLeft; ++l)
    detail::addCompensated(detail::edgeLength(xy + 2 * l), lanes.sum[l], lanes.error[l]);
  return detail::joined(lanes);
}

}  // namespace

template <class T>
omReal64 ringSignedArea(const T* xy, std::size_t nbPoints) {
  if (nbPoints <= 3) return 0;
  detail::prefetchBehind(xy, 2 * nbPoints);
  omReal64 sum = 0;
  const T* vertex = xy + 2 * (nbPoints - 1);
  auto x = static_cast<omReal64>(vertex[0]);
  auto y = static_cast<omReal64>(vertex[1]);
// Small rings are a matter of instructions.
#pragma GCC unroll 4
  while (vertex != xy) {
    vertex -= 2;
    const auto xBefore = static_cast<omReal64>(vertex[0]);
    const auto yBefore = static_cast<omReal64>(vertex[1]);
    sum += (x + xBefore) * (y - yBefore);
    x = xBefore;
    y = yBefore;
  }
  return 0.5 * sum;
}

template <class T>
omReal64 ringSignedAreaReversed(const T* xy, std::size_t nbPoints) {
  if (nbPoints <= 3) return 0;
  omReal64 sum = 0;
  auto x = static_cast<omReal64>(xy[0]);
  auto y = static_cast<omReal64>(xy[1]);
  for (const T *vertex = xy + 2, *end = xy + 2 * nbPoints; vertex != end; vertex += 2) {
    const auto xAfter = static_cast<omReal64>(vertex[0]);
    const auto yAfter = static_cast<omReal64>(vertex[1]);
    sum += (x + xAfter) * (y - yAfter);
    x = xAfter;
    y = yAfter;
  }
  return 0.5 * sum;
}

template <class T>
omReal64 pathLength(const T* xy, std::size_t nbPoints) {
  if (nbPoints <= nbLanes) return nbPoints == 0 ? 0 : sumOfFewEdges(xy, nbPoints);
#if defined(__x86_64__)
  // Tested on each call, which costs a load. A function resolved when the library is loaded (ifunc) would run before
  // the sanitizers are initialised and crash them.
  if (__builtin_cpu_supports("avx512f")) return sumOfManyEdges<detail::Avx512Blocks>(xy, nbPoints);
  if (__builtin_cpu_supports("avx2")) return sumOfManyEdges<detail::Avx2Blocks>(xy, nbPoints);
#endif
  return sumOfManyEdges<detail::PortableBlocks>(xy, nbPoints);
}

template <class T>
omReal64 detail::pathLengthPortable(const T* xy, std::size_t nbPoints) {
  if (nbPoints <= nbLanes) return nbPoints == 0 ? 0 : sumOfFewEdges(xy, nbPoints);
  return sumOfManyEdges<detail::PortableBlocks>(xy, nbPoints);
}

// clang-format off
template omReal64 ringSignedArea(const omInt32*, std::size_t);
template omReal64 ringSignedArea(const omUInt32*, std::size_t);
template omReal64 ringSignedArea(const omReal32*, std::size_t);
template omReal64 ringSignedArea(const omReal64*, std::size_t);
template omReal64 ringSignedAreaReversed(const omInt32*, std::size_t);
template omReal64 ringSignedAreaReversed(const omUInt32*, std::size_t);
template omReal64 ringSignedAreaReversed(const omReal32*, std::size_t);
template omReal64 ringSignedAreaReversed(const omReal64*, std::size_t);
template omReal64 pathLength(const omInt32*, std::size_t);
template omReal64 pathLength(const omUInt32*, std::size_t);
template omReal64 pathLength(const omReal32*, std::size_t);
template omReal64 pathLength(const omReal64*, std::size_t);
template omReal64 detail::pathLengthPortable(const omInt32*, std::size_t);
template omReal64 detail::pathLengthPortable(const omUInt32*, std::size_t);
template omReal64 detail::pathLengthPortable(const omReal32*, std::size_t);
template omReal64 detail::pathLengthPortable(const omReal64*, std::size_t);
// clang-format on

}  // namespace ormix

#pragma once

#include <ORMIXGeometry/Export.h>
#include <ORMIXMath/Algebra/CallForProcessor.h>
#include <ORMIXMath/Estimation/DistanceFit.h>
#include <ORMIXMath/Fitting/CloudFrame.h>

#include <array>
#include <cstddef>

/// \file
/// What models of points in D dimensions have in common; not installed.

namespace ormix::geom::detail {

/// A block of samples in the frame, coordinate by coordinate.
template <std::size_t D>
using FramedRows = std::array<std::array<omReal64, DistanceBlock::s_nbRows>, D>;

/// Rows of samples in a frame, less a point of it.
template <std::size_t D>
[[gnu::always_inline]] inline void fillFramed(const omReal64* rows, std::size_t nb,
                                              const ormix::detail::CloudFrame<D>& frame, const omReal64* center,
                                              FramedRows<D>& framed) {
  const omReal64 scale = 1 / frame.extent;
  for (std::size_t d = 0; d < D; ++d)
    for (std::size_t i = 0; i < nb; ++i) framed[d][i] = (rows[D * i + d] - frame.origin[d]) * scale - center[d];
}

/// A model whose states are relative to an origin and an extent of its samples, of dimension D.
template <std::size_t D>
class FramedModel : public DistanceModel {
 public:
  /// The samples that are evaluated from now on; the frame stays.
  void use(const SampleView& others) {
    samples = others;
    nbSamples = others.nbSamples;
  }

 protected:
  explicit FramedModel(const SampleView& fitted)
      : frame(ormix::detail::cloudFrame<D>(fitted, ormix::detail::s_nbFrameSamples)) {
    // Where many of them are the same point.
    if (!(frame.extent > 0)) frame = ormix::detail::cloudFrame<D>(fitted, fitted.nbSamples);
    unit = frame.extent;
    coarseness = frame.coarseness;
    use(fitted);
  }

  ormix::detail::CloudFrame<D> frame;
  SampleView samples;
};

}  // namespace ormix::geom::detail

#include <ORMIXGeometry/Estimation/2d/Fit2d.h>
#include <ORMIXGeometry/Estimation/2d/HomographyTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/RigidTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/SimilarityTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/2d/TranslationTransform2dEstimator.h>
#include <ORMIXGeometry/Estimation/ConditionReport.h>
#include <ORMIXGeometry/Estimation/PairFrames.h>
#include <ORMIXGeometry/Transform/2d/HomographyTransform2d.h>
#include <ORMIXGeometry/Transform/2d/RigidTransform2d.h>
#include <ORMIXGeometry/Transform/2d/SimilarityTransform2d.h>
#include <ORMIXGeometry/Transform/2d/TranslationTransform2d.h>

#include <algorithm>
#include <boost/numeric/ublas/matrix.hpp>

namespace ormix::geom {

using detail::HomographyFrame;
using detail::LinearFrame;
using detail::reportOf;
using Values = std::vector<omReal64>;

BoolResult fitTranslation(const SampleView& pairs, const FitOptions& options, TranslationTransform2d& transform,
                          FitReport& report) {
  return reportOf<LinearFrame<TranslationTransform2dEstimator, 2, eLF_Translation>>(
      "TranslationTransform2d", {"tx", "ty"}, pairs, options, report,
      [&](const Values& p) { transform = TranslationTransform2d(p[0], p[1]); });
}

BoolResult fitRigid(const SampleView& pairs, const FitOptions& options, RigidTransform2d& transform,
                    FitReport& report) {
  return reportOf<LinearFrame<RigidTransform2dEstimator, 2, eLF_Rigid>>(
      "RigidTransform2d", {"theta", "tx", "ty"}, pairs, options, report,
      [&](const Values& p) { transform = RigidTransform2d(p[0], p[1], p[2]); });
}

BoolResult fitSimilarity(const SampleView& pairs, const FitOptions& options, SimilarityTransform2d& transform,
                         FitReport& report) {
  return reportOf<LinearFrame<SimilarityTransform2dEstimator, 2, eLF_Similarity>>(
      "SimilarityTransform2d", {"scale", "theta", "tx", "ty"}, pairs, options, report,
      [&](const Values& p) { transform = SimilarityTransform2d(p[0], p[1], p[2], p[3]); });
}

BoolResult fitHomography(const SampleView& pairs, const FitOptions& options, HomographyTransform2d& transform,
                         FitReport& report) {
  return reportOf<HomographyFrame<HomographyTransform2dEstimator, 2>>(
      "HomographyTransform2d", {"h11", "h12", "h13", "h21", "h22", "h23", "h31", "h32", "h33"}, pairs, options, report,
      [&](const Values& p) {
        Matrix3x3 matrix(3, 3);
        std::copy(p.begin(), p.end(), matrix.data().begin());
        transform.init(matrix);
      });
}

}  // namespace ormix::geom

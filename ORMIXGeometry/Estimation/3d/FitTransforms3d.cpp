#include <ORMIXGeometry/Estimation/3d/Fit3d.h>
#include <ORMIXGeometry/Estimation/3d/HomographyTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/RigidTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/SimilarityTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/3d/TranslationTransform3dEstimator.h>
#include <ORMIXGeometry/Estimation/ConditionReport.h>
#include <ORMIXGeometry/Estimation/PairFrames.h>
#include <ORMIXGeometry/Transform/3d/HomographyTransform3d.h>
#include <ORMIXGeometry/Transform/3d/RigidTransform3d.h>
#include <ORMIXGeometry/Transform/3d/SimilarityTransform3d.h>
#include <ORMIXGeometry/Transform/3d/TranslationTransform3d.h>

#include <algorithm>
#include <boost/numeric/ublas/matrix.hpp>

namespace ormix::geom {

using detail::HomographyFrame;
using detail::LinearFrame;
using detail::reportOf;
using Values = std::vector<omReal64>;

BoolResult fitTranslation(const SampleView& pairs, const FitOptions& options, TranslationTransform3d& transform,
                          FitReport& report) {
  return reportOf<LinearFrame<TranslationTransform3dEstimator, 3, eLF_Translation>>(
      "TranslationTransform3d", {"tx", "ty", "tz"}, pairs, options, report,
      [&](const Values& p) { transform = TranslationTransform3d(p[0], p[1], p[2]); });
}

BoolResult fitRigid(const SampleView& pairs, const FitOptions& options, RigidTransform3d& transform,
                    FitReport& report) {
  return reportOf<LinearFrame<RigidTransform3dEstimator, 3, eLF_Rigid>>(
      "RigidTransform3d", {"alpha", "beta", "chi", "tx", "ty", "tz"}, pairs, options, report,
      [&](const Values& p) { transform = RigidTransform3d(p[0], p[1], p[2], p[3], p[4], p[5]); });
}

BoolResult fitSimilarity(const SampleView& pairs, const FitOptions& options, SimilarityTransform3d& transform,
                         FitReport& report) {
  return reportOf<LinearFrame<SimilarityTransform3dEstimator, 3, eLF_Similarity>>(
      "SimilarityTransform3d", {"scale", "alpha", "beta", "chi", "tx", "ty", "tz"}, pairs, options, report,
      [&](const Values& p) { transform = SimilarityTransform3d(p[0], p[1], p[2], p[3], p[4], p[5], p[6]); });
}

BoolResult fitHomography(const SampleView& pairs, const FitOptions& options, HomographyTransform3d& transform,
                         FitReport& report) {
  return reportOf<HomographyFrame<HomographyTransform3dEstimator, 3>>(
      "HomographyTransform3d",
      {"h11", "h12", "h13", "h14", "h21", "h22", "h23", "h24", "h31", "h32", "h33", "h34", "h41", "h42", "h43", "h44"},
      pairs, options, report, [&](const Values& p) {
        Matrix4x4 matrix(4, 4);
        std::copy(p.begin(), p.end(), matrix.data().begin());
        transform.init(matrix);
      });
}

}  // namespace ormix::geom

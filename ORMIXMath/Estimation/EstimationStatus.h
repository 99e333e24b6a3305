#pragma once

#include <ORMIXMath/Export.h>
#include <ORMIXUtil/Enumeration.h>
#include <ORMIXUtil/ScalarTypes.h>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace ormix {

/// Why an estimation failed, or that it did not.
enum eEstimationCode {
  eEC_Success,        ///< A model was found.
  eEC_InvalidInput,   ///< A sample that is NaN or infinite, a wrong dimension or number, an option out of range.
  eEC_TooFewSamples,  ///< Fewer samples, or fewer with a weight, than determine a model.
  eEC_Coincident,     ///< All samples are the same point, to rounding of their coordinates.
  eEC_Collinear,      ///< They lie on one line.
  eEC_Coplanar,       ///< They lie in one plane.
  eEC_RankDeficient,  ///< The equations do not determine the model for another reason.
  eEC_NotUnique,      ///< Several models are equally good.
  eEC_NotOfThisType,  ///< The best model of the family is of another type, as a hyperbola among conics.
  eEC_NullRadius,     ///< A radius is 0.
  eEC_NoDirection,    ///< The samples have no preferred direction.
  eEC_NotFinite,      ///< A parameter is NaN or infinite.
  eEC_NoConvergence,  ///< The iteration did not settle within its limit.
  eEC_NoConsensus,    ///< No model has enough samples near it.
  eEC_NotConfident,   ///< The best model may have its samples by chance, or was not searched for long enough.
  eEC_Stopped,        ///< The progress callback asked to stop.
  eEC_Unspecified     ///< The estimator failed and did not say why.
};

/// Texts of eEstimationCode, for printing and archives.
template <>
struct EnumerationNames<eEstimationCode> {
  static constexpr std::string_view typeName = "eEstimationCode";  ///< Name of the type.
  /// Names of the enumerators, in the order of their values.
  static constexpr std::array<std::string_view, 17> names{
      "eEC_Success",     "eEC_InvalidInput",  "eEC_TooFewSamples", "eEC_Coincident",    "eEC_Collinear",
      "eEC_Coplanar",    "eEC_RankDeficient", "eEC_NotUnique",     "eEC_NotOfThisType", "eEC_NullRadius",
      "eEC_NoDirection", "eEC_NotFinite",     "eEC_NoConvergence", "eEC_NoConsensus",   "eEC_NotConfident",
      "eEC_Stopped",     "eEC_Unspecified"};
};

/// How an estimation ended, as data: what was compared with which threshold, and the samples that are to blame.
struct EstimationStatus {
  static constexpr std::size_t s_nbMaxIndices = 16;  ///< Most indices that are kept.

  eEstimationCode code = eEC_Success;  ///< What went wrong.
  std::string quantity;                ///< What was compared, as "rank"; empty where nothing was.
  omReal64 value = 0;                  ///< Its value.
  omReal64 threshold = 0;              ///< The bound that the value misses.
  std::vector<std::size_t> indices;    ///< The first samples that are to blame, ascending; empty where none is.
  std::string advice;                  ///< What would help; empty after a success.
  std::string message;                 ///< The text of the failure for people; empty after a success.

  /// Whether the estimation succeeded.
  explicit operator bool() const { return code == eEC_Success; }
};

/// What helps against failures of this kind, one sentence; empty for eEC_Success.
ORMIX_MATH_API std::string_view adviceAgainst(eEstimationCode code);

/// The status of a failure with the advice against its kind.
/// \param quantity  what was compared; empty where nothing was
ORMIX_MATH_API EstimationStatus failedStatus(eEstimationCode code, std::string_view quantity, omReal64 value,
                                             omReal64 threshold, std::string message = {});

/// Whether all members are equal; a value that is NaN equals NaN.
/// @{
ORMIX_MATH_API bool operator==(const EstimationStatus& a, const EstimationStatus& b);
inline bool operator!=(const EstimationStatus& a, const EstimationStatus& b) { return !(a == b); }
/// @}

/// Prints the code, what was compared, the samples and the advice, in one line: "eEC_Collinear: rank 2, threshold 3;
/// samples 0 1 2; add a sample off the line".
ORMIX_MATH_API std::ostream& operator<<(std::ostream& stream, const EstimationStatus& status);

}  // namespace ormix

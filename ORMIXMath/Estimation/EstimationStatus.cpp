#include <ORMIXMath/Estimation/EstimationStatus.h>

#include <array>
#include <cmath>
#include <ostream>
#include <utility>

namespace ormix {
namespace {

constexpr auto s_nbCodes = EnumerationNames<eEstimationCode>::names.size();

// In the order of the codes.
constexpr std::array<std::string_view, s_nbCodes> s_advice{
    "",
    "correct or leave out the samples or options that are named",
    "measure more samples, or give more of them a weight",
    "measure samples at different places",
    "add a sample off the line",
    "add a sample off the plane",
    "add samples that differ in more directions",
    "add samples that tell the models apart",
    "measure a larger part of the shape, or fit another model",
    "measure a larger part of the shape, or fit a model of lower dimension",
    "measure samples that reach farther in one direction than in the others",
    "correct samples that are not finite, or scale those that are extremely large",
    "allow more iterations, or start from better samples",
    "widen the threshold, or measure with fewer outliers",
    "draw more sets, or measure more samples of the model",
    "let the estimation run to its end",
    "look at the message"};

bool isSame(omReal64 a, omReal64 b) { return a == b || (std::isnan(a) && std::isnan(b)); }

}  // namespace

std::string_view adviceAgainst(eEstimationCode code) {
  const auto index = static_cast<std::size_t>(code);
  return index < s_nbCodes ? s_advice[index] : std::string_view();
}

EstimationStatus failedStatus(eEstimationCode code, std::string_view quantity, omReal64 value, omReal64 threshold,
                              std::string message) {
  return {code, std::string(quantity), value, threshold, {}, std::string(adviceAgainst(code)), std::move(message)};
}

bool operator==(const EstimationStatus& a, const EstimationStatus& b) {
  return a.code == b.code && a.quantity == b.quantity && isSame(a.value, b.value) && isSame(a.threshold, b.threshold) &&
         a.indices == b.indices && a.advice == b.advice && a.message == b.message;
}

std::ostream& operator<<(std::ostream& stream, const EstimationStatus& status) {
  stream << status.code;
  const char* separator = ": ";
  if (!status.quantity.empty()) {
    stream << separator << status.quantity << ' ' << status.value << ", threshold " << status.threshold;
    separator = "; ";
  }
  if (!status.indices.empty()) {
    stream << separator << (status.indices.size() == 1 ? "sample" : "samples");
    for (const std::size_t index : status.indices) stream << ' ' << index;
    separator = "; ";
  }
  if (!status.advice.empty()) stream << separator << status.advice;
  return stream;
}

}  // namespace ormix

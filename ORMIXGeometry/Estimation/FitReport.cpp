#include <ORMIXGeometry/Estimation/FitReport.h>
#include <ORMIXGeometry/Message/EstimationMessage.h>
#include <ORMIXGeometry/ORMIXGeometryException.h>
#include <ORMIXSerialization/Archive/ArchiveItem.h>
#include <ORMIXSerialization/Object/RegisteredObject.ipp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <ostream>
#include <utility>

namespace ormix {

namespace {

// No name of a parameter has it.
constexpr char s_betweenNames = ';';

}  // namespace

// Names of parameters are one text, and inliers an array of 0 and 1.

BoolResult writeItem(BaseOArchive& archive, std::string_view key, const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) {
    if (name.find(s_betweenNames) != std::string::npos)
      return failure("Key \"" + std::string(key) + "\": \"" + name + "\" has a semicolon");
    text += name + s_betweenNames;
  }
  return archive.writeText(key, text);
}

BoolResult readItem(BaseIArchive& archive, std::string_view key, std::vector<std::string>& names) {
  std::string text;
  BoolResult result = archive.readText(key, text);
  if (!result) return result;
  if (!text.empty() && text.back() != s_betweenNames)
    return failure("Key \"" + std::string(key) + "\": the last name does not end with ';'");
  std::vector<std::string> read;
  for (std::size_t start = 0; start < text.size(); start = text.find(s_betweenNames, start) + 1)
    read.push_back(text.substr(start, text.find(s_betweenNames, start) - start));
  names = std::move(read);
  return result;
}

BoolResult writeItem(BaseOArchive& archive, std::string_view key, const std::vector<bool>& flags) {
  return writeItem(archive, key, std::vector<omUInt32>(flags.begin(), flags.end()));
}

BoolResult readItem(BaseIArchive& archive, std::string_view key, std::vector<bool>& flags) {
  std::vector<omUInt32> read;
  BoolResult result = readItem(archive, key, read);
  if (!result) return result;
  if (std::any_of(read.begin(), read.end(), [](omUInt32 flag) { return flag > 1; }))
    return failure("Key \"" + std::string(key) + "\": a value is neither 0 nor 1");
  flags.assign(read.begin(), read.end());
  return result;
}

template class VersionedLevel<geom::FitReport, BaseSerializationObject>;
template class RegisteredObject<geom::FitReport, BaseSerializationObject>;

}  // namespace ormix

namespace ormix::geom {
namespace {

void requireParameter(const FitReport& report, std::size_t i, const char* function) {
  if (i >= report.params.size() || report.covariance.size() != report.params.size() * report.params.size())
    logAndThrow(formatMessage<eEstimationMessage>(eEstimationMessage::eEsM_NoSuchParameter, std::to_string(i)),
                function, __FILE__, __LINE__);
}

bool isSame(const std::vector<omReal64>& a, const std::vector<omReal64>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](omReal64 x, omReal64 y) { return x == y || (std::isnan(x) && std::isnan(y)); });
}

/// The number with so many digits behind the point, in every locale.
std::string fixed(omReal64 value, int nbDecimals) {
  char text[400];
  const auto end = std::to_chars(text, text + sizeof(text), value, std::chars_format::fixed, nbDecimals);
  const std::string written(text, end.ptr);
  // No "-0.00".
  return written[0] == '-' && written.find_first_of("123456789") == std::string::npos ? written.substr(1) : written;
}

/// The shortest text that reads as the same number.
std::string shortest(omReal64 value) {
  char text[40];
  const auto end = std::to_chars(text, text + sizeof(text), value);
  return {text, end.ptr};
}

/// The number rounded to a multiple of 10^place, without digits below it.
std::string roundedTo(omReal64 value, int place) {
  if (place <= 0) return fixed(value, -place);
  const omReal64 unit = std::pow(10.0, place);
  return fixed(std::round(value / unit) * unit, 0);
}

/// The place of the second significant digit: -2 for 0.031, also for 0.0996, which is rounded to 0.10.
int placeOfSecondDigit(omReal64 value) {
  const int place = static_cast<int>(std::floor(std::log10(value))) - 1;
  return std::round(value / std::pow(10.0, place)) >= 100 ? place + 1 : place;
}

}  // namespace

FitReport::FitReport(std::string modelName, std::vector<std::string> namesOfParameters, FitResult result)
    : FitResult(std::move(result)), model(std::move(modelName)), parameterNames(std::move(namesOfParameters)) {}

FitReport& FitReport::operator=(const FitReport& other) { return *this = FitReport(other); }

std::size_t FitReport::indexOf(const std::string& name) const {
  const auto found = std::find(parameterNames.begin(), parameterNames.end(), name);
  if (found == parameterNames.end())
    logAndThrow(formatMessage<eEstimationMessage>(eEstimationMessage::eEsM_NoSuchParameter, "\"" + name + "\""),
                __PRETTY_FUNCTION__, __FILE__, __LINE__);
  return static_cast<std::size_t>(found - parameterNames.begin());
}

omReal64 FitReport::standardUncertainty(std::size_t i) const {
  requireParameter(*this, i, __PRETTY_FUNCTION__);
  return std::sqrt(covariance[i * params.size() + i]);
}

omReal64 FitReport::correlation(std::size_t i, std::size_t j) const {
  requireParameter(*this, std::max(i, j), __PRETTY_FUNCTION__);
  const omReal64 value = covariance[i * params.size() + j] / standardUncertainty(i) / standardUncertainty(j);
  return std::isfinite(value) ? std::clamp(value, -1.0, 1.0) : std::nan("");
}

std::vector<omReal64> FitReport::marginal(const std::vector<std::size_t>& indices) const {
  for (const std::size_t i : indices) requireParameter(*this, i, __PRETTY_FUNCTION__);
  std::vector<omReal64> block;
  block.reserve(indices.size() * indices.size());
  for (const std::size_t i : indices)
    for (const std::size_t j : indices) block.push_back(covariance[i * params.size() + j]);
  return block;
}

bool operator==(const FitReport& a, const FitReport& b) {
  const std::vector<omReal64> ofA{a.sigma0, a.conditionNumber, a.rankThreshold};
  const std::vector<omReal64> ofB{b.sigma0, b.conditionNumber, b.rankThreshold};
  return a.model == b.model && a.method == b.method && a.parameterNames == b.parameterNames &&
         isSame(a.params, b.params) && isSame(a.covariance, b.covariance) && isSame(ofA, ofB) &&
         a.degreesOfFreedom == b.degreesOfFreedom && isSame(a.residuals, b.residuals) && isSame(a.weights, b.weights) &&
         a.rank == b.rank && a.nbIterations == b.nbIterations && a.inliers == b.inliers && a.status == b.status;
}

// What belongs together when a report is read: functions of a report count on it.
BoolResult FitReport::validate(const FitReport& report) {
  const std::size_t nb = report.params.size();
  if (report.parameterNames.size() != nb)
    return failure("Key \"_parameterNames\": " + std::to_string(report.parameterNames.size()) + " names of " +
                   std::to_string(nb) + " parameters");
  if (report.covariance.size() != nb * nb)
    return failure("Key \"_covariance\": " + std::to_string(report.covariance.size()) + " values for " +
                   std::to_string(nb) + " parameters");
  if (!report.weights.empty() && report.weights.size() != report.residuals.size())
    return failure("Key \"_weights\": not as many as residuals");
  if (!report.inliers.empty() && report.inliers.size() != report.residuals.size())
    return failure("Key \"_inliers\": not as many as residuals");
  return {};
}

std::string withUncertainty(omReal64 value, omReal64 standardUncertainty, unsigned int k) {
  const std::string coverage = " (k = " + std::to_string(k) + ")";
  const omReal64 expanded = standardUncertainty * static_cast<omReal64>(k);
  if (!(expanded >= 0)) return shortest(value) + " ± unknown";
  if (expanded == 0 || !std::isfinite(expanded) || !std::isfinite(value))
    return shortest(value) + " ± " + shortest(expanded) + coverage;
  // Powers of ten are taken out where the numbers would have many zeros.
  constexpr int mostDecimals = 9;
  constexpr int mostDigits = 15;
  const omReal64 larger = std::max(std::abs(value), expanded);
  const int exponent = static_cast<int>(std::floor(std::log10(larger)));
  const int place = placeOfSecondDigit(expanded);
  if (exponent < mostDigits && place >= -mostDecimals && place < mostDigits)
    return roundedTo(value, place) + " ± " + roundedTo(expanded, place) + coverage;
  if (exponent == 0) return fixed(value, -place) + " ± " + fixed(expanded, -place) + coverage;
  if (exponent < -300) return shortest(value) + " ± " + shortest(expanded) + coverage;
  const omReal64 unit = std::pow(10.0, exponent);
  return "(" + roundedTo(value / unit, std::min(place - exponent, 0)) + " ± " +
         roundedTo(expanded / unit, std::min(place - exponent, 0)) + ")e" + std::to_string(exponent) + coverage;
}

std::string toString(const FitReport& report) {
  std::string text = (report.model.empty() ? "nothing" : report.model) + " fitted";
  // The image of a report by a transform has no samples.
  if (!report.residuals.empty()) text += " to " + std::to_string(report.residuals.size()) + " samples";
  text += ", " + toString(report.method);
  if (!report.inliers.empty())
    text += ", " + std::to_string(std::count(report.inliers.begin(), report.inliers.end(), true)) + " inliers";
  const bool hasCovariance = report.covariance.size() == report.params.size() * report.params.size();
  for (std::size_t i = 0; i < report.params.size(); ++i)
    text += "\n" + (i < report.parameterNames.size() ? report.parameterNames[i] : std::to_string(i)) + " " +
            withUncertainty(report.params[i], hasCovariance ? report.standardUncertainty(i) : std::nan(""));
  if (!report.params.empty())
    text +=
        "\nsigma0 " + shortest(report.sigma0) + ", " + std::to_string(report.degreesOfFreedom) + " degrees of freedom";
  if (!report.status) text += "\n" + toString(report.status.code) + ": " + report.status.message;
  return text;
}

std::ostream& operator<<(std::ostream& stream, const FitReport& report) { return stream << toString(report); }

}  // namespace ormix::geom

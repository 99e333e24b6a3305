#pragma once

#include <ORMIXUtil/ScalarTypes.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <type_traits>

/// \file
/// The models of fitConditions(): values that say what a sample must satisfy, f(sample) = 0, with the derivatives of f
/// by the tangents, the directions in which the model can move, and by the values of the sample. All of them constant
/// time. A value T is a number, or a vector of numbers, those of several samples.
///
/// Each has the numbers of its conditions, tangents and values of a sample (`s_nbConditions`, `s_nbTangents`,
/// `s_sampleDimension`), `s_isAffine`, whether the derivatives by a sample depend on the model only, `evaluate`, which
/// sets the Conditions of one sample, and `moved`, the model a step of the tangents away.

namespace ormix {

/// What a model says of one sample: K conditions, N tangents, M values of a sample.
template <std::size_t K, std::size_t N, std::size_t M, class T = omReal64>
struct Conditions {
  std::array<T, K> values;                    ///< f
  std::array<std::array<T, N>, K> byTangent;  ///< derivatives of f by the tangents
  std::array<std::array<T, M>, K> bySample;   ///< derivatives of f by the sample
};

/// Whether a map of points turns, and whether it scales them.
enum eLinearFreedom {
  eLF_Translation,  ///< neither
  eLF_Rigid,        ///< turns
  eLF_Similarity    ///< both
};

/// p2 = scale · R p1 + t of pairs (p1, p2) of the plane (D = 2) or of space (D = 3). Tangents: the relative change of
/// the scale, the vector of a small rotation after R (in the plane its angle), the change of t; those that `freedom`
/// has.
template <std::size_t D, eLinearFreedom freedom>
struct LinearConditions {
  static constexpr bool s_turns = freedom != eLF_Translation;
  static constexpr bool s_scales = freedom == eLF_Similarity;
  static constexpr std::size_t s_nbAngles = s_turns ? D * (D - 1) / 2 : 0;
  static constexpr std::size_t s_shift = s_nbAngles + (s_scales ? 1 : 0);  ///< the first tangent of t
  static constexpr std::size_t s_nbConditions = D;
  static constexpr std::size_t s_nbTangents = s_shift + D;
  static constexpr std::size_t s_sampleDimension = 2 * D;
  static constexpr bool s_isAffine = true;
  using Point = std::array<omReal64, D>;

  omReal64 scale = 1;
  std::array<Point, D> rotation{};  ///< R, row by row
  Point shift{};                    ///< t

  /// The images of small rotations: omega x p; in the plane (-y, x).
  template <class T>
  static std::array<T, D> turned(std::size_t axis, const std::array<T, D>& p) {
    if constexpr (D == 2) {
      return {-p[1], p[0]};
    } else {
      std::array<T, D> result{};
      const std::size_t next = (axis + 1) % 3, last = (axis + 2) % 3;
      result[next] = -p[last];
      result[last] = p[next];
      return result;
    }
  }
  /// R p times the scale.
  template <class T>
  std::array<T, D> turnedAndScaled(const T* p) const {
    std::array<T, D> result{};
    for (std::size_t r = 0; r < D; ++r) {
      for (std::size_t c = 0; c < D; ++c) result[r] += rotation[r][c] * p[c];
      result[r] *= scale;
    }
    return result;
  }

  template <class T>
  void evaluate(const T* pair, Conditions<D, s_nbTangents, 2 * D, T>& conditions) const {
    const std::array<T, D> image = turnedAndScaled(pair);
    for (std::size_t r = 0; r < D; ++r) {
      conditions.values[r] = pair[D + r] - (image[r] + shift[r]);
      auto& byTangent = conditions.byTangent[r];
      if constexpr (s_scales) byTangent[0] = -image[r];
      for (std::size_t k = 0; k < s_nbAngles; ++k) byTangent[s_shift - s_nbAngles + k] = -turned(k, image)[r];
      for (std::size_t c = 0; c < D; ++c) {
        byTangent[s_shift + c] = T{} - (c == r ? 1.0 : 0.0);
        conditions.bySample[r][c] = T{} - scale * rotation[r][c];
        conditions.bySample[r][D + c] = T{} + (c == r ? 1.0 : 0.0);
      }
    }
  }

  /// The model moved along the tangents.
  LinearConditions moved(const std::array<omReal64, s_nbTangents>& step) const {
    LinearConditions result = *this;
    if constexpr (s_scales) result.scale *= std::exp(step[0]);
    if constexpr (s_turns) result.turn(step.data() + (s_shift - s_nbAngles));
    for (std::size_t c = 0; c < D; ++c) result.shift[c] += step[s_shift + c];
    return result;
  }

  /// Turns R by the angle, or by the vector of a rotation (Rodrigues' formula), and removes what rounding adds up.
  void turn(const omReal64* by) {
    omReal64 angle = std::abs(by[0]);
    if constexpr (D == 3) angle = std::sqrt(by[0] * by[0] + by[1] * by[1] + by[2] * by[2]);
    const omReal64 half = std::sin(angle / 2);
    const omReal64 sine = angle > 0 ? std::sin(angle) / angle : 1;
    const omReal64 versine = angle > 0 ? 2 * half * half / (angle * angle) : 0.5;
    for (std::size_t c = 0; c < D; ++c) {
      const auto cross = [&](const Point& p) {
        Point sum{};
        for (std::size_t k = 0; k < s_nbAngles; ++k)
          for (std::size_t r = 0; r < D; ++r) sum[r] += by[k] * turned(k, p)[r];
        return sum;
      };
      Point column;
      for (std::size_t r = 0; r < D; ++r) column[r] = rotation[r][c];
      const Point once = cross(column), twice = cross(once);
      for (std::size_t r = 0; r < D; ++r) rotation[r][c] = column[r] + sine * once[r] + versine * twice[r];
    }
  }
};

/// A p1 in homogeneous coordinates, divided by its last one, is p2, of pairs (p1, p2) of the plane (D = 2) or of space
/// (D = 3). The elements of A have length 1 and move at a right angle to themselves: tangent k is what element k
/// becomes by the reflection that maps the elements to the last axis.
template <std::size_t D>
struct HomographyConditions {
  static constexpr std::size_t s_side = D + 1;
  static constexpr std::size_t s_nbElements = s_side * s_side;
  static constexpr std::size_t s_nbConditions = D;
  static constexpr std::size_t s_nbTangents = s_nbElements - 1;
  static constexpr std::size_t s_sampleDimension = 2 * D;
  static constexpr bool s_isAffine = false;
  using Elements = std::array<omReal64, s_nbElements>;

  HomographyConditions() { elements.back() = 1; }
  /// Of elements of any length but 0, row by row.
  explicit HomographyConditions(const Elements& of) { set(of); }

  const Elements& getElements() const { return elements; }

  /// The derivatives of element e by the tangents.
  omReal64 byTangent(std::size_t e, std::size_t tangent) const {
    return (e == tangent ? 1 : 0) - factor * mirror[e] * mirror[tangent];
  }

  template <class T>
  void evaluate(const T* pair, Conditions<D, s_nbTangents, 2 * D, T>& conditions) const {
    std::array<T, s_side> image;
    for (std::size_t r = 0; r < s_side; ++r) {
      image[r] = T{} + elements[r * s_side + D];
      for (std::size_t c = 0; c < D; ++c) image[r] += elements[r * s_side + c] * pair[c];
    }
    const T inverse = 1 / image[D];
    for (std::size_t r = 0; r < D; ++r) {
      const T x = image[r] * inverse;
      conditions.values[r] = pair[D + r] - x;
      // By the elements of row r: -p / w; by those of the last row: x p / w; then through the reflection.
      T along{};
      for (std::size_t c = 0; c < s_side; ++c) {
        const T p = c < D ? pair[c] * inverse : inverse;
        along += p * (x * mirror[D * s_side + c] - mirror[r * s_side + c]);
      }
      along *= factor;
      auto& row = conditions.byTangent[r];
      for (std::size_t k = 0; k < s_nbTangents; ++k) row[k] = -along * mirror[k];
      for (std::size_t c = 0; c < s_side; ++c) {
        const T p = c < D ? pair[c] * inverse : inverse;
        row[r * s_side + c] -= p;
        if (c < D) row[D * s_side + c] += x * p;
      }
      for (std::size_t c = 0; c < D; ++c) {
        conditions.bySample[r][c] = (x * elements[D * s_side + c] - elements[r * s_side + c]) * inverse;
        conditions.bySample[r][D + c] = T{} + (c == r ? 1.0 : 0.0);
      }
    }
  }

  /// The square of what the linear equations of a pair are multiplied by, against its distances: what they weigh.
  omReal64 algebraicWeight(const omReal64* pair) const {
    omReal64 w = elements.back();
    for (std::size_t c = 0; c < D; ++c) w += elements[D * s_side + c] * pair[c];
    return w * w;
  }

  HomographyConditions moved(const std::array<omReal64, s_nbTangents>& step) const {
    Elements result = elements;
    for (std::size_t e = 0; e < s_nbElements; ++e)
      for (std::size_t k = 0; k < s_nbTangents; ++k) result[e] += byTangent(e, k) * step[k];
    return HomographyConditions(result);
  }

 private:
  void set(const Elements& of) {
    omReal64 square = 0;
    for (const omReal64 element : of) square += element * element;
    const omReal64 length = std::sqrt(square);
    for (std::size_t e = 0; e < s_nbElements; ++e) mirror[e] = elements[e] = of[e] / length;
    // The sign that loses no digits.
    mirror.back() += elements.back() < 0 ? -1 : 1;
    factor = 1 / (1 + std::abs(elements.back()));
  }

  Elements elements{};  ///< A, row by row
  Elements mirror{};    ///< at a right angle to the plane of the reflection
  omReal64 factor = 0;  ///< 2 over its squared length
};

/// a cos theta + b sin theta = rho of lines (theta, rho) through the point (a, b), which are the tangents.
struct IntersectionConditions {
  static constexpr std::size_t s_nbConditions = 1;
  static constexpr std::size_t s_nbTangents = 2;
  static constexpr std::size_t s_sampleDimension = 2;
  static constexpr bool s_isAffine = false;

  omReal64 a = 0;
  omReal64 b = 0;

  template <class T>
  void evaluate(const T* line, Conditions<1, 2, 2, T>& conditions) const {
    T co = line[0], si = line[0];
    if constexpr (std::is_same_v<T, omReal64>) {
      co = std::cos(co);
      si = std::sin(si);
    } else {
      for (std::size_t i = 0; i < sizeof(T) / sizeof(omReal64); ++i) {
        co[i] = std::cos(co[i]);
        si[i] = std::sin(si[i]);
      }
    }
    conditions.values[0] = a * co + b * si - line[1];
    conditions.byTangent[0] = {co, si};
    conditions.bySample[0] = {b * co - a * si, T{} - 1.0};
  }
  IntersectionConditions moved(const std::array<omReal64, 2>& step) const { return {a + step[0], b + step[1]}; }
};

}  // namespace ormix

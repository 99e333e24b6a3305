#pragma once

#include <cstdint>

namespace ormix {

/// \name Scalar types of the family: integers by their width in bits, reals of single and double precision.
/// @{
using omInt8 = std::int8_t;
using omInt16 = std::int16_t;
using omInt32 = std::int32_t;
using omInt64 = std::int64_t;
using omUInt8 = std::uint8_t;
using omUInt16 = std::uint16_t;
using omUInt32 = std::uint32_t;
using omUInt64 = std::uint64_t;
using omReal32 = float;
using omReal64 = double;
/// @}

/// The family's name of a scalar type, as registered class names spell it: "ormix::omReal64". Not the compiler's name.
template <class T>
constexpr const char* scalarName() = delete;
// clang-format off
template <> constexpr const char* scalarName<omInt8>() { return "ormix::omInt8"; }
template <> constexpr const char* scalarName<omInt16>() { return "ormix::omInt16"; }
template <> constexpr const char* scalarName<omInt32>() { return "ormix::omInt32"; }
template <> constexpr const char* scalarName<omInt64>() { return "ormix::omInt64"; }
template <> constexpr const char* scalarName<omUInt8>() { return "ormix::omUInt8"; }
template <> constexpr const char* scalarName<omUInt16>() { return "ormix::omUInt16"; }
template <> constexpr const char* scalarName<omUInt32>() { return "ormix::omUInt32"; }
template <> constexpr const char* scalarName<omUInt64>() { return "ormix::omUInt64"; }
template <> constexpr const char* scalarName<omReal32>() { return "ormix::omReal32"; }
template <> constexpr const char* scalarName<omReal64>() { return "ormix::omReal64"; }
// clang-format on

}  // namespace ormix

#pragma once

#include <cstdint>

/// Constants that the whole program shares.

inline constexpr const char* kProgramName = "Quarn IO Gaugeline";
inline constexpr const char* kProgramVersion = "2.2";

inline constexpr std::uint32_t kBytesPerKB = 1024;
inline constexpr std::uint32_t kBytesPerMB = 1024 * kBytesPerKB;

/// A transfer rate of this value means that transfers are not paced.
inline constexpr std::uint32_t kUnlimitedRate = 0xFFFFFFFF;

/// Counters of transfers and errors stop here instead of wrapping.
inline constexpr std::int32_t kCounterCap = 0x7FFFFFFF;

/// `m_standardTestID` of a test that comes from no preset.
inline constexpr std::int32_t kCustomTestID = -1;

#pragma once

#include <cstdint>

/// Constants that the whole program shares.

inline constexpr const char* kProgramName = "Quarn IO Gaugeline";
inline constexpr const char* kProgramVersion = "2.2";

inline constexpr std::uint32_t kBytesPerKB = 1024;
inline constexpr std::uint32_t kBytesPerMB = 1024 * kBytesPerKB;

/// A transfer rate of this value means that transfers are not paced.
inline constexpr std::uint32_t kUnlimitedRate = 0xFFFFFFFF;

/// The most that a test can be asked for: its seconds and the bytes of a transfer are counted in 32 bits.
inline constexpr std::uint32_t kMaxDurationMinutes = 0xFFFFFFFF / 60;
inline constexpr std::uint32_t kMaxTransferSizeKB = 0xFFFFFFFF / kBytesPerKB;
inline constexpr std::uint32_t kMaxTransferRateKBps = kUnlimitedRate - 1;

/// Counters of transfers and errors stop here instead of wrapping.
inline constexpr std::int32_t kCounterCap = 0x7FFFFFFF;

/// `m_standardTestID` of a test that comes from no preset.
inline constexpr std::int32_t kCustomTestID = -1;

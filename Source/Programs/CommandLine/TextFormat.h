#pragma once

#include <cstdint>
#include <string>

/// Numbers as the headless program shows them.
namespace TextFormat {

/// What `printf` would write.
[[nodiscard]] std::string Print(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// "0:07", "1:05", "1:01:01", "2d 01:01:01".
[[nodiscard]] std::string Duration(std::uint64_t seconds);

/// Milliseconds with three significant digits: "0.085", "1.25", "12.5", "1250".
[[nodiscard]] std::string Milliseconds(std::uint64_t microseconds);

/// A rate in KB/s as MB/s: "0.375", "4.00", "187.5", "1843".
[[nodiscard]] std::string MegabytesPerSecond(double rateKBps);

/// Bytes as MB with one decimal.
[[nodiscard]] std::string Megabytes(std::uint64_t bytes);

/// "1 error", "2 errors".
[[nodiscard]] std::string Count(std::uint64_t number, const char* noun);

}  // namespace TextFormat

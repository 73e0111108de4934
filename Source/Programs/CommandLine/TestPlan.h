#pragma once

#include "CoreClasses/IOTestParameters.h"
#include "Programs/CommandLine/TypedPath.h"

#include <cstdint>
#include <optional>
#include <string>

/// One test as the command line orders it.
struct TestPlan {
    static constexpr std::int32_t kNoWarningLimit = -1;

    IOTestParameters parameters;
    std::optional<std::string> nativePath{};  ///< of the path under test; none when it cannot be converted
    std::int32_t thresholdMS = 0;             ///< log and count slower transfers; 0: do not
    std::int32_t thresholdWarnings = 50;      ///< the most of them that are logged, or `kNoWarningLimit`
    std::optional<TypedPath> outputLog{};
    std::optional<TypedPath> errorLog{};

    [[nodiscard]] bool Writes() const { return parameters.m_readWriteMethod != kReadsOnly; }
    [[nodiscard]] bool Reads() const { return parameters.m_readWriteMethod != kWritesOnly; }
    [[nodiscard]] bool IsSelfTest() const { return parameters.m_fileAccessMethod == kAccessSelfTest; }
    [[nodiscard]] bool HasTargetRate() const { return parameters.m_transferRateKBps != kUnlimitedRate; }

    /// The engine's pacing interval in milliseconds, cut to whole ones; 0 when transfers are not paced.
    [[nodiscard]] std::uint32_t PacingIntervalMS() const {
        return HasTargetRate() ? parameters.m_transferSizeKB * 1000U / parameters.m_transferRateKBps : 0;
    }
    /// Length of one cycle of the test.
    [[nodiscard]] std::uint32_t DurationSeconds() const { return parameters.m_durationMinutes * 60U; }
    [[nodiscard]] std::string PathText() const {
        return BothForms(std::string(parameters.m_drivePath.View()), nativePath);
    }
};

/// The words of the command line, which the summary and the JSON document share: "mixed", "writes", "reads".
[[nodiscard]] const char* ModeName(std::int32_t readWriteMethod);
/// "auto", "mac", "self-test", "posix".
[[nodiscard]] const char* MethodName(std::int32_t fileAccessMethod);

#pragma once

#include "Programs/CommandLine/TestReport.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>

/// What the status of a running test shows.
struct TestStatus {
    const char* phase = "Starting";
    std::uint32_t elapsedSeconds = 0;
    std::uint32_t durationSeconds = 0;  ///< of the test; 0 when it loops
    double currentKBps = 0.0;           ///< over the last seconds
    double averageKBps = 0.0;           ///< over all time in phases of this direction
    std::uint64_t slowestUS = 0;
    std::uint64_t errors = 0;
    std::uint32_t quietSeconds = 0;  ///< no transfer has ended for so long; 0 when that is nothing unusual

    /// "LOOP", or what is left of the duration, never less than nothing.
    [[nodiscard]] std::string Remaining() const;
};

/// The status as one line of at most `columns` characters, with a progress bar where there is room. What is least
/// needed goes first in a narrow one.
[[nodiscard]] std::string LiveStatusLine(const TestStatus& status, std::size_t columns);

/// The status as a line for a file or a pipe.
[[nodiscard]] std::string PlainStatusLine(const TestStatus& status);

/// Follows a test from one status pass to the next and works out what its status shows.
class StatusTracker {
public:
    /// Takes note of the report as it stands; `nowUS` is the microsecond clock.
    void Update(const TestReport& report, std::uint64_t nowUS, bool isStopping);

    [[nodiscard]] const TestStatus& Status() const { return m_status; }

private:
    struct Point {
        std::uint64_t timeUS;
        std::uint64_t bytes;
    };

    void UpdatePhase(const TestReport& report, bool isStopping);
    void UpdateRates(const TestReport& report, std::uint64_t nowUS);
    void UpdateQuiet(const TestReport& report, std::uint64_t nowUS);

    TestStatus m_status;
    std::int32_t m_phase = kPhaseNone;       ///< of the last update
    std::int32_t m_shownPhase = kPhaseNone;  ///< whose rates are shown: the last one that was not none
    std::deque<Point> m_recent;              ///< of the running phase, oldest first
    std::uint64_t m_outcomes = 0;            ///< transfers ended in any way
    std::uint64_t m_lastOutcomeUS = 0;
};

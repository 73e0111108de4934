#pragma once

#include "Programs/CommandLine/TestReport.h"

#include <optional>

/// How the measured averages stand to the test's target rate.
enum class Verdict {
    Sustained,  ///< 95 % of it or more
    Marginal,   ///< 85 % or more
    Short,      ///< less, or a direction of the test that never transferred
    Unpaced     ///< there is no target rate, or no data moves that would have a rate
};

/// The verdict of the worse direction. None for a test that did not start, or was ended by a signal before there was
/// anything to judge; a phase that such a test did not come to does not count against it.
[[nodiscard]] std::optional<Verdict> Judge(const TestReport& report);

/// Whether a direction counts for the verdict: it belongs to the test, and the test came to it.
[[nodiscard]] bool IsJudged(const TestReport& report, Direction direction);

/// The average of a direction in percent of the target rate; none for one that is not judged, without a target rate,
/// and in a self test.
[[nodiscard]] std::optional<double> PercentOfTarget(const TestReport& report, Direction direction);

/// "sustained", "marginal", "short" or "unpaced".
[[nodiscard]] const char* VerdictName(Verdict verdict);

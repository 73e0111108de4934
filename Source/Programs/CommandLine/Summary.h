#pragma once

#include "Programs/CommandLine/TestReport.h"

#include <string>

/// The table at the end of a test that was started, with the verdict as its last line.
[[nodiscard]] std::string SummaryText(const TestReport& report, bool hasColour);

/// How the transfers met the file cache, in words: "bypassed", "cached (volatile: ...)".
[[nodiscard]] std::string FileCacheText(const TestReport& report);

#pragma once

struct TestReport;

/// What the headless program answers its caller with. After a signal it is 128 + the signal's number instead.
enum ExitStatus : int {
    kExitSustained = 0,      ///< the target rate was sustained, or there was none, and nothing failed
    kExitNotSustained = 1,   ///< marginal or short
    kExitWrongUse = 2,       ///< the command line; nothing was touched
    kExitCouldNotStart = 3,  ///< path, access method, log file or JSON file
    kExitErrors = 4          ///< transfers or files failed during the test
};

/// The exit status of a test that has ended or could not start.
[[nodiscard]] int ExitStatusOf(const TestReport& report);

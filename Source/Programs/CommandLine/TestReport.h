#pragma once

#include "CoreClasses/AccessMethodFile.h"
#include "CoreClasses/IOTestResults.h"
#include "CoreClasses/TransferStatistics.h"
#include "Platform/UncachedFile.h"
#include "Programs/CommandLine/TestPlan.h"

#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

/// What a measurement line of the log says, kept for the JSON document.
struct TestSample {
    explicit TestSample(const IOTestResults& results);

    struct Side {
        bool isStarted;
        std::uint32_t transfers;
        std::uint32_t averageKBps;
        std::uint32_t recentKBps;
        std::uint32_t slowestMS;  ///< as the log line has it: since the statistics before
    };

    std::uint32_t elapsedSeconds;
    std::int32_t phase;  ///< a `TestPhase`
    Side writes;
    Side reads;
};

/// Everything about one test that the headless program reports: filled while it runs, complete when it has ended.
struct TestReport {
    enum class State {
        Running,      ///< not at its end yet
        Completed,    ///< ran as long as it was to run
        Interrupted,  ///< ended by a signal
        NotStarted
    };

    State state = State::Running;
    TestPlan plan;
    std::tm startedAt{};
    int signal = 0;            ///< that asked for the end; 0 for none
    std::string error{};       ///< why the test could not start
    std::string methodName{};  ///< of the access method that ran; empty when none did
    IOTestResults results;
    TransferStatistics writes;
    TransferStatistics reads;
    FileCacheReport fileCache;
    std::int32_t overThreshold = 0;  ///< transfers, of both directions
    std::vector<TestSample> samples;
    bool isAbandoned = false;                 ///< the worker hung in a transfer and was not waited for
    std::vector<TypedPath> scratchFilesLeft;  ///< that could not be removed, or by an abandoned worker

    [[nodiscard]] std::uint64_t Errors() const { return writes.errors + reads.errors; }
    [[nodiscard]] const TransferStatistics& Of(Direction direction) const {
        return direction == Direction::Write ? writes : reads;
    }
};

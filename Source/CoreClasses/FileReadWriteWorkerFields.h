#pragma once

#include "CoreClasses/FileReadWriteWorker.h"

/// The fields of one direction, so that reading and writing share one loop and one arithmetic.
struct FileReadWriteWorker::DirectionFields {
    std::int32_t phaseCode;
    std::uint32_t FileReadWriteWorker::*phaseSeconds;
    std::uint32_t FileReadWriteWorker::*secondsTotal;
    std::uint32_t FileReadWriteWorker::*phaseStart;
    std::uint32_t FileReadWriteWorker::*fragmentStart;
    std::uint64_t FileReadWriteWorker::*bytesAtFragmentStart;
    bool IOTestResults::*started;
    std::uint32_t IOTestResults::*completed;
    std::uint64_t IOTestResults::*bytes;
    std::uint32_t IOTestResults::*recentKBPS;
    std::uint32_t IOTestResults::*averageKBPS;
    std::uint32_t IOTestResults::*errors;
    std::uint32_t IOTestResults::*peakMS;
    bool IOTestResults::*overflow;
};

#pragma once

#include "CoreClasses/IOTestParameters.h"

#include <cstdint>

/// Values of `IOTestResults::m_phase`.
enum TestPhase : std::int32_t { kPhaseNone = 0, kPhaseRead = 1, kPhaseWrite = 2 };

/// What a test has measured so far, as a worker hands it out. Rates are in KB/s (1 KB = 1024 bytes) and change only
/// when a phase begins or a fragment of at least five seconds ends; counters stop at `kCounterCap`.
class IOTestResults {
public:
    IOTestResults() = default;
    IOTestResults(const IOTestResults&) = default;
    IOTestResults& operator=(const IOTestResults&) = default;
    virtual ~IOTestResults() = default;

    /// Set every field but the parameters to its initial value. The same operation under two names.
    void ClearResults();
    IOTestResults& InitResults();

    std::uint32_t m_writePeakMS =
        0;  ///< slowest transfer between the last two updates, if the later was in a write phase
    std::uint32_t m_readPeakMS = 0;  ///< the same for a read phase
    bool m_isValid = true;           ///< a cleared record or a fresh copy from the worker
    std::int32_t m_phase = kPhaseNone;
    bool m_readsStarted = false;
    bool m_writesStarted = false;
    std::uint32_t m_readsCompleted = 0;
    std::uint32_t m_writesCompleted = 0;
    std::uint64_t m_bytesRead = 0;
    std::uint64_t m_bytesWritten = 0;
    std::uint32_t m_readRecentKBPS = 0;  ///< over the last finished fragment
    std::uint32_t m_writeRecentKBPS = 0;
    std::uint32_t m_readAvgKBPS = 0;  ///< over all time in read phases
    std::uint32_t m_writeAvgKBPS = 0;
    std::uint32_t m_readErrors = 0;  ///< failed opens, reads and file preparations
    std::uint32_t m_writeErrors = 0;
    std::uint32_t m_elapsedSeconds = 0;  ///< since the worker's thread began; frozen when it ends
    bool m_readCountOverflow = false;    ///< a transfer was completed with its counter at the cap
    bool m_writeCountOverflow = false;
    IOTestParameters m_parameters;  ///< of the test
};

/// One of the slowest transfers of a test.
struct ReadTimeRecord {
    std::uint64_t m_time = 0;  ///< ms
    std::uint32_t m_when = 0;  ///< whole seconds of the clock when it was stored
};

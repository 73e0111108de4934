#pragma once

#include "CoreClasses/COutputMgr.h"
#include "CoreClasses/FileReadWriteWorker.h"
#include "Support/SimulatedClock.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// The date text of so many seconds after a simulated clock's start.
[[nodiscard]] std::string DateText(int seconds);

/// All bytes of a file (native path).
[[nodiscard]] std::string ContentOf(const std::string& path);

/// The messages of a log file (native path) between its banners, without the carriage return that the log adds to each.
[[nodiscard]] std::vector<std::string> MessagesOf(const std::string& logPath);

/// Runs tests of the engine to their end, on a simulated clock and with both logs. Unless told otherwise: 1024 KB at
/// 4096 KB/s for a minute, writes then reads, with a limit of 1 MB, in a folder of its own.
class EngineTest : public testing::Test {
protected:
    EngineTest();

    /// Runs a test by a method or with a worker; `meanwhile` goes on beside it on this thread, in the same time.
    void Run(int method, const std::function<void()>& meanwhile = {});
    void Run(std::unique_ptr<FileReadWriteWorker> worker, const std::function<void()>& meanwhile = {});

    /// Colon path of a file in the tested folder.
    [[nodiscard]] std::string File(const std::string& name) const { return m_folder.Colon(name); }

    /// "date\r" of so many seconds after the last run began, which it does with a whole second.
    [[nodiscard]] std::string At(int seconds) const { return DateText(m_startSecond + seconds) + '\r'; }

    /// Writes and reads completed, write and read errors of the last run.
    [[nodiscard]] std::vector<std::uint32_t> Counts() const;

    SimulatedClock m_clock;
    TemporaryFolder m_folder;
    IOTestParameters m_parameters;

    // What the last run left.
    std::unique_ptr<FileReadWriteWorker> m_worker;
    IOTestResults m_results;
    std::vector<std::string> m_lines;       ///< messages of the output log, but for those about the file cache
    std::vector<std::string> m_cacheLines;  ///< these
    std::vector<std::string> m_errors;      ///< messages of the error log

private:
    TemporaryFolder m_logs;
    COutputMgr m_output;
    int m_startSecond = 0;
};

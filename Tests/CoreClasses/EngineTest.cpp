#include "CoreClasses/EngineTest.h"

#include "CoreClasses/WorkerFactory.h"
#include "Framework/Base/LThread.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <sstream>
#include <utility>

std::string DateText(int seconds) {
    const int time = 9 * 3600 + 3 * 60 + 7 + seconds;
    const auto twoDigits = [](int number) { return std::to_string(100 + number).substr(1); };
    return "Mon January 5, 2004 " + twoDigits(time / 3600) + ':' + twoDigits(time / 60 % 60) + ':' +
           twoDigits(time % 60);
}

std::string ContentOf(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

std::vector<std::string> MessagesOf(const std::string& logPath) {
    constexpr std::ptrdiff_t openingLines = 5;
    constexpr std::size_t closingLines = 2;
    std::istringstream log(ContentOf(logPath));
    std::vector<std::string> messages;
    for (std::string line; std::getline(log, line, '\r');) {
        if (line.empty()) {
            messages.back() += '\r';  // the message had a return of its own
        } else {
            messages.push_back(line);
        }
    }
    messages.erase(messages.begin(), messages.begin() + openingLines);
    messages.resize(messages.size() - closingLines);
    return messages;
}

EngineTest::EngineTest() {
    m_parameters.SetPathValue(m_folder.Colon().c_str());
    m_parameters.m_transferSizeKB = 1024;
    m_parameters.m_transferRateKBps = 4096;
    m_parameters.m_durationMinutes = 1;
    m_parameters.m_maxFileSizeMB = 1;
}

void EngineTest::Run(int method, const std::function<void()>& meanwhile) {
    Run(MakeWorker(method).worker, meanwhile);
}

void EngineTest::Run(std::unique_ptr<FileReadWriteWorker> worker, const std::function<void()>& meanwhile) {
    const std::uint64_t elapsed = m_clock.ElapsedMicroseconds();
    const std::uint64_t start = (elapsed + 999'999) / 1'000'000;
    m_clock.SleepUntil(m_clock.Microseconds() + start * 1'000'000 - elapsed);
    m_startSecond = static_cast<int>(start);
    ASSERT_TRUE(m_output.SetOutputFile(m_logs.Colon("output").c_str()));
    ASSERT_TRUE(m_output.SetErrorFile(m_logs.Colon("errors").c_str()));
    m_worker = std::move(worker);
    m_worker->SetTestParameters(m_parameters);
    m_worker->SetOutputMgr(&m_output);
    {
        std::optional<SimulatedClock::Participant> self;
        if (meanwhile) {
            self.emplace(m_clock);
            m_clock.ExpectThread();
        }
        ASSERT_TRUE(m_worker->StartWorker());
        if (meanwhile) {
            meanwhile();
        }
    }
    if (!LThread::JoinFinished(100'000).empty()) {
        std::abort();  // hangs, and would go on using what the test gives back
    }
    ASSERT_TRUE(m_worker->IsDone());
    m_output.CloseFiles();
    m_worker->GetTestResults(m_results);
    m_errors = MessagesOf(m_logs.Native("errors"));
    m_lines = MessagesOf(m_logs.Native("output"));
    const auto cacheLines = std::stable_partition(
        m_lines.begin(), m_lines.end(), [](const std::string& line) { return !line.starts_with("File cache: "); });
    m_cacheLines.assign(cacheLines, m_lines.end());
    m_lines.erase(cacheLines, m_lines.end());
}

std::vector<std::uint32_t> EngineTest::Counts() const {
    return {m_results.m_writesCompleted, m_results.m_readsCompleted, m_results.m_writeErrors, m_results.m_readErrors};
}

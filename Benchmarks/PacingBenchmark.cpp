// How exactly paced transfers come: real files in the folder for temporary ones (TMPDIR), the system's clock, and what
// the clock is asked for.

#include "CoreClasses/FileReadWriteWorker.h"
#include "CoreClasses/WorkerFactory.h"
#include "Framework/Base/LThread.h"
#include "Platform/Clock.h"
#include "Platform/ColonPath.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

namespace {

/// Hands on the system's clock, and writes down for the thread that pauses when it wished to go on and when it did.
class PauseRecorder final : public Clock {
public:
    struct Start {
        std::uint64_t wishedUS = 0;
        std::uint64_t seenUS = 0;
    };

    PauseRecorder() : m_system(*Clock::Replace(this)) {}
    PauseRecorder(const PauseRecorder&) = delete;
    PauseRecorder& operator=(const PauseRecorder&) = delete;
    ~PauseRecorder() override { Clock::Replace(nullptr); }

    std::uint64_t Microseconds() override {
        const std::uint64_t now = m_system.Microseconds();
        if (m_wishedUS != 0 && std::this_thread::get_id() == m_thread) {
            m_starts.push_back({m_wishedUS, now});
            m_wishedUS = 0;
        }
        return now;
    }
    void SleepUntil(std::uint64_t deadline) override {
        m_thread = std::this_thread::get_id();
        m_system.SleepUntil(deadline);
        m_wishedUS = deadline;
    }
    std::uint32_t LocalSeconds() override { return m_system.LocalSeconds(); }
    std::uint32_t LocalSecondsAt(std::uint64_t microseconds) override { return m_system.LocalSecondsAt(microseconds); }
    std::tm LocalDateTime() override { return m_system.LocalDateTime(); }
    void SleepMilliseconds(std::uint32_t ms) override { m_system.SleepMilliseconds(ms); }

    /// The first reading after each pause, which is when a transfer starts. To be asked for when the thread has ended.
    [[nodiscard]] const std::vector<Start>& Starts() const { return m_starts; }

private:
    Clock& m_system;
    std::thread::id m_thread;      // written and read by the one thread that pauses, as are the next two
    std::uint64_t m_wishedUS = 0;  // until the next reading
    std::vector<Start> m_starts;
};

IOTestParameters PacedWrites(std::uint32_t intervalMS, const std::string& folder) {
    IOTestParameters parameters;
    parameters.m_standardTestID = kCustomTestID;
    parameters.m_readWriteMethod = kWritesOnly;
    parameters.m_fileAccessMethod = kAccessMacFileManager;
    parameters.m_transferSizeKB = 64;
    parameters.m_transferRateKBps = 64'000 / intervalMS;
    parameters.m_maxFileSizeMB = 1000;
    parameters.SetPathValue(ColonPath::FromNative(folder).value_or("").c_str());
    return parameters;
}

struct Spread {
    double mean = 0.0;
    double deviation = 0.0;
};

Spread SpreadOf(const std::vector<double>& values) {
    const auto count = static_cast<double>(values.size());
    const double mean = std::accumulate(values.begin(), values.end(), 0.0) / count;
    const double squares = std::accumulate(values.begin(), values.end(), 0.0, [&](double sum, double value) {
        return sum + (value - mean) * (value - mean);
    });
    return {mean, std::sqrt(squares / count)};
}

void Report(benchmark::State& state, double intervalUS, const std::vector<PauseRecorder::Start>& starts) {
    std::vector<double> intervals;
    std::vector<double> errors;
    std::vector<double> lateness;
    for (std::size_t i = 1; i < starts.size(); ++i) {
        intervals.push_back(static_cast<double>(starts[i].seenUS - starts[i - 1].seenUS));
        errors.push_back(std::abs(intervals.back() - intervalUS));
        lateness.push_back(static_cast<double>(starts[i].seenUS - starts[i].wishedUS));
    }
    state.counters["transfers"] = static_cast<double>(starts.size());
    state.counters["mean_error_us"] = SpreadOf(errors).mean;
    state.counters["mean_late_us"] = SpreadOf(lateness).mean;
    state.counters["jitter_us"] = SpreadOf(intervals).deviation;
}

/// `mean_error_us`: the mean distance of the time between two starts from the interval asked for. Pauses are whole
/// milliseconds, for which the transfer's own is cut to whole ones, so that it is half a millisecond where that time is
/// anyhow. `mean_late_us` is the rest: how long after the end of its pause a transfer starts. `jitter_us` is the
/// standard deviation of the time between two starts.
void PacedTransfers(benchmark::State& state) {
    const auto intervalMS = static_cast<std::uint32_t>(state.range(0));
    const std::string folder = (std::filesystem::temp_directory_path() / "gaugeline-pacing-XXXXXX").string();
    std::string name = folder;
    if (mkdtemp(name.data()) == nullptr) {
        state.SkipWithError("no folder for the file could be made");
        return;
    }
    for ([[maybe_unused]] auto _ : state) {
        PauseRecorder clock;
        const auto worker = MakeWorker(kAccessMacFileManager).worker;
        worker->SetTestParameters(PacedWrites(intervalMS, name));
        if (!worker->StartWorker()) {
            state.SkipWithError("the worker did not start");
            break;
        }
        LThread::Sleep(static_cast<std::uint32_t>(state.range(1)) * 1000);
        worker->SetStop();
        while (!worker->IsDone()) {
            LThread::Sleep(10);
        }
        LThread::JoinFinished(1000);
        Report(state, intervalMS * 1000.0, clock.Starts());
    }
    std::filesystem::remove_all(name);
}
BENCHMARK(PacedTransfers)->ArgNames({"interval_ms", "seconds"})->Args({250, 30})->Args({10, 15})->Iterations(1);

}  // namespace

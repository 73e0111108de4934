// What the engine itself costs: a transfer without its storage, a log line, and the copies that an observer takes.

#include "CoreClasses/COutputMgr.h"
#include "CoreClasses/FileReadWriteWorker.h"
#include "CoreClasses/WorkerFactory.h"
#include "Framework/Base/LThread.h"
#include "Platform/Clock.h"
#include "Platform/ColonPath.h"
#include "SupportingClasses/CTime.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <ctime>
#include <new>

namespace {

std::atomic<std::uint64_t> allocations{0};

void* CountedAllocation(std::size_t size, std::size_t alignment) {
    allocations.fetch_add(1, std::memory_order_relaxed);
    void* memory = std::aligned_alloc(alignment, (size + alignment) / alignment * alignment);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

}  // namespace

// All other forms of these end in the ones here.
void* operator new(std::size_t size) {
    return CountedAllocation(size, __STDCPP_DEFAULT_NEW_ALIGNMENT__);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return CountedAllocation(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
    std::free(memory);
}

namespace {

IOTestParameters UnpacedSelfTest() {
    IOTestParameters parameters;
    parameters.m_readWriteMethod = kWritesOnly;
    parameters.m_transferRateKBps = kUnlimitedRate;
    parameters.m_transferSizeKB = 1024;
    parameters.m_maxFileSizeMB = 0xFFFF'FFFF;  // one pass does not come to its end
    return parameters;
}

/// A quarter of a second of the unpaced self test on its own thread. Where others use the machine, the processor's time
/// is the better figure. The allocations are those of all threads while the transfer loop runs, its begin and end left
/// out.
void TransferOfTheSelfTest(benchmark::State& state) {
    std::uint64_t transfers = 0;
    std::uint64_t allocationsInLoop = 0;
    const std::clock_t processTime = std::clock();
    for ([[maybe_unused]] auto _ : state) {
        const auto worker = MakeWorker(kAccessSelfTest).worker;
        worker->SetTestParameters(UnpacedSelfTest());
        if (!worker->StartWorker()) {
            state.SkipWithError("the worker did not start");
            return;
        }
        LThread::Sleep(50);
        const std::uint64_t before = allocations.load();
        LThread::Sleep(200);
        allocationsInLoop += allocations.load() - before;
        worker->SetStop();
        while (!worker->IsDone()) {
            LThread::Sleep(1);
        }
        const TransferStatistics statistics = worker->GetTransferStatistics(Direction::Write);
        transfers += statistics.transfers;
        state.SetIterationTime(static_cast<double>(statistics.phaseUS) / 1e6);
    }
    const double cpuSeconds = static_cast<double>(std::clock() - processTime) / CLOCKS_PER_SEC;
    LThread::JoinFinished(1000);
    const auto perRate = benchmark::Counter::kIsRate | benchmark::Counter::kInvert;
    state.counters["time_per_transfer"] = benchmark::Counter(static_cast<double>(transfers), perRate);
    state.counters["cpu_per_transfer"] = cpuSeconds / static_cast<double>(transfers);
    state.counters["allocations_in_loop"] = static_cast<double>(allocationsInLoop);
}
BENCHMARK(TransferOfTheSelfTest)->UseManualTime()->Unit(benchmark::kMillisecond);

/// To a device that takes no time, so that it is the formatting and the lock.
void LogLine(benchmark::State& state) {
    COutputMgr output;
    if (!output.SetOutputFile(ColonPath::FromNative("/dev/null").value_or("").c_str())) {
        state.SkipWithError("no /dev/null to log to");
        return;
    }
    for ([[maybe_unused]] auto _ : state) {
        output.Write(kOutProgress, outLevelSecondary, "Writer %d opened file %s %s\r", 0, "Data:Tests:IOT0.tio",
                     CTime::GetCurrentDateTime().CStr());
    }
    output.CloseFiles();
}
BENCHMARK(LogLine);

void ResultsCopy(benchmark::State& state) {
    const auto worker = MakeWorker(kAccessSelfTest).worker;
    IOTestResults results;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(worker->GetTestResults(results));
    }
}
BENCHMARK(ResultsCopy);

void TransferStatisticsCopy(benchmark::State& state) {
    const auto worker = MakeWorker(kAccessSelfTest).worker;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(worker->GetTransferStatistics(Direction::Write));
    }
}
BENCHMARK(TransferStatisticsCopy);

void HistogramAdd(benchmark::State& state) {
    TransferTimeHistogram histogram;
    std::uint64_t value = 1;
    for ([[maybe_unused]] auto _ : state) {
        histogram.Add(value >> 40);  // up to 16 s
        value = value * 6'364'136'223'846'793'005 + 1'442'695'040'888'963'407;
    }
    benchmark::DoNotOptimize(histogram.Percentile(0.5));
}
BENCHMARK(HistogramAdd);

void ClockReading(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(Clock::Current().Microseconds());
    }
}
BENCHMARK(ClockReading);

}  // namespace

#pragma once

#include "CoreClasses/FileReadWriteWorker.h"
#include "Platform/Clock.h"

#include <functional>
#include <string>

/// A worker whose transfers a test makes itself. Its phases run on whatever thread calls them.
class ScriptedWorker final : public FileReadWriteWorker {
public:
    ScriptedWorker() {
        m_readFileList = &m_fileList;
        m_transferBytes = kBytesPerMB;
        m_writePhaseSeconds = m_readPhaseSeconds = 60;
    }

    /// A completed transfer that takes so long in the clock's time.
    static TransferOutcome Take(std::uint64_t microseconds, std::size_t size) {
        Clock::Current().SleepUntil(Clock::Current().Microseconds() + microseconds);
        return {.counted = size, .advance = size};
    }

    int WritePhase(FileReadWriteWorker* /*worker*/) override { return Phase(Direction::Write, 'W'); }
    int ReadPhase(FileReadWriteWorker* /*worker*/) override { return Phase(Direction::Read, 'R'); }
    int PrepareForReadPhase(FileReadWriteWorker* /*worker*/) override {
        m_calls += 'P';
        return m_canRead ? 1 : 0;
    }
    int VCleanupFiles() override {
        m_calls += 'C';
        return FileReadWriteWorker::VCleanupFiles();
    }
    bool PrepareWorker() override { return m_canStart; }
    bool CleanupWorker() override { return true; }

    using FileReadWriteWorker::m_minTransfersPerFragment;
    using FileReadWriteWorker::m_results;
    using FileReadWriteWorker::m_transferBytes;
    using FileReadWriteWorker::m_transferDelayMS;
    using FileReadWriteWorker::m_writePhaseSeconds;

    /// Makes one transfer: may sleep, hang, look at the worker. Answers how it is to be judged.
    std::function<TransferOutcome(std::size_t size)> m_transfer = [](std::size_t size) {
        return Take(1'000'000, size);
    };
    bool m_canStart = true;
    bool m_canRead = true;
    std::string m_calls;  ///< of the phase operations: W, R, P(repare), C(lean up)

private:
    class File final : public AccessMethodFile {
    public:
        File(Direction direction, ScriptedWorker& worker)
            : AccessMethodFile(direction, worker.Output(), worker.ReaderNumber()), m_worker(worker) {}

        void PrepareBuffer(TransferBuffer& /*buffer*/) override {}
        [[nodiscard]] bool Open(const CString& /*name*/) override { return true; }
        [[nodiscard]] std::uint64_t Limit() const override { return kNoLimit; }
        void Transfer(std::byte* /*buffer*/, std::size_t size) override { m_outcome = m_worker.m_transfer(size); }
        [[nodiscard]] TransferOutcome Judge() const override { return m_outcome; }
        void Close() override {}

    private:
        ScriptedWorker& m_worker;
        TransferOutcome m_outcome;
    };

    int Phase(Direction direction, char call) {
        m_calls += call;
        File file(direction, *this);
        return RunPhase(direction, file);
    }
    [[nodiscard]] bool NewFileName(CString& name) override {
        name = "scripted";
        return true;
    }
};

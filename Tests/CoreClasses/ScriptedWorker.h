#pragma once

#include "CoreClasses/FileReadWriteWorker.h"
#include "Platform/Clock.h"

#include <functional>

/// A worker whose transfers a test makes itself, without any storage. Its phases run on whatever thread calls them.
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

    int WritePhase(FileReadWriteWorker* /*worker*/) override { return Phase(Direction::Write); }
    int ReadPhase(FileReadWriteWorker* /*worker*/) override { return Phase(Direction::Read); }
    int PrepareForReadPhase(FileReadWriteWorker* /*worker*/) override {
        m_fileList.AddFile("scripted");
        return 1;
    }
    bool PrepareWorker() override { return true; }
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
    std::uint64_t m_fileBytes = AccessMethodFile::kNoLimit;  ///< of a file, which is then opened again

private:
    class File final : public AccessMethodFile {
    public:
        File(Direction direction, ScriptedWorker& worker)
            : AccessMethodFile(direction, worker.Output(), worker.ReaderNumber()), m_worker(worker) {}

        void PrepareBuffer(TransferBuffer& /*buffer*/) override {}
        [[nodiscard]] bool Open(const CString& /*name*/) override { return true; }
        [[nodiscard]] std::uint64_t Limit() const override { return m_worker.m_fileBytes; }
        void Transfer(std::byte* /*buffer*/, std::size_t size) override { m_outcome = m_worker.m_transfer(size); }
        [[nodiscard]] TransferOutcome Judge() const override { return m_outcome; }
        void Close() override {}

    private:
        ScriptedWorker& m_worker;
        TransferOutcome m_outcome;
    };

    int Phase(Direction direction) {
        File file(direction, *this);
        return RunPhase(direction, file);
    }
    [[nodiscard]] bool NewFileName(CString& name) override {
        name = "scripted";
        return true;
    }
};

#pragma once

#include "CoreClasses/FileReadWriteWorker.h"
#include "CoreClasses/ScratchFileNames.h"

#include <string>

/// What the access methods with real files share: scratch names and the course of preparing a file to read.
class ScratchFileWorker : public FileReadWriteWorker {
public:
    int PrepareForReadPhase(FileReadWriteWorker* worker) final;
    bool PrepareWorker() override { return true; }
    bool CleanupWorker() override { return true; }

protected:
    /// `yieldIntervalUS`: how often the making of a sample file reports that it is still at it.
    ScratchFileWorker(ScratchFileNames::IsTaken isTaken, mode_t permissions, std::uint64_t yieldIntervalUS);

    /// Whether an existing file under test (native path) is there to be read.
    [[nodiscard]] bool IsThere(const CString& name) const;

    /// Makes the sample file `name` at its full size and returns non-zero, or counts and logs why not and returns 0.
    virtual int MakeSampleFile(const CString& name) = 0;

    /// Fills a sample file block by block: calls `writeBlock(offset)` for `first`, `first` + `step`... below `size`
    /// until a stop is asked for, and reports at each yield interval.
    template <typename WriteBlock>
    void WriteBlocks(std::uint64_t first, std::uint64_t step, std::uint64_t size, WriteBlock writeBlock);

    /// Logs that the file is being closed and gives the file system time for it.
    void FinishPreparation() const;

    /// Count a read error and log it; 0, for `MakeSampleFile` to return.
    int FailCreation(const CString& name, int error);
    int FailSampleData(const CString& name, int number);

    [[nodiscard]] bool NewFileName(CString& name) final;

    /// The offset at which a write phase begins its file anew, kept in 32 bits: limits of 4096 MB and more wrap.
    [[nodiscard]] std::uint32_t WriteLimit() const { return m_parameters.m_maxFileSizeMB * kBytesPerMB; }
    [[nodiscard]] std::uint64_t SampleSize() const { return std::uint64_t{m_parameters.m_maxFileSizeMB} * kBytesPerMB; }

private:
    [[nodiscard]] bool Lists(const CString& name) const;
    void LogCreating() const;
    [[nodiscard]] static std::uint64_t Now();

    ScratchFileNames::IsTaken m_isTaken;
    mode_t m_permissions;
    std::uint64_t m_yieldIntervalUS;
};

template <typename WriteBlock>
void ScratchFileWorker::WriteBlocks(std::uint64_t first, std::uint64_t step, std::uint64_t size,
                                    WriteBlock writeBlock) {
    std::uint64_t lastYield = Now();
    for (std::uint64_t offset = first; offset < size && !IsStopRequested(); offset += step) {
        writeBlock(offset);
        const std::uint64_t now = Now();
        if (now - lastYield >= m_yieldIntervalUS) {
            lastYield = now;
            LogCreating();
        }
    }
}

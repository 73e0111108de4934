#pragma once

#include "CoreClasses/FileReadWriteWorker.h"

/// The access method that touches no file: naming, pacing, timing, statistics and logging are real, the bytes are not
/// counted. It measures the engine itself.
class SelfTestFileWorker final : public FileReadWriteWorker {
public:
    int ReadPhase(FileReadWriteWorker* worker) override;
    int WritePhase(FileReadWriteWorker* worker) override;
    int PrepareForReadPhase(FileReadWriteWorker* worker) override;
    bool PrepareWorker() override { return true; }
    bool CleanupWorker() override { return true; }

    /// Empties the file list and deletes nothing. -1 when there is no list, else 0.
    virtual int CleanupFiles(FileReadWriteWorker* worker);

private:
    [[nodiscard]] bool NewFileName(CString& name) override;
    void LogPreparing(int mask) const;
};

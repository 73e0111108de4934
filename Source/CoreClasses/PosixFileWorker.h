#pragma once

#include "CoreClasses/ScratchFileWorker.h"

/// The access method that reads and writes through C streams, by way of the file cache. Each pass of a write phase
/// empties its file; the sample file is sparse: one block of 512 bytes at the end of every 128 KB.
class PosixFileWorker final : public ScratchFileWorker {
public:
    PosixFileWorker();

    int ReadPhase(FileReadWriteWorker* worker) override;
    int WritePhase(FileReadWriteWorker* worker) override;

private:
    int MakeSampleFile(const CString& name) override;
};

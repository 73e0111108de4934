#pragma once

#include "CoreClasses/ScratchFileWorker.h"

#include <optional>
#include <string>

/// The access method that automatic selection chooses: plain descriptors, round the file cache unless the test wants it
/// otherwise. A write phase overwrites its file in place and stops at the volume's free space; the sample file is
/// written in full, in blocks of 4 MB.
class MACWorker final : public ScratchFileWorker {
public:
    MACWorker();

    int ReadPhase(FileReadWriteWorker* worker) override;
    int WritePhase(FileReadWriteWorker* worker) override;

private:
    int MakeSampleFile(const CString& name) override;
    [[nodiscard]] std::optional<std::string> CreateSampleFile(const CString& name);
    [[nodiscard]] std::uint64_t SizeThatFits() const;

    /// Where the file last prepared for reading lies.
    struct FileSpec {
        std::string folder;  ///< native; names the volume whose free space is asked; empty: the default volume
    };

    FileSpec m_fileSpec;
};

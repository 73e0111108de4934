#pragma once

#include "Platform/CStream.h"
#include "Platform/CriticalRegion.h"
#include "SupportingClasses/CString.h"

#include <array>
#include <cstdint>
#include <vector>

/// Where a message goes; bits that may be combined.
enum OutputDestination : int {
    kOutToOutputFile = 1,
    kOutToErrorFile = 2,
    kOutToOutputText = 4,
    kOutToErrorText = 8,

    kOutProgress = kOutToOutputFile | kOutToOutputText,
    kOutWarning = kOutToOutputFile | kOutToErrorFile | kOutToOutputText,
    kOutError = kOutToErrorFile | kOutToErrorText
};

/// How important a message is; the files take levels up to the manager's own.
enum outFileLevels : std::int32_t { outLevelPrimary = 1, outLevelSecondary = 2 };

/// Writes the output log and the error log, and mirrors the latest message into two on-screen texts.
///
/// Every message of every thread goes through one buffer that a critical region guards: either `Write`, or
/// `BlockingGetGlobalOutputBuffer`, formatting within `GetGlobalOutputBufferSize` bytes, and
/// `UnBlockingWriteCurrentOutputBuffer`, always as a pair on one thread. The on-screen texts are written inside the
/// region; who shows them enters it with `SafeEnterOutputCS`.
///
/// Both logs are text whose lines end in a carriage return alone. Log paths are colon paths. Lines reach the disk when
/// a stream's buffer fills or its file is closed; that some were lost is known when the log has been closed.
class COutputMgr {
public:
    /// Registers itself as the process-wide instance if none is registered.
    COutputMgr();
    /// The owner has called `CloseFiles` before.
    virtual ~COutputMgr();
    COutputMgr(const COutputMgr&) = delete;
    COutputMgr& operator=(const COutputMgr&) = delete;

    /// The registered instance or null; never makes one.
    [[nodiscard]] static COutputMgr* GetSingletonOutMgrWithoutCreate();

    void SetOutLevel(outFileLevels level);

    /// The text that receives a copy (the first 255 characters) of each message for the screen; null for none. The
    /// owner keeps it alive as long as this manager.
    void SetOutputCStrPtr(CString* text);
    void SetErrCStrPtr(CString* text);

    /// Closes the log that is open and opens `path` (created, or emptied if it exists) with an opening banner. False
    /// for a null path, which is not remembered, and for one that cannot be opened, which is; no log is open then.
    bool SetOutputFile(const char* path);
    bool SetErrorFile(const char* path);

    /// Write the closing banner and close; nothing happens when the log is not open.
    void CloseOutFile();
    void CloseErrFile();
    void CloseFiles();

    /// The paths of the logs closed since the last call that did not take all of their lines: their volume was full, or
    /// failed.
    [[nodiscard]] std::vector<CString> TakeIncompleteLogs();

    /// The path last set, in the calling thread's conversion buffer (see `CString::GetChars`).
    [[nodiscard]] const char* GetOutFilePath() const;
    [[nodiscard]] const char* GetErrFilePath() const;

    /// The shared buffer, without entering the region.
    [[nodiscard]] char* GetGlobalOutputBuffer();
    /// Bytes of the buffer that callers may use, the terminating NUL included.
    [[nodiscard]] int GetGlobalOutputBufferSize() const;

    /// Enters the region, waiting without limit, and returns the buffer.
    [[nodiscard]] char* BlockingGetGlobalOutputBuffer();
    /// Writes the buffer's message to the destinations of `mask` and leaves the region.
    void UnBlockingWriteCurrentOutputBuffer(int mask, outFileLevels level);
    /// Writes the buffer's message, cut at 1023 characters; the caller is in the region.
    void WriteCurrentOutputBuffer(int mask, outFileLevels level);

    /// Formats a message as `printf` does, cut at the buffer's size, and writes it. The usual way to log.
    void Write(int mask, outFileLevels level, const char* format, ...) __attribute__((format(printf, 4, 5)));

    void SafeEnterOutputCS();
    void SafeLeaveOutputCS();

private:
    /// One of the two logs: its open stream and the path last given for it.
    struct LogFile {
        const char* openingCaption;
        const char* closingCaption;
        CString path;
        CStream stream;
    };

    static constexpr int kBufferSize = 1024;
    static constexpr int kAllocatedSize = kBufferSize + 10;

    bool Open(LogFile& log, const char* path);
    void Close(LogFile& log);

    // All guarded by m_criticalRegion.
    CString* m_outputCStrPtr = nullptr;
    CString* m_errCStrPtr = nullptr;
    std::array<char, kAllocatedSize> m_buffer{};
    mutable CriticalRegion m_criticalRegion;
    outFileLevels m_outLevel = outLevelSecondary;
    LogFile m_outFile{"Output File:", "Closing Output File:", {}, {}};
    LogFile m_errFile{"Error Log File:", "Closing Error Log File:", {}, {}};
    std::vector<CString> m_incompleteLogs;
};

#pragma once

#include "SupportingClasses/CString.h"
#include "SupportingClasses/IOTesterConsts.h"

#include <cstdint>

class COutputMgr;

/// Values of `IOTestParameters::m_fileAccessMethod`.
enum FileAccessMethod : std::int32_t {
    kAccessAutomatic = 0,
    kAccessMacFileManager = 1,
    kAccessSelfTest = 2,
    kAccessPosix = 3
};

/// Values of `IOTestParameters::m_readWriteMethod`.
enum ReadWriteMethod : std::int32_t { kWritesThenReads = 0, kWritesOnly = 1, kReadsOnly = 2 };

/// One test's settings. A plain value; each thread works on a copy of its own.
class IOTestParameters {
public:
    /// Every field at its default and the default test path, which the first default construction of the process
    /// settles (main thread only).
    IOTestParameters();
    IOTestParameters(const IOTestParameters& other);
    IOTestParameters& operator=(const IOTestParameters& other);
    virtual ~IOTestParameters() = default;

    /// Set every field but the two texts to its default. The same operation under two names.
    void InitParameters();
    void ClearParameters();

    /// Takes the first 255 characters of a colon path; null leaves the path as it is.
    void SetPathValue(const char* path);

    /// Copies into `out` the fields that a standard preset defines, and no others: duration, loop, path and the
    /// shared-storage mark stay the user's.
    void GetStandardParameters(IOTestParameters& out) const;

    /// Takes the values of the preset that `m_standardTestID` names; names a custom test "Custom Test". An unknown id
    /// changes nothing.
    void NormalizeStandardParameters();

    /// Writes the eleven parameter lines to the output log.
    void LogToStdOut(COutputMgr& output) const;

    /// The test path names an existing file to read rather than a folder; cleanup then deletes nothing.
    bool m_sharedFileInPath = false;
    CString m_testName;
    std::int32_t m_standardTestID = 0;         ///< preset index, or `kCustomTestID`
    std::uint32_t m_minWritesPerFragment = 5;  ///< transfers before a recent rate is taken
    std::uint32_t m_transferRateKBps = 384;    ///< or `kUnlimitedRate`; at least 2
    bool m_reservedFlagA = false;              ///< kept for the user; no test reads it
    bool m_loop = false;                       ///< repeat the cycle of phases until stopped
    std::int32_t m_fileAccessMethod = kAccessAutomatic;
    std::int32_t m_readWriteMethod = kWritesThenReads;
    std::uint32_t m_transferSizeKB = 256;  ///< at least 1
    std::uint32_t m_durationMinutes = 2;   ///< of one cycle; at least 1
    std::uint32_t m_maxFileSizeMB = 100;   ///< of one scratch file; at least 1
    CString m_drivePath;                   ///< colon path; set through `SetPathValue`
    bool m_pathIsCorvane = false;          ///< the path lies on the shared-storage system; shown, never tested
    bool m_reservedFlagB = true;           ///< kept for the user; no test reads it
    bool m_noCache = true;                 ///< go round the file cache where the access method can

    /// The default test path; empty until the first default construction.
    static CString sm_defaultPath;

private:
    void CopyScalars(const IOTestParameters& other);
};

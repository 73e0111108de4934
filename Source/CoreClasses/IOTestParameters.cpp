#include "CoreClasses/IOTestParameters.h"

#include "CoreClasses/COutputMgr.h"
#include "CoreClasses/IOTestParameterCollectionMgr.h"
#include "Platform/ColonPath.h"

CString IOTestParameters::sm_defaultPath;

namespace {

/// Name of the default volume with ':' appended; only the first value reaches the default test path.
CString& DefaultVolumeName() {
    static CString name;
    return name;
}

const char* AccessMethodLabel(std::int32_t method) {
    switch (method) {
        case kAccessAutomatic:
            return "Auto";
        case kAccessMacFileManager:
            return "MAC";
        default:
            return "Unknown";
    }
}

const char* ReadWriteMethodLabel(std::int32_t method) {
    switch (method) {
        case kWritesThenReads:
            return "Mixed R/W Sequential";
        case kWritesOnly:
            return "Sequential Writes";
        case kReadsOnly:
            return "Sequential Reads";
        default:
            return "Unknown";
    }
}

}  // namespace

IOTestParameters::IOTestParameters() {
    DefaultVolumeName() = ColonPath::DefaultVolume().c_str();
    DefaultVolumeName() += ":";
    if (sm_defaultPath.GetLength() == 0) {
        sm_defaultPath = DefaultVolumeName();
    }
    SetPathValue(sm_defaultPath.CStr());
}

IOTestParameters::IOTestParameters(const IOTestParameters& other) {
    *this = other;
}

IOTestParameters& IOTestParameters::operator=(const IOTestParameters& other) {
    if (this != &other) {
        CopyScalars(other);
        m_testName = other.m_testName;
        SetPathValue(other.m_drivePath.CStr());
    }
    return *this;
}

void IOTestParameters::CopyScalars(const IOTestParameters& other) {
    other.GetStandardParameters(*this);
    m_loop = other.m_loop;
    m_durationMinutes = other.m_durationMinutes;
    m_pathIsCorvane = other.m_pathIsCorvane;
}

void IOTestParameters::InitParameters() {
    const CString testName = m_testName;
    CopyScalars(IOTestParameters());
    m_testName = testName;
}

void IOTestParameters::ClearParameters() {
    InitParameters();
}

void IOTestParameters::SetPathValue(const char* path) {
    if (path != nullptr) {
        m_drivePath = path;
    }
}

void IOTestParameters::GetStandardParameters(IOTestParameters& out) const {
    out.m_fileAccessMethod = m_fileAccessMethod;
    out.m_readWriteMethod = m_readWriteMethod;
    out.m_transferSizeKB = m_transferSizeKB;
    out.m_maxFileSizeMB = m_maxFileSizeMB;
    out.m_reservedFlagA = m_reservedFlagA;
    out.m_transferRateKBps = m_transferRateKBps;
    out.m_minWritesPerFragment = m_minWritesPerFragment;
    out.m_standardTestID = m_standardTestID;
    out.m_testName = m_testName;
    out.m_sharedFileInPath = m_sharedFileInPath;
    out.m_reservedFlagB = m_reservedFlagB;
    out.m_noCache = m_noCache;
}

void IOTestParameters::NormalizeStandardParameters() {
    if (m_standardTestID == kCustomTestID) {
        m_testName = "Custom Test";
    } else {
        static_cast<void>(
            IOTestParameterCollectionMgr::GetSingleton()->GetCopyOfStandardParametersByID(m_standardTestID, *this));
    }
}

void IOTestParameters::LogToStdOut(COutputMgr& output) const {
    const auto writeText = [&output](const char* key, const char* value) {
        output.Write(kOutToOutputFile, outLevelPrimary, "Test Parameters - %s: %s\r", key, value);
    };
    const auto writeNumber = [&output](const char* key, std::uint32_t value) {
        output.Write(kOutToOutputFile, outLevelPrimary, "Test Parameters - %s: %d\r", key, static_cast<int>(value));
    };
    writeText("Test Name", m_testName.CStr());
    writeText("File Access API", AccessMethodLabel(m_fileAccessMethod));
    writeText("Read-Write Method", ReadWriteMethodLabel(m_readWriteMethod));
    writeNumber("Transfer Size KB", m_transferSizeKB);
    if (m_transferRateKBps == kUnlimitedRate) {
        writeText("Transfer Rate KBPS", "unlimited");
    } else {
        writeNumber("Transfer Rate KBPS", m_transferRateKBps);
    }
    writeNumber("Duration Minutes", m_durationMinutes);
    writeNumber("LOOP", m_loop ? 1 : 0);
    writeNumber("Max File Size MB", m_maxFileSizeMB);
    writeText("Drive Path To Test", m_drivePath.GetLength() == 0 ? "(NULL)" : m_drivePath.CStr());
    writeNumber("Path Is CORVANE", m_pathIsCorvane ? 1 : 0);
    writeNumber("Shared File Included in Path (for Reads)", m_sharedFileInPath ? 1 : 0);
}

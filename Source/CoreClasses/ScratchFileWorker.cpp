#include "CoreClasses/ScratchFileWorker.h"

#include "CoreClasses/COutputMgr.h"
#include "Framework/Base/LThread.h"
#include "Platform/Clock.h"
#include "Platform/ColonPath.h"
#include "SupportingClasses/CTime.h"

#include <algorithm>

namespace {

/// What a file system gets to close a sample file before it is read.
constexpr std::uint32_t kCloseMS = 1100;

}  // namespace

ScratchFileWorker::ScratchFileWorker(ScratchFileNames::IsTaken isTaken, mode_t permissions,
                                     std::uint64_t yieldIntervalUS)
    : m_isTaken(isTaken), m_permissions(permissions), m_yieldIntervalUS(yieldIntervalUS) {}

std::uint64_t ScratchFileWorker::Now() {
    return Clock::Current().Microseconds();
}

bool ScratchFileWorker::IsThere(const CString& name) const {
    const auto nativePath = ColonPath::ToNative(name.View());
    return nativePath && m_isTaken(*nativePath);
}

bool ScratchFileWorker::Lists(const CString& name) const {
    const std::vector<CString> names = m_fileList.Names();
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool ScratchFileWorker::NewFileName(CString& name) {
    return ScratchFileNames::TakeFree(ScratchFileNames::Folder(m_parameters), m_isTaken, m_permissions,
                                      m_nextFileNumber, name);
}

int ScratchFileWorker::PrepareForReadPhase(FileReadWriteWorker* worker) {
    if (Output() != nullptr) {
        Output()->Write(kOutWarning, outLevelPrimary, "Preparing reader %d for read test. %s\r", ReaderNumber(),
                        CTime::GetCurrentDateTime().CStr());
    }
    CleanupFiles(worker);
    CString name = m_parameters.m_drivePath;
    if (!m_parameters.m_sharedFileInPath && !NewFileName(name)) {
        return 0;
    }
    if (!Lists(name)) {  // an existing file stays listed from cycle to cycle
        m_fileList.AddFile(name.CStr());
    }
    if (m_parameters.m_sharedFileInPath && IsThere(name)) {
        return 1;
    }
    return MakeSampleFile(name);
}

void ScratchFileWorker::LogCreating() const {
    if (Output() != nullptr) {
        Output()->Write(kOutWarning, outLevelPrimary,
                        "Preparing reader %d for read test. ** Creating test file may be time-consuming. ** %s\r",
                        ReaderNumber(), CTime::GetCurrentDateTime().CStr());
    }
}

void ScratchFileWorker::FinishPreparation() const {
    if (Output() != nullptr) {
        Output()->Write(kOutWarning, outLevelPrimary,
                        "Finishing prepration for read test... ** Closing test data file may take several seconds or "
                        "more. ** %s\r",
                        CTime::GetCurrentDateTime().CStr());
        LThread::Sleep(kCloseMS);
    }
}

int ScratchFileWorker::FailCreation(const CString& name, int error) {
    if (Output() != nullptr) {
        Output()->Write(kOutError, outLevelSecondary,
                        "Error: could not create sample file for read test %s err no %d %s\r", name.CStr(), error,
                        CTime::GetCurrentDateTime().CStr());
    }
    CountError(Direction::Read);
    return 0;
}

int ScratchFileWorker::FailSampleData(const CString& name, int number) {
    CountError(Direction::Read);
    if (Output() != nullptr) {
        Output()->Write(kOutError, outLevelSecondary,
                        "Error writing sample data to file %s for read test. err no =%d %s\r", name.CStr(), number,
                        CTime::GetCurrentDateTime().CStr());
    }
    return 0;
}

#include "CoreClasses/FileReadWriteWorker.h"

#include "CoreClasses/COutputMgr.h"
#include "Platform/ColonPath.h"
#include "Platform/FileSystem.h"
#include "SupportingClasses/CTime.h"
#include "ThreadClasses/CIOTesterThread.h"

#include <exception>
#include <memory>
#include <system_error>

// Construction, start, the thread's body and cleanup. The phase loop is in FileReadWriteWorkerPhases.cpp, what is
// measured in FileReadWriteWorkerStatistics.cpp.

namespace {

constexpr std::uint32_t kLingerMS = 1000;

std::int32_t PacingIntervalMS(const IOTestParameters& parameters) {
    const std::uint32_t rate = parameters.m_transferRateKBps;
    if (rate == 0 || rate == kUnlimitedRate) {
        return 0;
    }
    return static_cast<std::int32_t>(parameters.m_transferSizeKB * 1000U / rate);
}

}  // namespace

FileReadWriteWorker::FileReadWriteWorker() : m_endTime(CTime::GetCurrentTime()), m_startTime(m_endTime) {
    CollectTopReadTimes(1);
}

FileReadWriteWorker::~FileReadWriteWorker() {
    EmptyReadTimeRecordArray();
}

bool FileReadWriteWorker::StartWorker() {
    if (m_parameters.m_drivePath.GetLength() == 0) {
        return false;
    }
    m_readFileList = &m_fileList;
    m_transferBytes = m_parameters.m_transferSizeKB << 10;
    m_readerNumber = 0;
    m_fileOpenDelayMS = 0;
    m_transferDelayMS = PacingIntervalMS(m_parameters);
    m_minTransfersPerFragment = static_cast<std::int32_t>(m_parameters.m_minWritesPerFragment);
    m_fileList.Init();
    if (!PrepareWorker()) {
        return false;
    }
    try {
        LThread::Resume(std::make_unique<CIOTesterThread>(this));
    } catch (const std::system_error&) {
        CleanupWorker();
        return false;
    }
    return true;
}

int FileReadWriteWorker::DoReadsThreadControlFunction(void* /*worker*/) {
    {
        const std::scoped_lock lock(m_lock);
        m_startTime = CTime::GetCurrentTime();
        m_running = true;
    }
    try {
        RunCycles();
    } catch (const std::exception& failure) {
        // Nothing in a test throws but a lack of memory for a name or a line; its files must not stay behind for that.
        if (m_outputMgr != nullptr) {
            m_outputMgr->Write(kOutError, outLevelSecondary, "Error: the test ended early, reader %d: %s %s\r",
                               m_readerNumber, failure.what(), CTime::GetCurrentDateTime().CStr());
        }
    }
    CleanupFiles(this);
    RemoveOwnFilesBesideShared();
    {
        const std::scoped_lock lock(m_lock);
        m_endTime = CTime::GetCurrentTime();
    }
    LogAndLinger();
    m_running = false;
    m_done.store(true, std::memory_order_release);  // the owner may delete the worker from here on
    return 0;
}

void FileReadWriteWorker::RunCycles() {
    const std::uint32_t minutes = m_parameters.m_durationMinutes;
    switch (m_parameters.m_readWriteMethod) {
        case kWritesOnly:
            m_writePhaseSeconds = minutes * 60;
            break;
        case kReadsOnly:
            m_readPhaseSeconds = minutes * 60;
            break;
        default:
            m_writePhaseSeconds = minutes * 30;
            m_readPhaseSeconds = minutes * 30;
            break;
    }
    std::uint64_t before = 0;
    do {
        before = TransfersCompleted();
        RunCycle();
        if (m_parameters.m_loop && !IsStopRequested() && TransfersCompleted() == before) {
            LThread::YieldOneTick();  // a cycle that could do nothing at all would repeat at once
        }
    } while (m_parameters.m_loop && !IsStopRequested());
}

void FileReadWriteWorker::RunCycle() {
    if (m_parameters.m_readWriteMethod == kWritesOnly) {
        WritePhase(this);
        return;
    }
    if (m_parameters.m_readWriteMethod != kReadsOnly) {
        WritePhase(this);
        CleanupFiles(this);
    }
    if (PrepareForReadPhase(this) != 0) {
        ReadPhase(this);
    }
    CleanupFiles(this);
}

/// In both directions; unlike the counters of the results, these never stop.
std::uint64_t FileReadWriteWorker::TransfersCompleted() const {
    const std::scoped_lock lock(m_lock);
    return m_readStatistics.transfers + m_writeStatistics.transfers;
}

void FileReadWriteWorker::LogAndLinger() {
    if (m_outputMgr == nullptr) {
        return;
    }
    m_outputMgr->Write(kOutProgress, outLevelSecondary, "Ending reader #: %d %s\r", m_readerNumber,
                       CTime::GetCurrentDateTime().CStr());
    LThread::Sleep(kLingerMS);
}

int FileReadWriteWorker::CleanupFiles(FileReadWriteWorker* worker) {
    return worker == nullptr ? -1 : worker->VCleanupFiles();
}

int FileReadWriteWorker::VCleanupFiles() {
    if (m_readFileList == nullptr) {
        return -1;
    }
    CString name;
    while (!m_parameters.m_sharedFileInPath && m_readFileList->RemoveFileThreadSafe(name)) {
        RemoveListedFile(name);
    }
    return 0;
}

/// A name that cannot be converted is passed over, and a file that cannot be deleted is noted.
void FileReadWriteWorker::RemoveListedFile(const CString& name) {
    const auto nativePath = ColonPath::ToNative(name.View());
    if (nativePath && !FileSystem::RemoveFile(*nativePath)) {
        const std::scoped_lock lock(m_lock);
        m_filesNotRemoved.push_back(name);
    }
}

/// While a test of an existing file runs, nothing that is listed is deleted, so that the file itself never is. What its
/// write phases made beside that file goes when the test ends.
void FileReadWriteWorker::RemoveOwnFilesBesideShared() {
    CString name;
    while (m_fileList.RemoveFileThreadSafe(name)) {
        if (!IsSharedFile(name)) {
            RemoveListedFile(name);
        }
    }
}

bool FileReadWriteWorker::IsSharedFile(const CString& name) const {
    return m_parameters.m_sharedFileInPath && name == m_parameters.m_drivePath;
}

std::vector<CString> FileReadWriteWorker::ScratchFiles() const {
    std::vector<CString> names = m_fileList.Names();
    std::erase_if(names, [this](const CString& name) { return IsSharedFile(name); });
    return names;
}

std::vector<CString> FileReadWriteWorker::FilesNotRemoved() const {
    const std::scoped_lock lock(m_lock);
    return m_filesNotRemoved;
}

void FileReadWriteWorker::SafeEnterOutputCS() {
    if (m_outputMgr != nullptr) {
        m_outputMgr->SafeEnterOutputCS();
    }
}

void FileReadWriteWorker::SafeLeaveOutputCS() {
    if (m_outputMgr != nullptr) {
        m_outputMgr->SafeLeaveOutputCS();
    }
}

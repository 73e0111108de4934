#include "CoreClasses/COutputMgr.h"

#include "Platform/ColonPath.h"
#include "SupportingClasses/CTime.h"
#include "SupportingClasses/IOTesterConsts.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <string>
#include <utility>

namespace {

constexpr const char* kOrganisationLine = "Made for Quarn Storage Measurement, 2026";

std::atomic<COutputMgr*>& Registered() {
    static std::atomic<COutputMgr*> registered{nullptr};
    return registered;
}

void WriteRule(std::FILE* file, char character, int width, const char* ending) {
    std::fprintf(file, "%s%s", std::string(static_cast<std::size_t>(width), character).c_str(), ending);
}

void WriteOpeningBanner(std::FILE* file, const char* caption, const CString& path) {
    const CString now = CTime::GetCurrentDateTime();
    WriteRule(file, '=', 64, "\r");
    std::fprintf(file, "%s Version %s\r", kProgramName, kProgramVersion);
    std::fprintf(file, "%s\r", kOrganisationLine);
    std::fprintf(file, "%s %s %s %s\r", caption, path.CStr(), "Created at:", now.CStr());
    WriteRule(file, '=', 64, "\r\r\r");
}

void WriteClosingBanner(std::FILE* file, const char* caption, const CString& path) {
    const CString now = CTime::GetCurrentDateTime();
    WriteRule(file, '-', 32, "\r");
    std::fprintf(file, "%s %s %s %s\r", caption, path.CStr(), "at:", now.CStr());
}

}  // namespace

COutputMgr::COutputMgr() {
    COutputMgr* none = nullptr;
    Registered().compare_exchange_strong(none, this);
}

COutputMgr::~COutputMgr() {
    COutputMgr* self = this;
    Registered().compare_exchange_strong(self, nullptr);
}

COutputMgr* COutputMgr::GetSingletonOutMgrWithoutCreate() {
    return Registered().load();
}

void COutputMgr::SetOutLevel(outFileLevels level) {
    const std::scoped_lock lock(m_criticalRegion);
    m_outLevel = level;
}

void COutputMgr::SetOutputCStrPtr(CString* text) {
    const std::scoped_lock lock(m_criticalRegion);
    m_outputCStrPtr = text;
}

void COutputMgr::SetErrCStrPtr(CString* text) {
    const std::scoped_lock lock(m_criticalRegion);
    m_errCStrPtr = text;
}

bool COutputMgr::SetOutputFile(const char* path) {
    return Open(m_outFile, path);
}

bool COutputMgr::SetErrorFile(const char* path) {
    return Open(m_errFile, path);
}

void COutputMgr::CloseOutFile() {
    Close(m_outFile);
}

void COutputMgr::CloseErrFile() {
    Close(m_errFile);
}

void COutputMgr::CloseFiles() {
    CloseErrFile();
    CloseOutFile();
}

bool COutputMgr::Open(LogFile& log, const char* path) {
    const std::scoped_lock lock(m_criticalRegion);
    Close(log);
    if (path == nullptr) {
        return false;
    }
    log.path = path;
    const auto nativePath = ColonPath::ToNative(log.path.View());
    if (!nativePath || !log.stream.Open(*nativePath, "w+", CStream::Buffering::Full)) {
        return false;
    }
    WriteOpeningBanner(log.stream.Get(), log.openingCaption, log.path);
    return true;
}

void COutputMgr::Close(LogFile& log) {
    const std::scoped_lock lock(m_criticalRegion);
    if (log.stream.IsOpen()) {
        WriteClosingBanner(log.stream.Get(), log.closingCaption, log.path);
        const bool hadError = log.stream.HasError();
        if (!log.stream.Close() || hadError) {
            m_incompleteLogs.push_back(log.path);
        }
    }
}

std::vector<CString> COutputMgr::TakeIncompleteLogs() {
    const std::scoped_lock lock(m_criticalRegion);
    return std::exchange(m_incompleteLogs, {});
}

const char* COutputMgr::GetOutFilePath() const {
    const std::scoped_lock lock(m_criticalRegion);
    return m_outFile.path.GetChars();
}

const char* COutputMgr::GetErrFilePath() const {
    const std::scoped_lock lock(m_criticalRegion);
    return m_errFile.path.GetChars();
}

char* COutputMgr::GetGlobalOutputBuffer() {
    return m_buffer.data();
}

int COutputMgr::GetGlobalOutputBufferSize() const {
    return kBufferSize;
}

char* COutputMgr::BlockingGetGlobalOutputBuffer() {
    SafeEnterOutputCS();
    return m_buffer.data();
}

void COutputMgr::UnBlockingWriteCurrentOutputBuffer(int mask, outFileLevels level) {
    WriteCurrentOutputBuffer(mask, level);
    SafeLeaveOutputCS();
}

void COutputMgr::WriteCurrentOutputBuffer(int mask, outFileLevels level) {
    m_buffer[kBufferSize - 1] = '\0';
    if ((mask & kOutToOutputText) != 0 && m_outputCStrPtr != nullptr) {
        *m_outputCStrPtr = m_buffer.data();
    }
    if ((mask & kOutToErrorText) != 0 && m_errCStrPtr != nullptr) {
        *m_errCStrPtr = m_buffer.data();
    }
    if (level > m_outLevel) {
        return;
    }
    if ((mask & kOutToOutputFile) != 0 && m_outFile.stream.IsOpen()) {
        std::fprintf(m_outFile.stream.Get(), "%s\r", m_buffer.data());
    }
    if ((mask & kOutToErrorFile) != 0 && m_errFile.stream.IsOpen()) {
        std::fprintf(m_errFile.stream.Get(), "%s\r", m_buffer.data());
    }
}

void COutputMgr::Write(int mask, outFileLevels level, const char* format, ...) {
    char* buffer = BlockingGetGlobalOutputBuffer();
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(buffer, kBufferSize, format, arguments);
    va_end(arguments);
    UnBlockingWriteCurrentOutputBuffer(mask, level);
}

void COutputMgr::SafeEnterOutputCS() {
    m_criticalRegion.Enter();
}

void COutputMgr::SafeLeaveOutputCS() {
    m_criticalRegion.Leave();
}

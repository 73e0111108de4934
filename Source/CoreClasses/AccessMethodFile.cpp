#include "CoreClasses/AccessMethodFile.h"

#include "CoreClasses/COutputMgr.h"
#include "Platform/TransferBuffer.h"
#include "SupportingClasses/CTime.h"

AccessMethodFile::AccessMethodFile(Direction direction, COutputMgr* output, int readerNumber)
    : m_direction(direction), m_output(output), m_readerNumber(readerNumber) {}

void AccessMethodFile::PrepareBuffer(TransferBuffer& buffer) {
    if (IsReading()) {
        buffer.Fill(std::byte{0});
    } else {
        buffer.FillWithNoise();
    }
}

void AccessMethodFile::LogOpened(const CString& name) const {
    if (m_output != nullptr) {
        m_output->Write(kOutProgress, outLevelSecondary,
                        IsReading() ? "Reader %d opened file %s %s\r" : "Writer %d opened file %s %s\r", m_readerNumber,
                        name.CStr(), CTime::GetCurrentDateTime().CStr());
    }
}

void AccessMethodFile::LogEndOfFile(const CString& name, const TransferOutcome& outcome) const {
    if (m_output != nullptr) {
        m_output->Write(kOutProgress, outLevelSecondary, "EOF detected reader %d file %s err no =%d %s\r",
                        m_readerNumber, name.CStr(), static_cast<int>(outcome.reported),
                        CTime::GetCurrentDateTime().CStr());
    }
}

void AccessMethodFile::LogFailure(const CString& name, const TransferOutcome& outcome) const {
    if (m_output != nullptr) {
        m_output->Write(kOutError, outLevelSecondary,
                        IsReading() ? "Error reading file %s err no =%d %s\r" : "Error writing file %s err no =%d %s\r",
                        name.CStr(), static_cast<int>(outcome.reported), CTime::GetCurrentDateTime().CStr());
    }
}

void AccessMethodFile::LogInexactRead(std::uint32_t expected, const TransferOutcome& outcome) const {
    if (m_output != nullptr) {
        m_output->Write(
            kOutError, outLevelSecondary,
            "Inexact number of bytes read, expected %d but read %ld, may affect performance calculations%s\r",
            static_cast<int>(expected), static_cast<long>(outcome.reported), CTime::GetCurrentDateTime().CStr());
    }
}

void AccessMethodFile::LogOverThreshold(int milliseconds) const {
    if (m_output != nullptr) {
        m_output->Write(kOutWarning, outLevelPrimary,
                        IsReading() ? "WARNING: Read Over Threshold reader %d MS=%d at time %s\r"
                                    : "WARNING: Write Over Threshold reader %d MS=%d at time %s\r",
                        m_readerNumber, milliseconds, CTime::GetCurrentDateTime().CStr());
    }
}

void AccessMethodFile::LogThresholdMaximum() const {
    if (m_output != nullptr) {
        m_output->Write(kOutWarning, outLevelPrimary,
                        IsReading()
                            ? "WARNING: Maximum number of read threshold warnings reached on reader %d at time %s\r"
                            : "WARNING: Maximum number of write threshold warnings reached on reader %d at time %s\r",
                        m_readerNumber, CTime::GetCurrentDateTime().CStr());
    }
}

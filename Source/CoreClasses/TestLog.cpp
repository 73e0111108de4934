#include "CoreClasses/TestLog.h"

#include "CoreClasses/COutputMgr.h"
#include "CoreClasses/IOTestResults.h"
#include "SupportingClasses/CTime.h"

#include <array>
#include <cstdio>
#include <string>

namespace {

/// The four fields of one direction: transfers, average and recent rate, slowest transfer; "n/a" where it does not
/// apply.
std::string Fields(char direction, bool applies, std::uint32_t completed, std::uint32_t averageKBPS,
                   std::uint32_t recentKBPS, std::uint32_t peakMS) {
    if (!applies) {
        const std::string key(1, direction);
        return key + "Qy=n/a " + key + "Av=n/a " + key + "Cr=n/a " + key + "Tm=n/a";
    }
    std::array<char, 100> text{};
    std::snprintf(text.data(), text.size(), "%cQy=%d %cAv=%d %cCr=%d %cTm=%d", direction, static_cast<int>(completed),
                  direction, static_cast<int>(averageKBPS), direction, static_cast<int>(recentKBPS), direction,
                  static_cast<int>(peakMS));
    return text.data();
}

}  // namespace

void TestLog::Selecting(COutputMgr& output) {
    output.Write(kOutProgress, outLevelSecondary, "Selecting file access protocol and generating test object... %s\r",
                 CTime::GetCurrentDateTime().CStr());
}

void TestLog::Selected(COutputMgr& output, const char* methodName) {
    output.Write(kOutProgress, outLevelPrimary, "Selected Test Method: '%s' - %s\r", methodName,
                 CTime::GetCurrentDateTime().CStr());
}

void TestLog::CouldNotStart(COutputMgr& output) {
    output.Write(
        kOutError, outLevelSecondary,
        "Could not start test.  The path may be invalid or the file access method may be incorrectly set.  %s\r",
        CTime::GetCurrentDateTime().CStr());
}

void TestLog::CouldNotSelect(COutputMgr& output) {
    output.Write(kOutError, outLevelSecondary, "Could not select an appropriate test object and access method... %s\r",
                 CTime::GetCurrentDateTime().CStr());
}

void TestLog::Stopped(COutputMgr& output) {
    output.Write(kOutWarning, outLevelSecondary, "Test stopped %s\r", CTime::GetCurrentDateTime().CStr());
}

void TestLog::Measurement(COutputMgr& output, const IOTestResults& results) {
    // Reads are shown until writes have begun, as zeros before any phase has.
    const std::string reads = Fields('R', results.m_readsStarted || !results.m_writesStarted, results.m_readsCompleted,
                                     results.m_readAvgKBPS, results.m_readRecentKBPS, results.m_readPeakMS);
    const std::string writes = Fields('W', results.m_writesStarted, results.m_writesCompleted, results.m_writeAvgKBPS,
                                      results.m_writeRecentKBPS, results.m_writePeakMS);
    output.Write(kOutToOutputFile, outLevelSecondary, "%s - measurement %s %s Elapsed=%d\r",
                 CTime::GetCurrentDateTime().CStr(), reads.c_str(), writes.c_str(),
                 static_cast<int>(results.m_elapsedSeconds));
}

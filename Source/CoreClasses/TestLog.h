#pragma once

class COutputMgr;
class IOTestResults;

/// The log lines of whoever conducts a test, the window or the headless program: one home for their words.
namespace TestLog {

void Selecting(COutputMgr& output);
/// `methodName` is empty when no method was found.
void Selected(COutputMgr& output, const char* methodName);
void CouldNotStart(COutputMgr& output);
void CouldNotSelect(COutputMgr& output);
void Stopped(COutputMgr& output);

/// One measurement line, to the output log only; its form depends on which phases have begun. Rates in KB/s, times in
/// ms.
void Measurement(COutputMgr& output, const IOTestResults& results);

}  // namespace TestLog

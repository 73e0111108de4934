#include "ThreadClasses/CTestSelectorThread.h"

#include "CoreClasses/IOTestSelector.h"

CTestSelectorThread::CTestSelectorThread(IOTestSelector* selector) : LThread("test-selector"), m_selector(selector) {}

void* CTestSelectorThread::Run() {
    IOTestSelector::CheckAndSelectTest_ThreadControlFunc(m_selector);
    return nullptr;
}

#include "CoreClasses/IOTestSelector.h"

#include "ThreadClasses/CTestSelectorThread.h"

#include <memory>
#include <system_error>

void IOTestSelector::BeginTestSelection(const IOTestParameters& parameters) {
    if (parameters.m_fileAccessMethod != kAccessAutomatic) {
        m_selectedMethod = parameters.m_fileAccessMethod;
        m_isDone.store(true, std::memory_order_release);
        return;
    }
    m_parameters.SetPathValue(parameters.m_drivePath.CStr());
    try {
        LThread::Resume(std::make_unique<CTestSelectorThread>(this));
    } catch (const std::system_error&) {
        // No thread to be had: the choice is quick enough to make here.
        CheckAndSelectTest_ThreadControlFunc(this);
    }
}

int IOTestSelector::CheckAndSelectTest_ThreadControlFunc(IOTestSelector* selector) {
    if (selector == nullptr) {
        return -1;
    }
    selector->m_selectedMethod = kAccessMacFileManager;
    selector->m_isDone.store(true, std::memory_order_release);
    return 0;
}

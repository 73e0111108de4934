#include "CoreClasses/IOTestResults.h"

void IOTestResults::ClearResults() {
    InitResults();
}

IOTestResults& IOTestResults::InitResults() {
    const IOTestParameters parameters = m_parameters;
    *this = IOTestResults();
    m_parameters = parameters;
    return *this;
}

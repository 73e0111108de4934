#include "CoreClasses/IOTestWorker.h"

IOTestWorker* IOTestWorker::SetStop() {
    m_stop.store(true, std::memory_order_relaxed);
    return this;
}

void IOTestWorker::SetTestParameters(const IOTestParameters& parameters) {
    m_parameters = parameters;
    m_results.m_parameters = parameters;
}

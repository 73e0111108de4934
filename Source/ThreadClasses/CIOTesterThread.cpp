#include "ThreadClasses/CIOTesterThread.h"

#include "CoreClasses/FileReadWriteWorker.h"

CIOTesterThread::CIOTesterThread(FileReadWriteWorker* worker) : LThread("io-worker"), m_worker(worker) {}

void* CIOTesterThread::Run() {
    m_worker->DoReadsThreadControlFunction(m_worker);
    return nullptr;
}

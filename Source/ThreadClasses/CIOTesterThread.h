#pragma once

#include "Framework/Base/LThread.h"

class FileReadWriteWorker;

/// The thread on which a worker runs its test.
class CIOTesterThread final : public LThread {
public:
    /// `worker` is touched until it is done, never after.
    explicit CIOTesterThread(FileReadWriteWorker* worker);

    void* Run() override;

private:
    FileReadWriteWorker* m_worker;
};

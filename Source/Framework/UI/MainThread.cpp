#include "Framework/UI/MainThread.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <utility>

namespace {

/// What a waiting thread and the main thread share about one pass.
struct Pass {
    std::function<void()> work;
    bool isDone = false;
};

struct Gate {
    std::mutex mutex;  ///< guards the rest and every pass's `isDone`
    std::condition_variable changed;
    bool isOpen = false;
};

Gate& TheGate() {
    static Gate* const gate = std::make_unique<Gate>().release();  // threads may still wait on it during exit
    return *gate;
}

void RunOnMain(const std::shared_ptr<Pass>& pass) {
    {
        const std::scoped_lock lock(TheGate().mutex);
        if (!TheGate().isOpen) {
            return;  // whoever waited has been let go, and what the pass would touch may be gone
        }
    }
    pass->work();
    const std::scoped_lock lock(TheGate().mutex);
    pass->isDone = true;
    TheGate().changed.notify_all();
}

}  // namespace

bool MainThread::RunAndWait(std::function<void()> work) {
    auto pass = std::make_shared<Pass>();
    pass->work = std::move(work);
    std::unique_lock lock(TheGate().mutex);
    if (!TheGate().isOpen) {
        return false;
    }
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [pass] { RunOnMain(pass); }, Qt::QueuedConnection);
    TheGate().changed.wait(lock, [&] { return pass->isDone || !TheGate().isOpen; });
    return pass->isDone;
}

void MainThread::StopPasses() {
    const std::scoped_lock lock(TheGate().mutex);
    TheGate().isOpen = false;
    TheGate().changed.notify_all();
}

void MainThread::AcceptPasses() {
    const std::scoped_lock lock(TheGate().mutex);
    TheGate().isOpen = true;
}

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
    int round = 0;  ///< the opening of the gate that it belongs to
    bool isDone = false;
};

struct Gate {
    std::mutex mutex;  ///< guards the rest and every pass's `isDone`
    std::condition_variable changed;
    bool isOpen = false;
    int round = 0;  ///< counts the times it was opened

    [[nodiscard]] bool Admits(const Pass& pass) const { return isOpen && pass.round == round; }
};

Gate& TheGate() {
    static Gate* const gate = std::make_unique<Gate>().release();  // threads may still wait on it during exit
    return *gate;
}

void RunOnMain(const std::shared_ptr<Pass>& pass) {
    {
        const std::scoped_lock lock(TheGate().mutex);
        if (!TheGate().Admits(*pass)) {
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
    pass->round = TheGate().round;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [pass] { RunOnMain(pass); }, Qt::QueuedConnection);
    TheGate().changed.wait(lock, [&] { return pass->isDone || !TheGate().Admits(*pass); });
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
    ++TheGate().round;
}

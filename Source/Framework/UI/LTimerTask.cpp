#include "Framework/UI/LTimerTask.h"

#include "Platform/Clock.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

std::vector<LTimerTask*>& AllTasks() {
    static std::vector<LTimerTask*> tasks;
    return tasks;
}

}  // namespace

LTimerTask::LTimerTask() {
    AllTasks().push_back(this);
}

LTimerTask::~LTimerTask() {
    std::erase(AllTasks(), this);
}

void LTimerTask::Start(std::uint32_t ms, std::function<void()> task) {
    m_task = std::move(task);
    m_dueUS = Clock::Current().Microseconds() + std::uint64_t{ms} * 1000;
    if (QCoreApplication::instance() != nullptr) {
        QTimer::singleShot(static_cast<int>(ms) + 1, Qt::PreciseTimer, QCoreApplication::instance(), RunDue);
    }
}

void LTimerTask::Cancel() {
    m_task = nullptr;
}

void LTimerTask::RunDue() {
    const std::uint64_t now = Clock::Current().Microseconds();
    const std::vector<LTimerTask*> waiting = AllTasks();
    for (LTimerTask* task : waiting) {
        // A task may have destroyed others.
        if (std::find(AllTasks().begin(), AllTasks().end(), task) != AllTasks().end()) {
            task->RunIfDue(now);
        }
    }
}

void LTimerTask::RunIfDue(std::uint64_t now) {
    if (m_task && now >= m_dueUS) {
        std::exchange(m_task, nullptr)();
    }
}

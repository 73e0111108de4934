#pragma once

#include <functional>

/// The way from other threads to the main thread, where everything of the user interface runs.
namespace MainThread {

/// Runs `work` on the main thread, from its event loop, and waits until it has returned. Called from another thread.
/// False, with the work not done, once the application is ending.
[[nodiscard]] bool RunAndWait(std::function<void()> work);

/// From now on passes are refused and those that wait are let go; called by the main thread when its event loop has
/// ended.
void StopPasses();

/// Accepts passes; called by the main thread before its event loop begins.
void AcceptPasses();

}  // namespace MainThread

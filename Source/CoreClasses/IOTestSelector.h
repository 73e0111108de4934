#pragma once

#include "CoreClasses/IOTestParameters.h"

#include <atomic>
#include <cstdint>

/// Turns a test's access method into a concrete one: an explicit choice at once, the automatic choice on a thread of
/// its own. The owner polls `IsDone` and deletes the selector only once it is true (or was never begun).
class IOTestSelector {
public:
    IOTestSelector() = default;
    virtual ~IOTestSelector() = default;
    IOTestSelector(const IOTestSelector&) = delete;
    IOTestSelector& operator=(const IOTestSelector&) = delete;

    void BeginTestSelection(const IOTestParameters& parameters);

    [[nodiscard]] bool IsDone() const { return m_isDone.load(std::memory_order_acquire); }

    /// A `FileAccessMethod`, or whatever other number the test's parameters named. Settled once `IsDone`.
    [[nodiscard]] int GetSelectedFileAccessMethod() const { return m_selectedMethod.load(std::memory_order_acquire); }

    /// The automatic selection itself. -1 for a null selector, else 0.
    static int CheckAndSelectTest_ThreadControlFunc(IOTestSelector* selector);

private:
    IOTestParameters m_parameters;
    std::atomic<std::int32_t> m_selectedMethod{kAccessMacFileManager};
    std::atomic<bool> m_isDone{false};  ///< set last: the selector may be gone right after
};

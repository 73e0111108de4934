#pragma once

#include <memory>

class FileReadWriteWorker;

/// A worker for a concrete access method, and the method's name as the program shows it.
struct SelectedWorker {
    std::unique_ptr<FileReadWriteWorker> worker;  ///< null for a method that there is not
    const char* methodName = "";
};

/// Makes the worker of a `FileAccessMethod` other than the automatic one. Main thread only: a worker's records take the
/// default test path.
[[nodiscard]] SelectedWorker MakeWorker(int fileAccessMethod);

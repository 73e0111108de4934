#pragma once

#include "CoreClasses/COutputMgr.h"
#include "Programs/CommandLine/CommandLineOptions.h"
#include "Programs/CommandLine/Console.h"
#include "Programs/CommandLine/EventSource.h"
#include "Programs/CommandLine/JsonFile.h"
#include "Programs/CommandLine/ProgressDisplay.h"
#include "Programs/CommandLine/TestConductor.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The headless program from its arguments to its exit status. One use; main thread only.
class HeadlessProgram {
public:
    /// `console` and `events` outlive the program.
    HeadlessProgram(const Console& console, EventSource& events);

    /// Does what `arguments` (without the program's name) ask for and answers the exit status.
    [[nodiscard]] int Run(const std::vector<std::string>& arguments);

    /// A worker hangs in a transfer and was given up: the process has to end without waiting for it, and without
    /// destroying what it uses.
    [[nodiscard]] bool HasAbandonedWorker() const;

    /// The conductor of the test; null when there was no test.
    [[nodiscard]] const TestConductor* Conductor() const { return m_conductor.get(); }

private:
    int Refuse(const std::vector<std::string>& problems);
    int RunTest();
    [[nodiscard]] std::optional<std::string> ProblemWithStart(TestReport& notStarted);
    int CouldNotStart(TestReport& report, const std::string& problem);
    void Report(const TestReport& report);
    void CloseLogs();
    void Print(const std::string& text);

    const Console& m_console;
    EventSource& m_events;
    CommandLineOptions m_options;
    COutputMgr m_output;
    JsonFile m_jsonFile;
    bool m_hasJsonFile = false;
    std::unique_ptr<ProgressDisplay> m_display;
    std::unique_ptr<TestConductor> m_conductor;
};

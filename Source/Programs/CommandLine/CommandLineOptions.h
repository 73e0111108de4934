#pragma once

#include "Programs/CommandLine/TestPlan.h"

#include <string>
#include <vector>

/// The command line of the headless program as a plain record.
struct CommandLineOptions {
    enum class Action { RunTest, ListPresets, ListVolumes, ShowHelp, ShowVersion };

    Action action = Action::RunTest;
    TestPlan plan;
    std::optional<TypedPath> json;  ///< where the JSON document goes
    bool jsonToStandardOutput = false;
    bool isQuiet = false;
};

/// A command line that has been read. The options count only while there are no problems.
struct ParsedCommandLine {
    CommandLineOptions options;
    std::vector<std::string> problems;  ///< everything that is wrong with it, a line each
};

/// Reads the arguments behind the program's name. Touches no file. Main thread only.
[[nodiscard]] ParsedCommandLine ParseCommandLine(const std::vector<std::string>& arguments);

/// What `--help` shows.
[[nodiscard]] std::string HelpText();

#include "Fuzz/FuzzSupport.h"
#include "Programs/CommandLine/CommandLineOptions.h"

#include <algorithm>

// The input has one argument a line.

namespace {

using Fuzz::Require;

/// Whether an argument, or what stands behind its '=', is that number and nothing else.
bool IsTyped(std::uint64_t number, const std::string& input) {
    const std::vector<std::string> arguments = Fuzz::Split(input, '\n');
    return std::any_of(arguments.begin(), arguments.end(), [&](const std::string& argument) {
        std::string value = argument.substr(argument.find('=') + 1);
        value.erase(0, value.find_first_not_of('0'));
        return value == std::to_string(number);
    });
}

/// What the engine counts in 32 bits fits, nothing is divided by 0, and every number was asked for or is a default.
void CheckPlan(const TestPlan& plan, const std::string& input) {
    const IOTestParameters& test = plan.parameters;
    const std::uint64_t sizeKB = test.m_transferSizeKB;
    const std::uint64_t seconds = std::uint64_t{test.m_durationMinutes} * 60;
    Require(sizeKB > 0 && sizeKB * 1024 <= UINT32_MAX && sizeKB * 1000 <= UINT32_MAX, "transfers fit 32 bits", input);
    Require(test.m_transferRateKBps >= 2 && plan.PacingIntervalMS() <= INT32_MAX, "the pauses fit 31 bits", input);
    Require(seconds > 0 && seconds <= UINT32_MAX && test.m_maxFileSizeMB > 0, "the limits are in range", input);
    Require(plan.thresholdMS >= 0 && plan.thresholdWarnings >= -1, "the threshold is in range", input);
    const std::size_t room = test.m_sharedFileInPath ? 0 : std::string_view(":IOT12999.tio").size();
    Require(!test.m_drivePath.View().empty() && test.m_drivePath.View().size() + room <= 255, "names fit", input);
    Require(!plan.nativePath || plan.nativePath->starts_with('/'), "a native path is absolute", input);
    if (test.m_standardTestID == kCustomTestID) {
        for (const std::uint64_t number : {sizeKB, seconds / 60, std::uint64_t{test.m_maxFileSizeMB}}) {
            const bool isDefault = number == 256 || number == 2 || number == 100;
            Require(isDefault || IsTyped(number, input), "a number is a typed one", input);
        }
    }
}

}  // namespace

void Fuzz::Run(const std::string& input) {
    if (input.find('\0') != std::string::npos) {
        return;  // no argument of a process has one
    }
    const ParsedCommandLine parsed = ParseCommandLine(Split(input, '\n'));
    const auto& problems = parsed.problems;
    Require(std::count(problems.begin(), problems.end(), "") == 0, "what is wrong is told", input);
    if (problems.empty()) {
        CheckPlan(parsed.options.plan, input);
    }
}

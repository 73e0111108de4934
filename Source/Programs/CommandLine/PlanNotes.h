#pragma once

#include "Programs/CommandLine/TestPlan.h"

#include <string>
#include <vector>

/// What a person should know of a test's settings before it runs: where the engine's arithmetic makes something else of
/// them than they seem to say. A sentence each; none for most tests.
[[nodiscard]] std::vector<std::string> NotesOn(const TestPlan& plan);

#pragma once

#include "Programs/CommandLine/TestPlan.h"

#include <optional>
#include <string>

class COutputMgr;

/// What has to be right before a test is worth starting. Each asks the file system and blocks as long as it does.
namespace StartCheck {

/// Why the path under test cannot be used at all; none when it can be tried. Whether it can be written, and whether it
/// stays there, the test itself will show.
[[nodiscard]] std::optional<std::string> ProblemWithPath(const TestPlan& plan);

/// Opens the plan's logs, or says why one of them cannot be opened; none is emptied then.
[[nodiscard]] std::optional<std::string> OpenLogs(const TestPlan& plan, COutputMgr& output);

}  // namespace StartCheck

#pragma once

#include "Programs/CommandLine/TestReport.h"

#include <string>

/// The report as a JSON document, one valid document in any state of the test; bytes of a path that are no UTF-8 become
/// replacement characters. Ends with a line end.
[[nodiscard]] std::string JsonText(const TestReport& report);

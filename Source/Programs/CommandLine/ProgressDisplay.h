#pragma once

#include "Programs/CommandLine/Console.h"
#include "Programs/CommandLine/StatusLine.h"

#include <cstdint>
#include <string_view>

/// The progress and the diagnostics of a test on standard error: on a terminal one line that is redrawn in place,
/// elsewhere a plain line when the phase changes and every half minute. Main thread only.
class ProgressDisplay {
public:
    enum class Progress { Shown, Hidden };

    ProgressDisplay(const Console& console, Progress progress);

    /// Shows the status as it is fit to; called once a second.
    void Show(const TestStatus& status);
    /// Shows the status at once, even when progress is hidden: somebody asked.
    void ShowNow(const TestStatus& status);
    /// A line of its own, with the program's name in front.
    void Say(std::string_view text);
    /// Takes the live line away.
    void Clear();

private:
    void WriteLine(std::string_view line);

    const Console& m_console;
    Progress m_progress;
    bool m_hasLiveLine = false;
    const char* m_lastPhase = "";
    std::uint32_t m_lastPlainSecond = 0;  ///< of the test's elapsed time
};

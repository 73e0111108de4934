#include "Programs/CommandLine/ProgressDisplay.h"

#include <string>

namespace {

constexpr std::uint32_t kPlainIntervalSeconds = 30;
constexpr const char* kEraseLine = "\r\033[K";

}  // namespace

ProgressDisplay::ProgressDisplay(const Console& console, Progress progress)
    : m_console(console), m_progress(progress) {}

void ProgressDisplay::Show(const TestStatus& status) {
    if (m_progress == Progress::Hidden) {
        return;
    }
    if (m_console.errIsLive) {
        const std::size_t columns = m_console.errColumns();
        // A character in the last column would make some terminals begin a new line.
        const std::string line = LiveStatusLine(status, columns > 1 ? columns - 1 : 1);
        const Colour colour = status.errors > 0         ? Colour::Red
                              : status.quietSeconds > 0 ? Colour::Yellow
                                                        : Colour::Plain;
        m_console.err << kEraseLine + Coloured(line, colour, m_console.errHasColour) << std::flush;
        m_hasLiveLine = true;
        return;
    }
    const bool isNewPhase = std::string_view(m_lastPhase) != status.phase;
    if (isNewPhase || status.elapsedSeconds >= m_lastPlainSecond + kPlainIntervalSeconds) {
        m_lastPhase = status.phase;
        m_lastPlainSecond = status.elapsedSeconds;
        WriteLine(PlainStatusLine(status));
    }
}

void ProgressDisplay::ShowNow(const TestStatus& status) {
    WriteLine(PlainStatusLine(status));
}

void ProgressDisplay::Say(std::string_view text) {
    WriteLine("gaugeline-cli: " + std::string(text));
}

void ProgressDisplay::Clear() {
    if (m_hasLiveLine) {
        m_console.err << kEraseLine << std::flush;
        m_hasLiveLine = false;
    }
}

void ProgressDisplay::WriteLine(std::string_view line) {
    Clear();
    m_console.err << std::string(line) + '\n' << std::flush;
}

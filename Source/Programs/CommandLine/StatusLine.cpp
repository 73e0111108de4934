#include "Programs/CommandLine/StatusLine.h"

#include "Programs/CommandLine/TextFormat.h"

#include <algorithm>

namespace {

constexpr std::uint64_t kSecondUS = 1'000'000;

/// The current rate is that of so long, or of two pacing intervals when those are longer.
constexpr std::uint64_t kCurrentRateUS = 5 * kSecondUS;

/// From when on a silence is worth a word, beyond two pacing intervals.
constexpr std::uint64_t kQuietUS = 3 * kSecondUS;

/// Differs from every count, so that a new phase begins with a transfer that has just ended.
constexpr std::uint64_t kNotCounted = ~std::uint64_t{0};

constexpr std::size_t kShortestBar = 6;
constexpr std::size_t kLongestBar = 30;

std::uint64_t TwoIntervalsUS(const TestPlan& plan) {
    return std::uint64_t{plan.PacingIntervalMS()} * 2000;
}

std::string Bar(const TestStatus& status, std::size_t width) {
    const std::uint64_t elapsed = std::min(status.elapsedSeconds, status.durationSeconds);
    const std::size_t filled = status.durationSeconds == 0 ? 0 : width * elapsed / status.durationSeconds;
    return "[" + std::string(filled, '#') + std::string(width - filled, '.') + "]";
}

std::string Quiet(const TestStatus& status) {
    return status.quietSeconds == 0 ? "" : "no transfer for " + TextFormat::Duration(status.quietSeconds) + ", ";
}

std::string Current(const TestStatus& status) {
    return TextFormat::MegabytesPerSecond(status.currentKBps) + " MB/s";
}

std::string AverageText(const TestStatus& status) {
    return TextFormat::MegabytesPerSecond(status.averageKBps);
}

std::string Slowest(const TestStatus& status) {
    return TextFormat::Milliseconds(status.slowestUS) + " ms";
}

std::string Errors(const TestStatus& status) {
    return TextFormat::Count(status.errors, "error");
}

}  // namespace

std::string TestStatus::Remaining() const {
    if (durationSeconds == 0) {
        return "LOOP";
    }
    return TextFormat::Duration(durationSeconds - std::min(durationSeconds, elapsedSeconds)) + " left";
}

std::string LiveStatusLine(const TestStatus& status, std::size_t columns) {
    const std::string phase = TextFormat::Print("%-9s ", status.phase);
    const std::string remaining = status.Remaining();
    const std::string clock =
        status.durationSeconds == 0 ? TextFormat::Duration(status.elapsedSeconds) + " " + remaining : remaining;
    // All of it and a short bar fit a terminal of 80 columns.
    const std::string quiet = Quiet(status);
    const std::string rates = Current(status) + " (avg " + AverageText(status) + ")";
    const std::string errors = Errors(status);
    for (const std::string& text : {clock + "  " + quiet + rates + ", max " + Slowest(status) + ", " + errors,
                                    clock + "  " + quiet + rates + ", " + errors, clock + "  " + rates + ", " + errors,
                                    clock + "  " + Current(status) + ", " + errors, clock + "  " + errors}) {
        const std::size_t taken = phase.size() + text.size();
        if (taken > columns) {
            continue;
        }
        const std::size_t room = columns - taken;
        const bool hasBar = status.durationSeconds != 0 && room >= kShortestBar + 3;  // its brackets and a blank
        return phase + (hasBar ? Bar(status, std::min(room - 3, kLongestBar)) + " " : "") + text;
    }
    return (phase + clock).substr(0, columns);
}

std::string PlainStatusLine(const TestStatus& status) {
    return std::string(status.phase) + ", " + TextFormat::Duration(status.elapsedSeconds) + " gone, " +
           status.Remaining() + ": " + Quiet(status) + Current(status) + " (average " + AverageText(status) +
           "), slowest " + Slowest(status) + ", " + Errors(status);
}

void StatusTracker::Update(const TestReport& report, std::uint64_t nowUS, bool isStopping) {
    m_status.elapsedSeconds = report.results.m_elapsedSeconds;
    m_status.durationSeconds = report.plan.parameters.m_loop ? 0 : report.plan.DurationSeconds();
    m_status.errors = report.Errors();
    UpdatePhase(report, isStopping);
    UpdateRates(report, nowUS);
    UpdateQuiet(report, nowUS);
}

void StatusTracker::UpdatePhase(const TestReport& report, bool isStopping) {
    const IOTestResults& results = report.results;
    if (results.m_phase != m_phase) {
        m_phase = results.m_phase;
        m_recent.clear();
        m_outcomes = kNotCounted;
    }
    if (m_phase != kPhaseNone) {
        m_shownPhase = m_phase;
    }
    const bool isBegun = results.m_writesStarted || results.m_readsStarted;
    const bool isOver = m_status.durationSeconds != 0 && m_status.elapsedSeconds >= m_status.durationSeconds;
    m_status.phase = isStopping                       ? "Stopping"
                     : m_phase == kPhaseWrite         ? "Writing"
                     : m_phase == kPhaseRead          ? "Reading"
                     : isOver                         ? "Finishing"
                     : isBegun || report.plan.Reads() ? "Preparing"
                                                      : "Starting";
}

void StatusTracker::UpdateRates(const TestReport& report, std::uint64_t nowUS) {
    const TransferStatistics& direction = m_shownPhase == kPhaseRead ? report.reads : report.writes;
    m_status.averageKBps = direction.AverageKBps();
    m_status.slowestUS = direction.times.Longest();
    m_status.currentKBps = m_phase == kPhaseNone ? 0.0 : m_status.averageKBps;

    if (m_phase == kPhaseNone) {
        return;
    }
    m_recent.push_back({nowUS, direction.bytes});
    const std::uint64_t window = std::max(kCurrentRateUS, TwoIntervalsUS(report.plan));
    while (m_recent.size() > 2 && nowUS - m_recent[1].timeUS >= window) {
        m_recent.pop_front();
    }
    const Point& oldest = m_recent.front();
    if (nowUS - oldest.timeUS >= kSecondUS) {
        m_status.currentKBps = static_cast<double>(direction.bytes - oldest.bytes) / 1024.0 /
                               (static_cast<double>(nowUS - oldest.timeUS) / 1e6);
    }
}

void StatusTracker::UpdateQuiet(const TestReport& report, std::uint64_t nowUS) {
    const std::uint64_t outcomes = report.writes.times.Count() + report.reads.times.Count() + report.Errors();
    if (outcomes != m_outcomes || m_phase == kPhaseNone) {
        m_outcomes = outcomes;
        m_lastOutcomeUS = nowUS;
    }
    const std::uint64_t silence = nowUS - m_lastOutcomeUS;
    const bool isUnusual = silence >= kQuietUS + TwoIntervalsUS(report.plan);
    m_status.quietSeconds = isUnusual ? static_cast<std::uint32_t>(silence / kSecondUS) : 0;
}

#include "Programs/CommandLine/Verdict.h"

#include "Programs/CommandLine/ExitStatus.h"

namespace {

constexpr double kSustainedPercent = 95.0;
constexpr double kMarginalPercent = 85.0;

/// Shells report a process that a signal ended this way.
constexpr int kExitAfterSignal = 128;

Verdict JudgeDirection(const TestReport& report, Direction direction) {
    if (report.Of(direction).transfers == 0) {
        return Verdict::Short;
    }
    const std::optional<double> percent = PercentOfTarget(report, direction);
    if (!percent) {
        return Verdict::Unpaced;
    }
    return *percent >= kSustainedPercent  ? Verdict::Sustained
           : *percent >= kMarginalPercent ? Verdict::Marginal
                                          : Verdict::Short;
}

/// Sustained and unpaced do not meet in one test; a short direction outweighs either.
int Badness(Verdict verdict) {
    switch (verdict) {
        case Verdict::Unpaced:
        case Verdict::Sustained:
            return 0;
        case Verdict::Marginal:
            return 1;
        case Verdict::Short:
            return 2;
    }
    return 2;
}

}  // namespace

bool IsJudged(const TestReport& report, Direction direction) {
    const bool isWrite = direction == Direction::Write;
    const bool isWanted = isWrite ? report.plan.Writes() : report.plan.Reads();
    const bool isStarted = isWrite ? report.results.m_writesStarted : report.results.m_readsStarted;
    switch (report.state) {
        case TestReport::State::Running:
        case TestReport::State::NotStarted:
            return false;
        case TestReport::State::Completed:
            return isWanted;
        case TestReport::State::Interrupted:
            break;
    }
    // After a stop the engine goes through the rest of its cycle, and may open a phase only to close it.
    const TransferStatistics& statistics = report.Of(direction);
    const bool hasTried = report.isAbandoned || statistics.transfers > 0 || statistics.errors > 0;
    return isWanted && isStarted && hasTried;
}

std::optional<double> PercentOfTarget(const TestReport& report, Direction direction) {
    if (!IsJudged(report, direction) || !report.plan.HasTargetRate() || report.plan.IsSelfTest()) {
        return std::nullopt;
    }
    return 100.0 * report.Of(direction).AverageKBps() / report.plan.parameters.m_transferRateKBps;
}

std::optional<Verdict> Judge(const TestReport& report) {
    std::optional<Verdict> worst;
    for (const Direction direction : {Direction::Write, Direction::Read}) {
        if (!IsJudged(report, direction)) {
            continue;
        }
        const Verdict verdict = JudgeDirection(report, direction);
        if (!worst || Badness(verdict) > Badness(*worst)) {
            worst = verdict;
        }
    }
    return worst;
}

const char* VerdictName(Verdict verdict) {
    switch (verdict) {
        case Verdict::Sustained:
            return "sustained";
        case Verdict::Marginal:
            return "marginal";
        case Verdict::Short:
            return "short";
        case Verdict::Unpaced:
            return "unpaced";
    }
    return "short";
}

int ExitStatusOf(const TestReport& report) {
    if (report.signal != 0) {
        return kExitAfterSignal + report.signal;
    }
    if (report.state == TestReport::State::NotStarted) {
        return kExitCouldNotStart;
    }
    if (report.Errors() > 0) {
        return kExitErrors;
    }
    const std::optional<Verdict> verdict = Judge(report);
    return verdict && Badness(*verdict) == 0 ? kExitSustained : kExitNotSustained;
}

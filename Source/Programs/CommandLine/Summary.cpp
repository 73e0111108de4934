#include "Programs/CommandLine/Summary.h"

#include "Programs/CommandLine/Console.h"
#include "Programs/CommandLine/TextFormat.h"
#include "Programs/CommandLine/Verdict.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace {

constexpr int kCaptionWidth = 24;
constexpr int kColumnWidth = 14;
constexpr int kHeadingWidth = 14;

using Statistics = TransferStatistics;
using CellOf = std::function<std::string(const Statistics&)>;

std::string Heading(const char* caption, const std::string& text) {
    return TextFormat::Print("%-*s%s\n", kHeadingWidth, caption, text.c_str());
}

/// The table: a caption and one cell for each direction of the test.
class Table {
public:
    explicit Table(const TestReport& report) {
        if (report.plan.Writes()) {
            m_directions.push_back({"writes", &report.writes});
        }
        if (report.plan.Reads()) {
            m_directions.push_back({"reads", &report.reads});
        }
        AddLine("", [this](std::size_t i) { return std::string(m_directions[i].name); });
    }

    void Add(const char* caption, const CellOf& cell) {
        AddLine(caption, [&](std::size_t i) { return cell(*m_directions[i].statistics); });
    }
    void AddHeading(const std::string& text) { m_text += text + '\n'; }

    [[nodiscard]] const std::string& Text() const { return m_text; }

private:
    struct Column {
        const char* name;
        const Statistics* statistics;
    };

    void AddLine(const char* caption, const std::function<std::string(std::size_t)>& cell) {
        m_text += TextFormat::Print("%-*s", kCaptionWidth, caption);
        for (std::size_t i = 0; i < m_directions.size(); ++i) {
            m_text += TextFormat::Print("%*s", kColumnWidth, cell(i).c_str());
        }
        m_text += '\n';
    }

    std::vector<Column> m_directions;
    std::string m_text;
};

std::string Milliseconds(std::uint64_t microseconds) {
    return TextFormat::Milliseconds(microseconds) + " ms";
}

/// A time of the table; "-" where nothing was timed.
CellOf Time(const std::function<std::uint64_t(const Statistics&)>& microseconds) {
    return [=](const Statistics& s) { return s.times.Count() == 0 ? "-" : Milliseconds(microseconds(s)); };
}

CellOf Percentile(double fraction) {
    return Time([=](const Statistics& s) { return s.times.Percentile(fraction); });
}

std::string Average(const Statistics& statistics) {
    return statistics.phaseUS == 0 ? "-" : TextFormat::MegabytesPerSecond(statistics.AverageKBps()) + " MB/s";
}

void AddResults(Table& table) {
    table.Add("transfers", [](const Statistics& s) { return std::to_string(s.transfers); });
    table.Add("data", [](const Statistics& s) { return TextFormat::Megabytes(s.bytes) + " MB"; });
    table.Add("time in phases",
              [](const Statistics& s) { return TextFormat::Print("%.2f s", static_cast<double>(s.phaseUS) / 1e6); });
    table.Add("average", Average);
    table.Add("errors", [](const Statistics& s) { return std::to_string(s.errors); });
    table.AddHeading("time of one transfer");
    table.Add("  median", Percentile(0.5));
    table.Add("  95 %", Percentile(0.95));
    table.Add("  99 %", Percentile(0.99));
    table.Add("  99.9 %", Percentile(0.999));
    table.Add("  slowest", Time([](const Statistics& s) { return s.times.Longest(); }));
}

void AddDeadlines(Table& table, std::uint32_t intervalMS) {
    table.AddHeading(TextFormat::Print("deadlines, one transfer every %u ms", intervalMS));
    table.Add("  late", [](const Statistics& s) { return std::to_string(s.deadlines.late); });
    table.Add("  most late in a row", [](const Statistics& s) { return std::to_string(s.deadlines.longestRun); });
    table.Add("  worst lateness", [](const Statistics& s) {
        return s.deadlines.late == 0 ? "-" : Milliseconds(s.deadlines.worstLatenessUS);
    });
    table.Add("  buffer to ride it out", [](const Statistics& s) {
        return TextFormat::Print("%.3f s", static_cast<double>(s.deadlines.largestBacklogUS) / 1e6);
    });
}

std::string DescribeTest(const TestPlan& plan) {
    const IOTestParameters& test = plan.parameters;
    const std::string rate = plan.HasTargetRate() ? TextFormat::Print("at %u KB/s", test.m_transferRateKBps)
                                                  : std::string("at an unlimited rate");
    const std::string duration = TextFormat::Count(test.m_durationMinutes, "minute");
    return TextFormat::Print("%s: %s of %u KB %s, %s, files of %u MB", test.m_testName.CStr(),
                             plan.Writes() && plan.Reads() ? "writes, then reads" : ModeName(test.m_readWriteMethod),
                             test.m_transferSizeKB, rate.c_str(),
                             test.m_loop ? ("cycles of " + duration).c_str() : duration.c_str(), test.m_maxFileSizeMB);
}

std::string Headings(const TestReport& report) {
    std::string text = Heading("Test", DescribeTest(report.plan)) + Heading("Path", report.plan.PathText());
    text += Heading("Method", report.methodName.empty() ? "-" : report.methodName);
    text += Heading("File cache", FileCacheText(report));
    text += Heading("Ran for", TextFormat::Duration(report.results.m_elapsedSeconds) +
                                   (report.state == TestReport::State::Interrupted
                                        ? TextFormat::Print(", ended by signal %d", report.signal)
                                        : ""));
    for (const TypedPath& file : report.scratchFilesLeft) {
        text += Heading("Left behind", file.Text());
    }
    return text;
}

std::string PercentText(const TestReport& report) {
    std::string text;
    for (const Direction direction : {Direction::Write, Direction::Read}) {
        if (const std::optional<double> percent = PercentOfTarget(report, direction)) {
            text += TextFormat::Print("%s%s %.1f %%", text.empty() ? "" : ", ",
                                      direction == Direction::Write ? "writes" : "reads", *percent);
        }
    }
    return text.empty() ? ""
                        : " (" + text + TextFormat::Print(" of %u KB/s)", report.plan.parameters.m_transferRateKBps);
}

Colour ColourOf(Verdict verdict) {
    switch (verdict) {
        case Verdict::Sustained:
            return Colour::Green;
        case Verdict::Marginal:
            return Colour::Yellow;
        case Verdict::Short:
            return Colour::Red;
        case Verdict::Unpaced:
            return Colour::Plain;
    }
    return Colour::Plain;
}

std::string VerdictText(const TestReport& report, bool hasColour) {
    const std::optional<Verdict> verdict = Judge(report);
    const std::string name = verdict ? Coloured(VerdictName(*verdict), ColourOf(*verdict), hasColour) : "none";
    const std::string errors =
        report.Errors() > 0 ? Coloured(", with " + TextFormat::Count(report.Errors(), "error"), Colour::Red, hasColour)
                            : "";
    return Heading("Verdict", name + PercentText(report) + errors);
}

}  // namespace

std::string FileCacheText(const TestReport& report) {
    const FileCacheReport& cache = report.fileCache;
    std::string text = FileCacheModeName(cache.mode);
    if (report.plan.IsSelfTest()) {
        return "not touched";
    }
    if (cache.isVolatile) {
        text += " (volatile file system: its files are in memory only)";
    } else if (cache.refusal != nullptr) {
        text += std::string(" (") + cache.refusal + ")";
    }
    return text;
}

std::string SummaryText(const TestReport& report, bool hasColour) {
    std::string text = Headings(report);
    Table table(report);
    AddResults(table);
    if (report.plan.PacingIntervalMS() > 0) {
        AddDeadlines(table, report.plan.PacingIntervalMS());
    }
    text += '\n' + table.Text();
    if (report.plan.thresholdMS > 0) {
        text += TextFormat::Print("%-*s%*d\n", kCaptionWidth,
                                  TextFormat::Print("over %d ms", report.plan.thresholdMS).c_str(), kColumnWidth,
                                  report.overThreshold);
    }
    return text + "\n1 KB is 1024 bytes, 1 MB is 1024 KB.\n" + VerdictText(report, hasColour);
}

#include "Programs/CommandLine/JsonReport.h"

#include "Programs/CommandLine/ExitStatus.h"
#include "Programs/CommandLine/TextFormat.h"
#include "Programs/CommandLine/Verdict.h"
#include "SupportingClasses/IOTesterConsts.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace {

using Json = nlohmann::ordered_json;

constexpr int kSchemaVersion = 1;

const char* StateName(TestReport::State state) {
    switch (state) {
        case TestReport::State::Running:
            return "running";
        case TestReport::State::Completed:
            return "completed";
        case TestReport::State::Interrupted:
            return "interrupted";
        case TestReport::State::NotStarted:
            return "notStarted";
    }
    return "notStarted";
}

const char* PhaseName(std::int32_t phase) {
    return phase == kPhaseRead ? "reading" : phase == kPhaseWrite ? "writing" : "none";
}

/// A thousandth is far below what a rate can be repeated to; more digits only look exact.
double Rounded(double value) {
    return std::round(value * 1000.0) / 1000.0;
}

double Seconds(std::uint64_t microseconds) {
    return static_cast<double>(microseconds) / 1e6;
}

Json PathJson(const std::string& colon, const std::optional<std::string>& native) {
    return {{"colon", colon}, {"native", native ? Json(*native) : Json()}};
}

Json LogJson(const std::optional<TypedPath>& log) {
    return log ? PathJson(log->colon, log->native) : Json();
}

Json ParametersJson(const TestPlan& plan) {
    const IOTestParameters& test = plan.parameters;
    return {{"testName", std::string(test.m_testName.View())},
            {"presetId", test.m_standardTestID == kCustomTestID ? Json() : Json(test.m_standardTestID)},
            {"mode", ModeName(test.m_readWriteMethod)},
            {"transferKiB", test.m_transferSizeKB},
            {"rateKBps", plan.HasTargetRate() ? Json(test.m_transferRateKBps) : Json()},
            {"intervalMs", plan.PacingIntervalMS() > 0 ? Json(plan.PacingIntervalMS()) : Json()},
            {"limitMiB", test.m_maxFileSizeMB},
            {"minutes", test.m_durationMinutes},
            {"loop", test.m_loop},
            {"method", MethodName(test.m_fileAccessMethod)},
            {"sharedFile", test.m_sharedFileInPath},
            {"bypassCache", test.m_noCache},
            {"thresholdMs", plan.thresholdMS > 0 ? Json(plan.thresholdMS) : Json()},
            {"thresholdWarnings", plan.thresholdMS > 0 ? Json(plan.thresholdWarnings) : Json()}};
}

Json CacheJson(const TestReport& report) {
    const FileCacheReport& cache = report.fileCache;
    return {{"mode", FileCacheModeName(cache.mode)},
            {"volatile", cache.isVolatile},
            {"reason", cache.refusal != nullptr ? Json(cache.refusal) : Json()}};
}

Json LatencyJson(const TransferTimeHistogram& times) {
    if (times.Count() == 0) {
        return {};
    }
    return {{"p50", times.Percentile(0.5)},
            {"p95", times.Percentile(0.95)},
            {"p99", times.Percentile(0.99)},
            {"p999", times.Percentile(0.999)},
            {"max", times.Longest()}};
}

Json LateJson(const TestPlan& plan, const DeadlineStatistics& deadlines) {
    if (plan.PacingIntervalMS() == 0) {
        return {};
    }
    return {{"count", deadlines.late},
            {"longestRun", deadlines.longestRun},
            {"worstUs", deadlines.worstLatenessUS},
            {"bufferSeconds", Seconds(deadlines.largestBacklogUS)}};
}

Json DirectionJson(const TestReport& report, bool isWanted, Direction which) {
    if (!isWanted) {
        return {};
    }
    const TransferStatistics& direction = report.Of(which);
    const std::optional<double> percent = PercentOfTarget(report, which);
    return {{"transfers", direction.transfers},
            {"bytes", direction.bytes},
            {"seconds", Seconds(direction.phaseUS)},
            {"averageKBps", Rounded(direction.AverageKBps())},
            {"percentOfTarget", percent ? Json(Rounded(*percent)) : Json()},
            {"latencyUs", LatencyJson(direction.times)},
            {"late", LateJson(report.plan, direction.deadlines)},
            {"errors", direction.errors}};
}

Json SampleSideJson(const TestSample::Side& side) {
    if (!side.isStarted) {
        return {};
    }
    return {{"transfers", side.transfers},
            {"averageKBps", side.averageKBps},
            {"recentKBps", side.recentKBps},
            {"slowestMs", side.slowestMS}};
}

Json SamplesJson(const std::vector<TestSample>& samples) {
    Json all = Json::array();
    for (const TestSample& sample : samples) {
        all.push_back({{"elapsedSeconds", sample.elapsedSeconds},
                       {"phase", PhaseName(sample.phase)},
                       {"writes", SampleSideJson(sample.writes)},
                       {"reads", SampleSideJson(sample.reads)}});
    }
    return all;
}

Json ScratchFilesJson(const std::vector<TypedPath>& files) {
    Json all = Json::array();
    for (const TypedPath& file : files) {
        all.push_back(PathJson(file.colon, file.native));
    }
    return all;
}

std::string DateText(const std::tm& date) {
    return TextFormat::Print("%04d-%02d-%02dT%02d:%02d:%02d", date.tm_year + 1900, date.tm_mon + 1, date.tm_mday,
                             date.tm_hour, date.tm_min, date.tm_sec);
}

}  // namespace

std::string JsonText(const TestReport& report) {
    const TestPlan& plan = report.plan;
    const std::optional<Verdict> verdict = Judge(report);
    const bool isOver = report.state != TestReport::State::Running;
    const Json document = {
        {"program", kProgramName},
        {"version", kProgramVersion},
        {"schemaVersion", kSchemaVersion},
        {"state", StateName(report.state)},
        {"verdict", verdict ? Json(VerdictName(*verdict)) : Json()},
        {"exitStatus", isOver ? Json(ExitStatusOf(report)) : Json()},
        {"signal", report.signal != 0 ? Json(report.signal) : Json()},
        {"error", report.error.empty() ? Json() : Json(report.error)},
        {"startedAt", DateText(report.startedAt)},
        {"elapsedSeconds", report.results.m_elapsedSeconds},
        {"path", PathJson(std::string(plan.parameters.m_drivePath.View()), plan.nativePath)},
        {"method", report.methodName.empty() ? Json() : Json(report.methodName)},
        {"cache", CacheJson(report)},
        {"parameters", ParametersJson(plan)},
        {"writes", DirectionJson(report, plan.Writes(), Direction::Write)},
        {"reads", DirectionJson(report, plan.Reads(), Direction::Read)},
        {"transfersOverThreshold", plan.thresholdMS > 0 ? Json(report.overThreshold) : Json()},
        {"samples", SamplesJson(report.samples)},
        {"outputLog", LogJson(plan.outputLog)},
        {"errorLog", LogJson(plan.errorLog)},
        {"scratchFilesLeft", ScratchFilesJson(report.scratchFilesLeft)},
    };
    constexpr int indent = 2;
    return document.dump(indent, ' ', false, Json::error_handler_t::replace) + '\n';
}

#include "Programs/CommandLine/HeadlessProgram.h"

#include "CoreClasses/TestLog.h"
#include "Framework/Base/LThread.h"
#include "Platform/Clock.h"
#include "Platform/ColonPath.h"
#include "Programs/CommandLine/ExitStatus.h"
#include "Programs/CommandLine/JsonReport.h"
#include "Programs/CommandLine/Lists.h"
#include "Programs/CommandLine/PlanNotes.h"
#include "Programs/CommandLine/StartCheck.h"
#include "Programs/CommandLine/Summary.h"
#include "Programs/CommandLine/TextFormat.h"
#include "SupportingClasses/IOTesterConsts.h"

namespace {

/// A worker's thread ends right after its done flag is set.
constexpr std::uint32_t kJoinMS = 2000;

}  // namespace

HeadlessProgram::HeadlessProgram(const Console& console, EventSource& events) : m_console(console), m_events(events) {}

bool HeadlessProgram::HasAbandonedWorker() const {
    return m_conductor != nullptr && m_conductor->Report().isAbandoned;
}

int HeadlessProgram::Run(const std::vector<std::string>& arguments) {
    ParsedCommandLine parsed = ParseCommandLine(arguments);
    if (!parsed.problems.empty()) {
        return Refuse(parsed.problems);
    }
    m_options = std::move(parsed.options);
    switch (m_options.action) {
        case CommandLineOptions::Action::RunTest:
            return RunTest();
        case CommandLineOptions::Action::ListPresets:
            ListPresets(m_console.out);
            break;
        case CommandLineOptions::Action::ListVolumes:
            ListVolumes(m_console.out);
            break;
        case CommandLineOptions::Action::ShowHelp:
            m_console.out << HelpText();
            break;
        case CommandLineOptions::Action::ShowVersion:
            m_console.out << "gaugeline-cli " << kProgramVersion << " (" << kProgramName << ")\n";
            break;
    }
    m_console.out.flush();
    return kExitSustained;
}

int HeadlessProgram::Refuse(const std::vector<std::string>& problems) {
    std::string text = TextFormat::Print("gaugeline-cli: %s with the command line:\n",
                                         TextFormat::Count(problems.size(), "problem").c_str());
    for (const std::string& problem : problems) {
        text += "  " + problem + '\n';
    }
    m_console.err << text + "gaugeline-cli --help shows what there is.\n" << std::flush;
    return kExitWrongUse;
}

int HeadlessProgram::RunTest() {
    using Progress = ProgressDisplay::Progress;
    m_display = std::make_unique<ProgressDisplay>(m_console, m_options.isQuiet ? Progress::Hidden : Progress::Shown);
    TestReport notStarted;
    if (const std::optional<std::string> problem = ProblemWithStart(notStarted)) {
        return CouldNotStart(notStarted, *problem);
    }
    for (const std::string& note : NotesOn(m_options.plan)) {
        m_display->Say("note: " + note);
    }
    m_events.Begin();
    m_conductor = std::make_unique<TestConductor>(m_options.plan, m_output, m_events, *m_display);
    const TestReport& report = m_conductor->Run();
    if (!report.isAbandoned) {
        CloseLogs();
    }
    m_events.End();
    Report(report);
    if (report.isAbandoned) {
        // Last, because these may have to wait for the storage as well; a further signal ends the process now.
        TestLog::Stopped(m_output);
        CloseLogs();
    } else {
        LThread::JoinFinished(kJoinMS);
    }
    return ExitStatusOf(report);
}

std::optional<std::string> HeadlessProgram::ProblemWithStart(TestReport& notStarted) {
    notStarted.plan = m_options.plan;
    notStarted.startedAt = Clock::Current().LocalDateTime();
    if (m_options.json) {
        const TypedPath& path = *m_options.json;
        const std::optional<std::string> problem =
            path.native ? m_jsonFile.Open(*path.native, JsonText(notStarted)) : "it is no path of this system";
        if (problem) {
            return "the JSON file " + path.Text() + " cannot be written (" + *problem + ")";
        }
        m_hasJsonFile = true;
    }
    if (std::optional<std::string> problem = StartCheck::ProblemWithPath(m_options.plan)) {
        return problem;
    }
    return StartCheck::OpenLogs(m_options.plan, m_output);
}

int HeadlessProgram::CouldNotStart(TestReport& report, const std::string& problem) {
    report.state = TestReport::State::NotStarted;
    report.error = problem;
    m_output.CloseFiles();
    Report(report);
    return ExitStatusOf(report);
}

void HeadlessProgram::CloseLogs() {
    m_output.CloseFiles();
    for (const CString& log : m_output.TakeIncompleteLogs()) {
        const std::string colon(log.View());
        m_display->Say("the log " + BothForms(colon, ColonPath::ToNative(colon)) +
                       " is not complete: its storage did not take all lines");
    }
}

void HeadlessProgram::Report(const TestReport& report) {
    if (report.state == TestReport::State::NotStarted) {
        m_display->Say(report.error + "; the test was not started");
    }
    for (const TypedPath& file : report.scratchFilesLeft) {
        m_display->Say("left behind: " + file.Text());
    }
    if (m_hasJsonFile) {
        if (const std::optional<std::string> problem = m_jsonFile.Finish(JsonText(report))) {
            m_display->Say("the JSON file " + m_options.json->Text() + " could not be written (" + *problem + ")");
        }
    }
    if (m_options.jsonToStandardOutput) {
        Print(JsonText(report));
    }
    if (report.state == TestReport::State::NotStarted) {
        return;
    }
    if (m_options.jsonToStandardOutput) {
        m_console.err << SummaryText(report, m_console.errHasColour) << std::flush;
    } else {
        Print(SummaryText(report, m_console.outHasColour));
    }
}

/// What standard output does not take is told; the files have it all the same.
void HeadlessProgram::Print(const std::string& text) {
    m_console.out << text << std::flush;
    if (!m_console.out) {
        m_display->Say("standard output could not take all of the results");
    }
}

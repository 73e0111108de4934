#include "Programs/CommandLine/HeadlessProgram.h"

#include "CoreClasses/EngineTest.h"
#include "Support/SimulatedClock.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <regex>
#include <sstream>
#include <streambuf>
#include <tuple>

using testing::ElementsAreArray;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

using Json = nlohmann::json;

/// Signals at given milliseconds of a test. The waiting thread and the worker share the simulated
/// time.
class ScriptedEvents final : public EventSource {
public:
    explicit ScriptedEvents(SimulatedClock& clock) : m_clock(clock) {}

    void At(std::uint32_t ms, int signal) { m_script.emplace(ms, signal); }

    void Begin() override {
        m_start = m_clock.Microseconds();
        m_self.emplace(m_clock);
        m_clock.ExpectThread();
    }
    void End() override { m_self.reset(); }

    std::optional<int> Wait(std::uint32_t ms) override {
        const std::uint64_t end = m_clock.Microseconds() + std::uint64_t{ms} * 1000;
        if (m_script.empty() || m_start + m_script.begin()->first * 1000ULL > end) {
            m_clock.SleepUntil(end);
            return std::nullopt;
        }
        const auto next = m_script.extract(m_script.begin());
        m_clock.SleepUntil(m_start + next.key() * 1000ULL);
        return next.mapped();
    }

private:
    SimulatedClock& m_clock;
    std::optional<SimulatedClock::Participant> m_self;
    std::uint64_t m_start = 0;
    std::multimap<std::uint32_t, int> m_script;
};

class ClosedPipe final : public std::streambuf {};

class HeadlessProgramTest : public testing::Test {
protected:
    int Run(const std::vector<std::string>& arguments) { return Run(arguments, m_events, m_out); }

    int Run(const std::vector<std::string>& arguments, EventSource& events, std::ostream& out) {
        Console console{.out = out, .err = m_err};
        return HeadlessProgram(console, events).Run(arguments);
    }

    /// A test of 16 KB each 250 ms for a minute, with files of 1 MB.
    [[nodiscard]] std::vector<std::string> PacedTest(const std::string& mode, const std::string& method,
                                                     const std::string& more = "") const {
        std::istringstream words("--path " + m_folder.Native() +
                                 " --transfer-kb 16 --rate-kbps 64 --limit-mb 1 --minutes 1" + " --mode " + mode +
                                 " --method " + method + " --output-log " + m_files.Native("output") + " --error-log " +
                                 m_files.Native("errors") + " --json " + m_files.Native("json") + more);
        return {std::istream_iterator<std::string>(words), {}};
    }

    [[nodiscard]] Json Document() const { return Json::parse(ContentOf(m_files.Native("json"))); }

    /// The document, when it has the values of `part` (as JSON); else what it would have to be.
    [[nodiscard]] Json DocumentWith(const std::string& part) const {
        Json document = Document();
        document.merge_patch(Json::parse(part));
        return document;
    }

    /// The output log without the line on the file cache, which depends on the file system.
    [[nodiscard]] std::vector<std::string> Lines() const {
        std::vector<std::string> lines = MessagesOf(m_files.Native("output"));
        std::erase_if(lines, [](const std::string& line) { return line.starts_with("File cache: "); });
        return lines;
    }
    [[nodiscard]] bool IsLogClosed() const {
        return ContentOf(m_files.Native("output")).find("\rClosing Output File: ") != std::string::npos &&
               ContentOf(m_files.Native("errors")).find("\rClosing Error Log File: ") != std::string::npos;
    }

    SimulatedClock m_clock;
    ScriptedEvents m_events{m_clock};
    TemporaryFolder m_folder;
    TemporaryFolder m_files;
    std::ostringstream m_out;
    std::ostringstream m_err;
};

/// Each line of `script` is a second and a text, which a date ends; a measurement begins with it.
std::vector<std::string> Expand(const std::string& script) {
    std::vector<std::string> lines;
    std::istringstream input(script);
    std::string text;
    for (int second = 0; input >> second && std::getline(input, text);) {
        text.erase(0, 1);
        lines.push_back((text.starts_with('-') ? DateText(second) + ' ' + text : text + ' ' + DateText(second)) + '\r');
    }
    return lines;
}

}  // namespace

TEST_F(HeadlessProgramTest, AMixedPacedTestLogsEveryStepAndReportsIt) {
    // A file of 1 MB takes sixteen seconds to write, so the write phase opens it twice. The sample file is a block of
    // 4 MB and lasts for all of the reading.
    const std::string wrote = R"(0 Selecting file access protocol and generating test object...
0 Selected Test Method: 'MAC File API' -
0 Writer 0 opened file <folder>:IOT0.tio
6 - measurement RQy=n/a RAv=n/a RCr=n/a RTm=n/a WQy=23 WAv=64 WCr=64 WTm=0 Elapsed=6
12 - measurement RQy=n/a RAv=n/a RCr=n/a RTm=n/a WQy=47 WAv=64 WCr=64 WTm=0 Elapsed=12
16 Writer 0 opened file <folder>:IOT0.tio
18 - measurement RQy=n/a RAv=n/a RCr=n/a RTm=n/a WQy=71 WAv=64 WCr=64 WTm=0 Elapsed=18
24 - measurement RQy=n/a RAv=n/a RCr=n/a RTm=n/a WQy=95 WAv=64 WCr=64 WTm=0 Elapsed=24
30 - measurement RQy=n/a RAv=n/a RCr=n/a RTm=n/a WQy=119 WAv=64 WCr=64 WTm=0 Elapsed=30
)";
    const std::string prepared = R"(30 Preparing reader 0 for read test.
30 Finishing prepration for read test... ** Closing test data file may take several seconds or more. **
)";
    const std::string read = R"(31 Reader 0 opened file <folder>:IOT1.tio
36 - measurement RQy=19 RAv=0 RCr=0 RTm=0 WQy=120 WAv=64 WCr=0 WTm=0 Elapsed=36
42 - measurement RQy=43 RAv=64 RCr=64 RTm=0 WQy=120 WAv=64 WCr=0 WTm=0 Elapsed=42
48 - measurement RQy=67 RAv=64 RCr=64 RTm=0 WQy=120 WAv=64 WCr=0 WTm=0 Elapsed=48
54 - measurement RQy=91 RAv=64 RCr=64 RTm=0 WQy=120 WAv=64 WCr=0 WTm=0 Elapsed=54
60 - measurement RQy=115 RAv=64 RCr=64 RTm=0 WQy=120 WAv=64 WCr=0 WTm=0 Elapsed=60
61 Ending reader #: 0
63 Test stopped
)";
    ASSERT_EQ(Run(PacedTest("mixed", "mac")), 0);

    const std::string expected = std::regex_replace(wrote + prepared + read, std::regex("<folder>"), m_folder.Colon());
    std::vector<std::string> lines = Lines();
    ASSERT_GE(lines.size(), 11U);
    EXPECT_EQ(lines[10], "Test Parameters - Shared File Included in Path (for Reads): 0\r");
    lines.erase(lines.begin(), lines.begin() + 11);
    EXPECT_THAT(lines, ElementsAreArray(Expand(expected)));
    EXPECT_THAT(MessagesOf(m_files.Native("errors")), ElementsAreArray(Expand(prepared + "63 Test stopped\n")));
    EXPECT_TRUE(IsLogClosed());
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.Native()));

    EXPECT_EQ(Document(), DocumentWith(R"({
        "state": "completed", "verdict": "sustained", "exitStatus": 0, "startedAt": "2004-01-05T09:03:07",
        "elapsedSeconds": 61, "parameters": {"transferKiB": 16, "rateKBps": 64, "intervalMs": 250},
        "writes": {"transfers": 120, "bytes": 1966080, "seconds": 30.0, "averageKBps": 64.0, "errors": 0,
                   "latencyUs": {"p50": 0, "max": 0}, "late": {"count": 0, "bufferSeconds": 0.0}}})"));
    const Json document = Document();
    EXPECT_EQ(document["method"], "MAC File API");
    EXPECT_EQ(document["path"], Json({{"colon", m_folder.Colon()}, {"native", m_folder.Native()}}));
    EXPECT_THAT(document["cache"]["mode"], Not("unknown"));
    EXPECT_EQ(document["reads"]["transfers"], 120);
    EXPECT_NEAR(document["reads"]["averageKBps"], 64.0, 0.001);
    EXPECT_EQ(document["samples"].size(), 10U);
    EXPECT_EQ(document["samples"][5], Json::parse(R"({"elapsedSeconds": 36, "phase": "reading",
        "writes": {"transfers": 120, "averageKBps": 64, "recentKBps": 0, "slowestMs": 0},
        "reads": {"transfers": 19, "averageKBps": 0, "recentKBps": 0, "slowestMs": 0}})"));
    EXPECT_THAT(m_out.str(), HasSubstr("\nVerdict       sustained (writes 100.0 %, reads"));
    EXPECT_THAT(m_err.str(),
                StartsWith("Writing, 0:01 gone, 0:59 left: 0.047 MB/s (average 0.047), slowest 0.000 ms, 0 errors\n"
                           "Preparing, 0:31 gone, 0:29 left: 0.00 MB/s (average 0.062), slowest 0.000 ms, 0 errors\n"
                           "Reading, 0:32 gone, 0:28 left: 0.052 MB/s (average 0.052), slowest 0.000 ms, 0 errors\n"
                           "Finishing, 1:02 gone, 0:00 left: 0.00 MB/s (average 0.062), slowest 0.000 ms, 0 errors\n"));
}

TEST_F(HeadlessProgramTest, AFirstStopSignalEndsTheTestInOrderWhereverItIs) {
    using Case = std::tuple<int, std::uint32_t, const char*, const char*, int, Json>;
    // The transfer that waits for its interval is still made, and so is the rest of the cycle in passing: preparing to
    // read takes 1.1 seconds, the end 1 second. What session managers send in addition changes nothing.
    for (const auto& [signal, atMS, method, lastLine, writes, verdict] :
         {Case{SIGINT, 0, "mac", "0 Selecting file access protocol and generating test object...", 0, nullptr},
          Case{SIGTERM, 5'100, "posix", "8 Test stopped", 21, "sustained"},
          Case{SIGHUP, 12'000, "mac", "15 Test stopped", 48, "sustained"},
          Case{SIGINT, 30'500, "posix", "33 Test stopped", 120, "sustained"}}) {
        SCOPED_TRACE(atMS);
        SimulatedClock clock;
        ScriptedEvents events(clock);
        events.At(atMS, signal);
        events.At(atMS + 1, SIGHUP);
        events.At(atMS + 1'900, SIGTERM);
        EXPECT_EQ(Run(PacedTest("mixed", method), events, m_out), 128 + signal);
        EXPECT_TRUE(IsLogClosed());
        EXPECT_TRUE(std::filesystem::is_empty(m_folder.Native()));
        const Json document = Document();
        EXPECT_EQ(Json::array({document["state"], document["exitStatus"], document["signal"], document["verdict"],
                               document["writes"]["transfers"]}),
                  Json::array({"interrupted", 128 + signal, signal, verdict, writes}));
        EXPECT_EQ(Lines().back(), Expand(lastLine).front());
    }
}

TEST_F(HeadlessProgramTest, WhatCannotStartSaysWhyAndLeavesTheLogsAlone) {
    const std::string file = m_files.Native("file");
    std::ofstream(file) << "content";
    using Case = std::pair<std::vector<std::string>, std::string>;
    const std::string folder = m_folder.Native();
    const std::string output = m_files.Native("output");
    for (const auto& [words, reason] :
         {Case{{folder + "/none"}, m_folder.Colon("none") + " (" + folder + "/none) cannot be used (No such file"},
          Case{{file}, " is not a folder"}, Case{{"Nowhere:data"}, "Nowhere:data is no path of this system"},
          Case{{folder, "--shared-file"}, " is a folder"},
          Case{{folder + "/none/file", "--shared-file"}, "its folder is not there"},
          Case{{folder, "--error-log", folder}, "(" + folder + ") cannot be opened (Is a directory)"},
          Case{{folder, "--error-log", "Nowhere:log"}, "the error log Nowhere:log is no path"}}) {
        std::ofstream(output) << "earlier";
        std::vector<std::string> arguments{"--output-log", output, "--json", "-", "--path"};
        arguments.insert(arguments.end(), words.begin(), words.end());
        m_out.str("");
        EXPECT_EQ(Run(arguments), 3);
        EXPECT_THAT(m_err.str(), HasSubstr(reason));
        EXPECT_EQ(ContentOf(output), "earlier");
        const Json document = Json::parse(m_out.str());
        EXPECT_EQ(document["exitStatus"], 3);
        EXPECT_THAT(document["error"], HasSubstr(reason));
    }
    EXPECT_EQ(Run(PacedTest("writes", "mac", "/none/json")), 3);
    EXPECT_THAT(m_err.str(), EndsWith("cannot be written (No such file or directory); the test was not started\n"));
}

TEST_F(HeadlessProgramTest, AStatusRequestIsAnsweredAndAClosedStandardOutputToldEvenWhenQuiet) {
    m_events.At(2'600, SIGUSR1);
    ClosedPipe pipe;
    std::ostream out(&pipe);
    EXPECT_EQ(Run(PacedTest("writes", "mac", " --quiet"), m_events, out), 0);
    EXPECT_TRUE(IsLogClosed());
    EXPECT_EQ(Document()["verdict"], "sustained");
    EXPECT_EQ(m_err.str(), "Writing, 0:02 gone, 0:58 left: 0.068 MB/s (average 0.060), slowest 0.000 ms, 0 errors\n"
                           "gaugeline-cli: standard output could not take all of the results\n");
}

TEST_F(HeadlessProgramTest, WrongUseTouchesNothing) {
    EXPECT_EQ(Run(PacedTest("writes", "mac", " --threshold-ms 0")), 2);
    EXPECT_TRUE(std::filesystem::is_empty(m_files.Native()));
    EXPECT_EQ(m_out.str(), "");
    EXPECT_EQ(m_err.str(), "gaugeline-cli: 1 problem with the command line:\n"
                           "  --threshold-ms: '0' is not a whole number from 1 to 2147483647\n"
                           "gaugeline-cli --help shows what there is.\n");
}

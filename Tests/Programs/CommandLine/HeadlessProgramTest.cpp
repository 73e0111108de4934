#include "Programs/CommandLine/HeadlessProgram.h"

#include "CoreClasses/EngineTest.h"
#include "Framework/Base/LThread.h"
#include "Platform/FileDescriptor.h"
#include "Support/SimulatedClock.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <sstream>
#include <streambuf>
#include <thread>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

using testing::AllOf;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

using Json = nlohmann::json;

/// Signals and other incidents at given milliseconds of a test. The waiting thread and the worker share the simulated
/// time.
class ScriptedEvents final : public EventSource {
public:
    explicit ScriptedEvents(SimulatedClock& clock) : m_clock(clock) {}

    void Signal(int signal, std::uint32_t atMS) {
        m_script.emplace(atMS, [signal] { return std::optional(signal); });
    }
    void Do(const std::function<void()>& action, std::uint32_t atMS) {
        m_script.emplace(atMS, [action] {
            action();
            return std::optional<int>();
        });
    }

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
        return next.mapped()();
    }

private:
    SimulatedClock& m_clock;
    std::optional<SimulatedClock::Participant> m_self;
    std::uint64_t m_start = 0;
    std::multimap<std::uint32_t, std::function<std::optional<int>()>> m_script;
};

/// Interrupts as soon and as often as `isTime` says so. Takes no part in the clock, which is the worker's alone.
class EventsWhen final : public EventSource {
public:
    explicit EventsWhen(std::function<bool()> isTime) : m_isTime(std::move(isTime)) {}

    void Begin() override {}
    void End() override {}
    std::optional<int> Wait(std::uint32_t /*ms*/) override {
        std::this_thread::yield();
        return m_isTime() ? std::optional(SIGINT) : std::nullopt;
    }

private:
    std::function<bool()> m_isTime;
};

class ClosedPipe final : public std::streambuf {};

class HeadlessProgramTest : public testing::Test {
protected:
    int Run(const std::vector<std::string>& arguments) { return Run(arguments, m_events, m_out); }

    int Run(const std::vector<std::string>& arguments, EventSource& events, std::ostream& out) {
        m_console.emplace(Console{.out = out, .err = m_err});
        m_program.emplace(*m_console, events);
        return m_program->Run(arguments);
    }

    /// A test of 16 KB each 250 ms for a minute, with files of 1 MB, by an access method; `more` may repeat none of
    /// these.
    [[nodiscard]] std::vector<std::string> PacedTest(const std::string& mode, const std::string& method,
                                                     const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments{"--path",        m_folder.Native(),
                                           "--mode",        mode,
                                           "--transfer-kb", "16",
                                           "--rate-kbps",   "64",
                                           "--limit-mb",    "1",
                                           "--minutes",     "1",
                                           "--method",      method,
                                           "--output-log",  m_files.Native("output"),
                                           "--error-log",   m_files.Native("errors"),
                                           "--json",        m_files.Native("json")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    }

    [[nodiscard]] Json Document() const { return Json::parse(ContentOf(m_files.Native("json"))); }

    /// The output log without the line on the file cache, which depends on the file system.
    [[nodiscard]] std::vector<std::string> Lines() const {
        std::vector<std::string> lines = MessagesOf(m_files.Native("output"));
        std::erase_if(lines, [](const std::string& line) { return line.starts_with("File cache: "); });
        return lines;
    }
    [[nodiscard]] std::vector<std::string> ErrorLines() const { return MessagesOf(m_files.Native("errors")); }
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
    std::optional<Console> m_console;
    std::optional<HeadlessProgram> m_program;
};

std::string Line(const std::string& text, int second) {
    return text + DateText(second) + '\r';
}

std::string Measurement(int second, const std::string& reads, const std::string& writes) {
    return DateText(second) + " - measurement " + reads + " " + writes + " Elapsed=" + std::to_string(second) + '\r';
}

std::string Rates(char direction, int transfers, int average, int recent) {
    const std::string key(1, direction);
    return key + "Qy=" + std::to_string(transfers) + ' ' + key + "Av=" + std::to_string(average) + ' ' + key +
           "Cr=" + std::to_string(recent) + ' ' + key + "Tm=0";
}

const std::string kNoReads = "RQy=n/a RAv=n/a RCr=n/a RTm=n/a";

/// The lines up to the choice of the access method.
std::vector<std::string> OpeningLines(const std::string& path, const std::string& label, const std::string& method) {
    const std::string key = "Test Parameters - ";
    return {key + "Test Name: Custom Test\r",
            key + "File Access API: " + label + '\r',
            key + "Read-Write Method: Mixed R/W Sequential\r",
            key + "Transfer Size KB: 16\r",
            key + "Transfer Rate KBPS: 64\r",
            key + "Duration Minutes: 1\r",
            key + "LOOP: 0\r",
            key + "Max File Size MB: 1\r",
            key + "Drive Path To Test: " + path + '\r',
            key + "Path Is CORVANE: 0\r",
            key + "Shared File Included in Path (for Reads): 0\r",
            Line("Selecting file access protocol and generating test object... ", 0),
            Line("Selected Test Method: '" + method + "' - ", 0)};
}

}  // namespace

TEST_F(HeadlessProgramTest, AMixedPacedTestLogsEveryStepAndReportsIt) {
    // A file of 1 MB takes sixteen seconds to write, so the write phase opens it twice. The sample file of the
    // descriptors is a block of 4 MB and lasts for all of the reading; C streams find the end of theirs, which costs an
    // interval.
    struct Case {
        const char* method;
        const char* label;
        const char* name;
        int readsAtEnd;
        bool findsEnd;
    };
    for (const Case& c :
         {Case{"mac", "MAC", "MAC File API", 120, false}, Case{"posix", "Unknown", "Posix API Test", 119, true}}) {
        SCOPED_TRACE(c.method);
        SimulatedClock clock;
        ScriptedEvents events(clock);
        std::ostringstream out;
        ASSERT_EQ(Run(PacedTest("mixed", c.method), events, out), 0);

        const std::string opened = "Writer 0 opened file " + m_folder.Colon("IOT0.tio") + ' ';
        const std::string reopened = "Reader 0 opened file " + m_folder.Colon("IOT1.tio") + ' ';
        const std::string finishing =
            "Finishing prepration for read test... ** Closing test data file may take several seconds or more. ** ";
        const std::string wrote = Rates('W', 120, 64, 0);
        std::vector<std::string> expected = OpeningLines(m_folder.Colon(), c.label, c.name);
        const auto add = [&](const std::vector<std::string>& lines) {
            expected.insert(expected.end(), lines.begin(), lines.end());
        };
        add({Line(opened, 0), Measurement(6, kNoReads, Rates('W', 23, 64, 64)),
             Measurement(12, kNoReads, Rates('W', 47, 64, 64)), Line(opened, 16),
             Measurement(18, kNoReads, Rates('W', 71, 64, 64)), Measurement(24, kNoReads, Rates('W', 95, 64, 64)),
             Measurement(30, kNoReads, Rates('W', 119, 64, 64)), Line("Preparing reader 0 for read test. ", 30),
             Line(finishing, 30), Line(reopened, 31), Measurement(36, Rates('R', 19, 0, 0), wrote),
             Measurement(42, Rates('R', 43, 64, 64), wrote)});
        if (c.findsEnd) {
            add({Line("EOF detected reader 0 file " + m_folder.Colon("IOT1.tio") + " err no =0 ", 47),
                 Line(reopened, 47), Measurement(48, Rates('R', 66, 64, 64), wrote),
                 Measurement(54, Rates('R', 90, 63, 60), wrote), Measurement(60, Rates('R', 114, 63, 64), wrote)});
        } else {
            add({Measurement(48, Rates('R', 67, 64, 64), wrote), Measurement(54, Rates('R', 91, 64, 64), wrote),
                 Measurement(60, Rates('R', 115, 64, 64), wrote)});
        }
        add({Line("Ending reader #: 0 ", 61), Line("Test stopped ", 63)});
        EXPECT_THAT(Lines(), ElementsAreArray(expected));
        EXPECT_THAT(ErrorLines(), ElementsAre(Line("Preparing reader 0 for read test. ", 30), Line(finishing, 30),
                                              Line("Test stopped ", 63)));
        EXPECT_TRUE(IsLogClosed());
        EXPECT_TRUE(std::filesystem::is_empty(m_folder.Native()));

        const Json document = Document();
        EXPECT_EQ(document["state"], "completed");
        EXPECT_EQ(document["verdict"], "sustained");
        EXPECT_EQ(document["exitStatus"], 0);
        EXPECT_EQ(document["startedAt"], "2004-01-05T09:03:07");
        EXPECT_EQ(document["elapsedSeconds"], 61);
        EXPECT_EQ(document["method"], c.name);
        EXPECT_EQ(document["path"], Json({{"colon", m_folder.Colon()}, {"native", m_folder.Native()}}));
        EXPECT_THAT(document["cache"]["mode"], Not("unknown"));
        EXPECT_EQ(document["parameters"]["transferKiB"], 16);
        EXPECT_EQ(document["parameters"]["rateKBps"], 64);
        EXPECT_EQ(document["parameters"]["intervalMs"], 250);
        EXPECT_EQ(document["writes"]["transfers"], 120);
        EXPECT_EQ(document["writes"]["bytes"], 120 * 16384);
        EXPECT_EQ(document["writes"]["seconds"], 30.0);
        EXPECT_EQ(document["writes"]["averageKBps"], 64.0);
        EXPECT_EQ(document["writes"]["late"]["count"], 0);
        EXPECT_EQ(document["reads"]["transfers"], c.readsAtEnd);
        EXPECT_NEAR(document["reads"]["averageKBps"], c.readsAtEnd * 16 / 30.0, 0.001);
        EXPECT_EQ(document["reads"]["latencyUs"]["max"], 0);
        EXPECT_EQ(document["samples"].size(), 10U);
        EXPECT_EQ(document["samples"][5],
                  Json({{"elapsedSeconds", 36},
                        {"phase", "reading"},
                        {"writes", {{"transfers", 120}, {"averageKBps", 64}, {"recentKBps", 0}, {"slowestMs", 0}}},
                        {"reads", {{"transfers", 19}, {"averageKBps", 0}, {"recentKBps", 0}, {"slowestMs", 0}}}}));
        EXPECT_THAT(out.str(), HasSubstr("\nVerdict       sustained (writes 100.0 %, reads"));
    }
    EXPECT_THAT(m_err.str(),
                StartsWith("Writing, 0:01 gone, 0:59 left: 0.047 MB/s (average 0.047), slowest 0.000 ms, 0 errors\n"
                           "Preparing, 0:31 gone, 0:29 left: 0.00 MB/s (average 0.062), slowest 0.000 ms, 0 errors\n"
                           "Reading, 0:32 gone, 0:28 left: 0.052 MB/s (average 0.052), slowest 0.000 ms, 0 errors\n"
                           "Finishing, 1:02 gone, 0:00 left: 0.00 MB/s (average 0.062), slowest 0.000 ms, 0 errors\n"
                           "Writing, "));
}

TEST_F(HeadlessProgramTest, ASelfTestIsNotJudgedByARateItCannotHave) {
    std::vector<std::string> arguments = PacedTest("writes", "self-test", {"--quiet"});
    arguments[1] = "Nowhere:at:all";  // it touches no file
    EXPECT_EQ(Run(arguments), 0);
    EXPECT_EQ(Document()["verdict"], "unpaced");
    EXPECT_EQ(Document()["writes"]["transfers"], 240);
    EXPECT_EQ(Document()["writes"]["percentOfTarget"], nullptr);
    EXPECT_EQ(Document()["reads"], nullptr);
    EXPECT_EQ(Document()["path"]["native"], nullptr);
}

TEST_F(HeadlessProgramTest, APathThatVanishesIsToldAndCountedToTheEnd) {
    m_events.Do([&] { std::filesystem::rename(m_folder.Native(), m_files.Native("away")); }, 10'500);
    EXPECT_EQ(Run(PacedTest("writes", "mac")), 4);
    std::filesystem::rename(m_files.Native("away"), m_folder.Native());
    const Json document = Document();
    EXPECT_EQ(document["state"], "completed");
    EXPECT_EQ(document["verdict"], "short");
    EXPECT_EQ(document["writes"]["transfers"], 64);  // the pass that was under way came to its end
    const std::vector<std::string> errors = ErrorLines();
    ASSERT_GT(errors.size(), 1000U);  // sixty attempts a second
    EXPECT_EQ(document["writes"]["errors"], errors.size() - 1);
    EXPECT_THAT(errors.front(), AllOf(StartsWith("Error opening file "), EndsWith(DateText(16) + '\r')));
    EXPECT_THAT(m_err.str(), HasSubstr("\ngaugeline-cli: Error opening file " + m_folder.Colon("IOT0.tio")));
    EXPECT_THAT(m_out.str(), HasSubstr("\nVerdict       short (writes 26.7 % of 64 KB/s), with "));
    EXPECT_TRUE(IsLogClosed());
}

TEST_F(HeadlessProgramTest, AFirstStopSignalEndsTheTestInOrderWhereverItIs) {
    struct Case {
        int signal;
        std::uint32_t atMS;
        const char* method;
        int exitStatus;
        int stoppedAt;
        int writes;
        Json verdict;
    };
    // The transfer that waits for its interval is still made, and so is the rest of the cycle in passing: preparing to
    // read takes 1.1 seconds, the end 1 second.
    for (const Case& c :
         {Case{SIGINT, 0, "mac", 130, -1, 0, nullptr}, Case{SIGTERM, 5'100, "posix", 143, 8, 21, "sustained"},
          Case{SIGHUP, 12'000, "mac", 129, 15, 48, "sustained"},
          Case{SIGINT, 30'500, "posix", 130, 33, 120, "sustained"}}) {
        SCOPED_TRACE(c.atMS);
        SimulatedClock clock;
        ScriptedEvents events(clock);
        events.Signal(c.signal, c.atMS);
        EXPECT_EQ(Run(PacedTest("mixed", c.method), events, m_out), c.exitStatus);
        EXPECT_FALSE(m_program->HasAbandonedWorker());
        EXPECT_TRUE(IsLogClosed());
        EXPECT_TRUE(std::filesystem::is_empty(m_folder.Native()));
        const Json document = Document();
        EXPECT_EQ(document["state"], "interrupted");
        EXPECT_EQ(document["exitStatus"], c.exitStatus);
        EXPECT_EQ(document["signal"], c.signal);
        EXPECT_EQ(document["verdict"], c.verdict);
        EXPECT_EQ(document["writes"]["transfers"], c.writes);
        const std::string lastLine = c.stoppedAt < 0
                                         ? Line("Selecting file access protocol and generating test object... ", 0)
                                         : Line("Test stopped ", c.stoppedAt);
        EXPECT_EQ(Lines().back(), lastLine);
    }
}

TEST_F(HeadlessProgramTest, AStatusRequestIsAnsweredAtOnceAndWithoutProgressToo) {
    m_events.Signal(SIGUSR1, 2'600);
    EXPECT_EQ(Run(PacedTest("writes", "mac", {"--quiet"})), 0);
    EXPECT_EQ(m_err.str(), "Writing, 0:02 gone, 0:58 left: 0.068 MB/s (average 0.060), slowest 0.000 ms, 0 errors\n");
}

TEST_F(HeadlessProgramTest, RepeatedRequestsOfASessionManagerAreOneRequest) {
    m_events.Signal(SIGHUP, 5'000);
    m_events.Signal(SIGHUP, 5'001);
    m_events.Signal(SIGTERM, 5'200);
    EXPECT_EQ(Run(PacedTest("writes", "mac")), 129);
    EXPECT_FALSE(m_program->HasAbandonedWorker());
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.Native()));
}

TEST_F(HeadlessProgramTest, ASecondInterruptGivesUpAHangingTransferAndNamesWhatItLeaves) {
    // Two passes write a scratch file beside the pipe that is to be read; then half a transfer is there to read.
    const std::string pipe = m_folder.Native("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    FileDescriptor otherEnd;
    ASSERT_EQ(otherEnd.Open(pipe, O_RDWR), 0);
    const std::vector<char> half(8192);
    ASSERT_EQ(otherEnd.Write(half.data(), half.size()).bytes, 8192);
    EventsWhen events([&] {
        int waiting = -1;
        return ::ioctl(otherEnd.Descriptor(), FIONREAD, &waiting) == 0 && waiting == 0;
    });
    std::vector<std::string> arguments = PacedTest("mixed", "posix", {"--shared-file"});
    arguments[1] = pipe;
    EXPECT_EQ(Run(arguments, events, m_out), 130);

    EXPECT_TRUE(m_program->HasAbandonedWorker());
    const std::string left = m_folder.Colon("IOT0.tio") + " (" + m_folder.Native("IOT0.tio") + ")\n";
    EXPECT_TRUE(std::filesystem::exists(m_folder.Native("IOT0.tio")));
    EXPECT_THAT(m_err.str(), HasSubstr("gaugeline-cli: left behind: " + left));
    EXPECT_THAT(m_out.str(), AllOf(HasSubstr("Left behind   " + left), HasSubstr("\nVerdict       short")));
    EXPECT_EQ(Document()["state"], "interrupted");
    EXPECT_EQ(Document()["scratchFilesLeft"][0]["native"], m_folder.Native("IOT0.tio"));
    EXPECT_TRUE(IsLogClosed());
    EXPECT_THAT(Lines().back(), StartsWith("Test stopped "));

    // The worker would end once its transfer does.
    ASSERT_EQ(otherEnd.Write(half.data(), half.size()).bytes, 8192);
    ASSERT_THAT(LThread::JoinFinished(100'000), IsEmpty());
    EXPECT_TRUE(m_program->Conductor()->WorkerHasEnded());
}

TEST_F(HeadlessProgramTest, WhatCannotStartSaysWhyAndLeavesTheLogsAlone) {
    const std::string file = m_files.Native("file");
    std::ofstream(file) << "content";
    struct Case {
        std::vector<std::string> arguments;
        std::string reason;
    };
    const std::string folder = m_folder.Native();
    const std::string output = m_files.Native("output");
    for (const Case& c : {
             Case{{"--path", folder + "/none"},
                  m_folder.Colon("none") + " (" + folder + "/none) cannot be used (No such file"},
             Case{{"--path", file}, " is not a folder"},
             Case{{"--path", file + "/below"}, "cannot be used (Not a directory)"},
             Case{{"--path", "Nowhere:data"}, "Nowhere:data is no path of this system"},
             Case{{"--path", m_folder.Colon() + ":..:up"}, "is no path of this system"},
             Case{{"--path", folder, "--shared-file"}, " is a folder"},
             Case{{"--path", folder + "/none/file", "--shared-file"}, "its folder is not there"},
             Case{{"--path", folder, "--error-log", folder},
                  "the error log " + m_folder.Colon() + " (" + folder + ") cannot be opened (Is a directory)"},
             Case{{"--path", folder, "--error-log", "Nowhere:log"}, "the error log Nowhere:log is no path"},
             Case{{"--path", folder, "--json", folder + "/none/json"}, "cannot be written (No such file or directory)"},
         }) {
        SCOPED_TRACE(c.reason);
        std::ofstream(output) << "earlier";
        std::vector<std::string> arguments = c.arguments;
        arguments.insert(arguments.end(), {"--output-log", output});
        if (arguments[2] != "--json") {
            arguments.insert(arguments.end(), {"--json", "-"});
        }
        m_out.str("");
        m_err.str("");
        EXPECT_EQ(Run(arguments), 3);
        EXPECT_THAT(m_err.str(), AllOf(StartsWith("gaugeline-cli: "), HasSubstr(c.reason)));
        EXPECT_EQ(ContentOf(output), "earlier");
        if (arguments[2] != "--json") {
            const Json document = Json::parse(m_out.str());
            EXPECT_EQ(document["state"], "notStarted");
            EXPECT_EQ(document["exitStatus"], 3);
            EXPECT_THAT(document["error"], HasSubstr(c.reason));
        }
    }
}

TEST_F(HeadlessProgramTest, AClosedStandardOutputChangesNothingElse) {
    ClosedPipe pipe;
    std::ostream out(&pipe);
    EXPECT_EQ(Run(PacedTest("writes", "mac"), m_events, out), 0);
    EXPECT_TRUE(IsLogClosed());
    EXPECT_EQ(Document()["verdict"], "sustained");
    EXPECT_THAT(m_err.str(), EndsWith("gaugeline-cli: standard output could not take all of the results\n"));
}

TEST_F(HeadlessProgramTest, TheAutomaticChoiceIsLoggedAndReported) {
    // The selection has a thread of its own, which does not wait for the simulated clock.
    EventsWhen events([&] { return m_program->Conductor() != nullptr && !m_program->Conductor()->WorkerHasEnded(); });
    EXPECT_EQ(Run(PacedTest("writes", "auto"), events, m_out), 130);
    ASSERT_THAT(LThread::JoinFinished(100'000), IsEmpty());
    EXPECT_EQ(Document()["method"], "MAC File API");
    EXPECT_EQ(Document()["parameters"]["method"], "auto");
    EXPECT_THAT(ContentOf(m_files.Native("output")),
                AllOf(HasSubstr("File Access API: Auto\r"), HasSubstr("Selected Test Method: 'MAC File API' - ")));
}

TEST_F(HeadlessProgramTest, WrongUseTouchesNothing) {
    EXPECT_EQ(Run(PacedTest("writes", "mac", {"--threshold-ms", "0"})), 2);
    EXPECT_TRUE(std::filesystem::is_empty(m_files.Native()));
    EXPECT_EQ(m_out.str(), "");
    EXPECT_EQ(m_err.str(), "gaugeline-cli: 1 problem with the command line:\n"
                           "  --threshold-ms: '0' is not a whole number from 1 to 2147483647\n"
                           "gaugeline-cli --help shows what there is.\n");
}

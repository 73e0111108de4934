#include "Programs/CommandLine/CommandLineOptions.h"

#include "Platform/ColonPath.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

using Arguments = std::vector<std::string>;

CommandLineOptions Options(const Arguments& arguments) {
    const ParsedCommandLine parsed = ParseCommandLine(arguments);
    EXPECT_THAT(parsed.problems, IsEmpty());
    return parsed.options;
}

}  // namespace

TEST(CommandLineOptionsTest, AWrongValueIsNamedWithWhatIsExpected) {
    const std::string longColonPath = "Root:" + std::string(300, 'x');
    struct Case {
        Arguments arguments;
        std::string problem;
    };
    for (const Case& c :
         {Case{{"--minutes", "0"}, "--minutes: '0' is not a whole number from 1 to 71582788"},
          Case{{"--minutes=71582789"}, "--minutes: '71582789' is not a whole number from 1 to 71582788"},
          Case{{"--transfer-kb", "4194304"}, "--transfer-kb: '4194304' is not a whole number from 1 to 4194303"},
          Case{{"--rate-kbps", "4294967295"},
               "--rate-kbps: '4294967295' is not a whole number from 2 to 4294967294 or the word unlimited"},
          Case{{"--limit-mb", "99999999999999999999"},
               "--limit-mb: '99999999999999999999' is not a whole number from 1 to 4294967295"},
          Case{{"--threshold-ms", "1", "--threshold-warnings", "-1"},
               "--threshold-warnings: '-1' is not a whole number from 0 to 2147483647 or the word unlimited"},
          Case{{"--mode", "Writes"}, "--mode: 'Writes' is none of writes, reads, mixed"},
          Case{{"--preset", "17"}, "--preset: '17' is no preset's number or name; --list-presets shows them"},
          Case{{"--threshold-warnings", "5"}, "--threshold-warnings: needs --threshold-ms"},
          Case{{"--shared-file"}, "--shared-file: needs --path, which names the file"},
          Case{{"--loop=no"}, "--loop: takes no value"},
          Case{{"--minutes", "1", "--minutes", "2"}, "--minutes: is given more than once"},
          Case{{"--error-log", longColonPath},
               "--error-log: the path is too long: its colon form has 305 characters, and 255 is the most"},
          Case{{"--output-log", "/a/log", "--error-log", "/a/./log"},
               "--error-log: names the same file as --output-log"},
          Case{{"--path", "/a/log", "--shared-file", "--json", "Root:a:log"},
               "--json: names the same file as --path"}}) {
        EXPECT_THAT(ParseCommandLine(c.arguments).problems, ElementsAre(StartsWith(c.problem))) << c.problem;
    }
}

TEST(CommandLineOptionsTest, EverythingWrongIsNamedInOneAnswer) {
    EXPECT_THAT(ParseCommandLine({"extra", "--minutes", "x", "--mode", "--preset", "2", "--bogus"}).problems,
                ElementsAre("unexpected argument: extra", "unknown option: --bogus", "--mode: needs a value",
                            "--minutes: 'x' is not a whole number from 1 to 71582788",
                            "--mode: cannot be combined with --preset, which settles it"));
}

TEST(CommandLineOptionsTest, APresetLeavesTheUsersOwnChoicesAlone) {
    for (const std::string name : {"16", "unlimited writes (8192kb)"}) {
        const CommandLineOptions options =
            Options({"--preset", name, "--minutes", "7", "--loop", "--method", "posix", "--cache", "--threshold-ms",
                     "20", "--threshold-warnings", "unlimited"});
        const IOTestParameters& test = options.plan.parameters;
        EXPECT_EQ(test.m_standardTestID, 16);
        EXPECT_EQ(test.m_testName, "Unlimited Writes (8192KB)");
        EXPECT_THAT(
            (std::vector{test.m_transferSizeKB, test.m_transferRateKBps, test.m_durationMinutes, test.m_maxFileSizeMB}),
            ElementsAre(8192, kUnlimitedRate, 7, 800));
        EXPECT_TRUE(test.m_loop);
        EXPECT_FALSE(test.m_noCache);
        EXPECT_EQ(test.m_fileAccessMethod, kAccessPosix);
        EXPECT_EQ(options.plan.thresholdMS, 20);
        EXPECT_EQ(options.plan.thresholdWarnings, TestPlan::kNoWarningLimit);
    }
}

TEST(CommandLineOptionsTest, PathsAreTakenInEitherFormAndFromTheWorkingDirectory) {
    const TemporaryFolder folder;
    const std::string here = ColonPath::FromNative(std::filesystem::current_path().string() + "/").value();
    struct Case {
        std::string typed;
        std::string colon;
    };
    for (const Case& c :
         {Case{folder.Native(), folder.Colon()}, Case{folder.Colon(), folder.Colon()},
          Case{folder.Native("a:b"), folder.Colon() + ":a/b"}, Case{"Unknown:x", "Unknown:x"},
          Case{"data", here + "data"}, Case{"./a:b", here + "a/b"}, Case{".", here}, Case{"[x,y]", here + "[x,y]"}}) {
        const CommandLineOptions options = Options({"--path", c.typed, "--output-log", c.typed});
        EXPECT_EQ(options.plan.parameters.m_drivePath, c.colon);
        EXPECT_EQ(options.plan.nativePath, ColonPath::ToNative(c.colon));
        EXPECT_EQ(options.plan.outputLog->colon, c.colon);
    }
}

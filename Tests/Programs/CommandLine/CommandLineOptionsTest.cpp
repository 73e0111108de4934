#include "Programs/CommandLine/CommandLineOptions.h"

#include "Platform/ColonPath.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

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
    using Case = std::pair<Arguments, std::string>;
    for (const auto& [arguments, problem] :
         {Case{{"--rate-kbps", "4294967295"},
               "--rate-kbps: '4294967295' is not a whole number from 2 to 4294967294 or the word unlimited"},
          Case{{"--mode", "Writes"}, "--mode: 'Writes' is none of writes, reads, mixed"},
          Case{{"--preset", "17"}, "--preset: '17' is no preset's number or name; --list-presets shows them"},
          Case{{"--threshold-warnings", "5"}, "--threshold-warnings: needs --threshold-ms"},
          Case{{"--shared-file"}, "--shared-file: needs --path, which names the file"},
          Case{{"--loop=no"}, "--loop: takes no value"},
          Case{{"--minutes", "1", "--minutes", "2"}, "--minutes: is given more than once"},
          Case{{"--error-log", longColonPath},
               "--error-log: the path is too long: its colon form has 305 characters, and 255 is the most"},
          Case{{"--output-log", "/a/log", "--error-log", "/a/./log"},
               "--error-log: names the same file as --output-log"}}) {
        EXPECT_THAT(ParseCommandLine(arguments).problems, ElementsAre(StartsWith(problem))) << problem;
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
        EXPECT_TRUE(test.m_loop && !test.m_noCache && test.m_fileAccessMethod == kAccessPosix);
        EXPECT_TRUE(options.plan.thresholdMS == 20 && options.plan.thresholdWarnings == TestPlan::kNoWarningLimit);
    }
}

TEST(CommandLineOptionsTest, PathsAreTakenInEitherFormAndFromTheWorkingDirectory) {
    const TemporaryFolder folder;
    const std::string here = ColonPath::FromNative(std::filesystem::current_path().string() + "/").value();
    const std::pair<std::string, std::string> cases[] = {{folder.Native(), folder.Colon()},
                                                         {folder.Colon(), folder.Colon()},
                                                         {folder.Native("a:b"), folder.Colon("a:b")},
                                                         {"Unknown:x", "Unknown:x"},
                                                         {"data", here + "data"},
                                                         {"./a:b", here + "a/b"},
                                                         {".", here}};
    for (const auto& [typed, colon] : cases) {
        const CommandLineOptions options = Options({"--path", typed, "--output-log", typed});
        EXPECT_EQ(options.plan.parameters.m_drivePath, colon);
        EXPECT_EQ(options.plan.nativePath, ColonPath::ToNative(colon));
        EXPECT_EQ(options.plan.outputLog->colon, colon);
    }
}

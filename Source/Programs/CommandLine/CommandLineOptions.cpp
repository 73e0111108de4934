#include "Programs/CommandLine/CommandLineOptions.h"

#include "CoreClasses/IOTestParameterCollectionMgr.h"
#include "CoreClasses/ScratchFileNames.h"
#include "Programs/CommandLine/TextFormat.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

namespace {

/// A path text holds 255 characters.
constexpr std::size_t kLongestPath = LStr255::kMaxLength;

struct Range {
    std::int64_t lowest;
    std::int64_t highest;
};

constexpr Range kMinutesRange{1, kMaxDurationMinutes};
constexpr Range kTransferRange{1, kMaxTransferSizeKB};
constexpr Range kRateRange{2, kMaxTransferRateKBps};
constexpr Range kLimitRange{1, 0xFFFFFFFF};
constexpr Range kThresholdRange{1, std::numeric_limits<std::int32_t>::max()};
constexpr Range kWarningsRange{0, std::numeric_limits<std::int32_t>::max()};

struct NamedValue {
    std::string_view name;
    std::int32_t value;
};

constexpr std::array<NamedValue, 3> kModes{
    {{"writes", kWritesOnly}, {"reads", kReadsOnly}, {"mixed", kWritesThenReads}}};
constexpr std::array<NamedValue, 4> kMethods{{{"auto", kAccessAutomatic},
                                              {"mac", kAccessMacFileManager},
                                              {"posix", kAccessPosix},
                                              {"self-test", kAccessSelfTest}}};

template <std::size_t N>
const char* NameOf(const std::array<NamedValue, N>& names, std::int32_t value) {
    const auto found = std::find_if(names.begin(), names.end(), [&](const NamedValue& n) { return n.value == value; });
    return found != names.end() ? found->name.data() : "unknown";
}

std::optional<std::int64_t> ParseNumber(const std::string& text) {
    std::int64_t number = 0;
    const char* end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stopped == end ? std::optional(number) : std::nullopt;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) { return lower(x) == lower(y); });
}

/// The id of the preset of that number or name.
std::optional<std::int32_t> FindPreset(const std::string& text) {
    const std::optional<std::int64_t> number = ParseNumber(text);
    IOTestParameters preset;
    for (int id = 0; IOTestParameterCollectionMgr::GetSingleton()->GetCopyOfStandardParametersByID(id, preset); ++id) {
        if (number == id || EqualsIgnoringCase(preset.m_testName.View(), text)) {
            return id;
        }
    }
    return std::nullopt;
}

/// What the options are to the library that takes the command line apart: texts. Their values are judged in `Reader`,
/// all of them, where the library would stop at the first wrong one.
class Syntax {
public:
    Syntax();

    CLI::App app{"Measures how well a storage path sustains sequential writes and reads.", "gaugeline-cli"};

    CLI::Option* path = nullptr;
    CLI::Option* sharedFile = nullptr;
    CLI::Option* preset = nullptr;
    CLI::Option* mode = nullptr;
    CLI::Option* transferKB = nullptr;
    CLI::Option* rateKBps = nullptr;
    CLI::Option* limitMB = nullptr;
    CLI::Option* method = nullptr;
    CLI::Option* cache = nullptr;
    CLI::Option* minutes = nullptr;
    CLI::Option* loop = nullptr;
    CLI::Option* thresholdMS = nullptr;
    CLI::Option* thresholdWarnings = nullptr;
    CLI::Option* outputLog = nullptr;
    CLI::Option* errorLog = nullptr;
    CLI::Option* json = nullptr;
    CLI::Option* quiet = nullptr;
    CLI::Option* listPresets = nullptr;
    CLI::Option* listVolumes = nullptr;
    CLI::Option* version = nullptr;
    CLI::Option* help = nullptr;

private:
    void AddTestOptions();
    void AddReportOptions();
    void AddOtherOptions();
    CLI::Option* AddValue(const char* name, const char* value, const std::string& description);
    CLI::Option* AddFlag(const std::string& name, const std::string& description);

    const char* m_group = "";
};

Syntax::Syntax() {
    app.set_help_flag("");
    app.allow_extras();
    AddTestOptions();
    AddReportOptions();
    AddOtherOptions();
    app.footer(
        "A path is a colon path (Volume:Folder:file) or a native one; a relative native path counts from the working\n"
        "directory. 1 KB is 1024 bytes, 1 MB is 1024 KB.\n\n"
        "Exit status: 0 the target rate was sustained, or there was none; 1 it was missed (marginal or short);\n"
        "2 wrong use; 3 the test could not start; 4 transfers or files failed; 128 + n after signal n.\n\n"
        "Signals: SIGINT, SIGTERM and SIGHUP stop the test and clean up; a second SIGINT quits at once;\n"
        "SIGUSR1 shows the status.");
}

CLI::Option* Syntax::AddValue(const char* name, const char* value, const std::string& description) {
    CLI::Option* option = app.add_option(name, CLI::callback_t{}, description);
    // None as well, so that a missing value does not take the next option for one, and several, to tell them.
    return option->expected(0, 1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->option_text(value)
        ->group(m_group);
}

CLI::Option* Syntax::AddFlag(const std::string& name, const std::string& description) {
    return app.add_flag(name, description)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)->group(m_group);
}

void Syntax::AddTestOptions() {
    m_group = "What to test";
    path = AddValue("--path", "PATH", "Folder or volume to test (default: the working directory)");
    sharedFile = AddFlag("--shared-file", "PATH names an existing file to read; it is not deleted");
    preset = AddValue("--preset", "ID|NAME", "A standard test (see --list-presets) instead of the next four");
    mode = AddValue("--mode", "MODE", "writes, reads or mixed: half the time writes, then reads (default: mixed)");
    transferKB = AddValue("--transfer-kb", "N", "Size of one transfer in KB (default: 256)");
    rateKBps = AddValue("--rate-kbps", "N|unlimited", "Target rate in KB/s, at least 2 (default: 384)");
    limitMB = AddValue("--limit-mb", "N", "Size limit of a scratch file in MB (default: 100)");
    m_group = "How to test";
    method =
        AddValue("--method", "METHOD", "Access method: auto, mac, posix or self-test (default: auto, which takes mac)");
    minutes = AddValue("--minutes", "N", "Duration of one cycle in minutes (default: 2)");
    loop = AddFlag("--loop", "Repeat the cycle until a signal");
    cache = AddFlag("--cache", "Leave the system's file cache on");
    thresholdMS = AddValue("--threshold-ms", "N", "Log and count transfers of more than N ms");
    thresholdWarnings = AddValue("--threshold-warnings", "N|unlimited", "Log at most N of them (default: 50)");
}

void Syntax::AddReportOptions() {
    m_group = "What to report";
    outputLog = AddValue("--output-log", "FILE", "Write the output log, which is emptied first");
    errorLog = AddValue("--error-log", "FILE", "Write the error log, which is emptied first");
    json = AddValue("--json", "FILE", "Write the results as JSON; - for standard output");
    quiet = AddFlag("--quiet", "No progress on standard error");
}

void Syntax::AddOtherOptions() {
    m_group = "Instead of a test";
    listPresets = AddFlag("--list-presets", "List the standard tests");
    listVolumes = AddFlag("--list-volumes", "List the mounted volumes");
    version = AddFlag("--version", "Show the version");
    help = AddFlag("-h,--help", "Show this help");
}

/// Turns the taken-apart command line into the record, and notes what is wrong with it.
class Reader {
public:
    explicit Reader(const Syntax& syntax) : m_syntax(syntax) {}

    [[nodiscard]] ParsedCommandLine Read();

private:
    void ReadAction();
    void ReadTest();
    void ReadPreset();
    void ReadPath();
    void ReadDefaultPath();
    void ReadReports();
    void CheckSyntax();
    void CheckConflicts();
    void CheckDifferentFiles();

    template <typename Number>
    void ReadNumber(const CLI::Option* option, const Range& range, Number& out, const char* word = nullptr,
                    Number wordValue = {});
    template <std::size_t N>
    void ReadName(const CLI::Option* option, const std::array<NamedValue, N>& names, std::int32_t& out);
    [[nodiscard]] std::optional<TypedPath> ReadFile(const CLI::Option* option, std::size_t roomForName = 0);
    [[nodiscard]] std::optional<std::string> ValueOf(const CLI::Option* option);
    void Wrong(const CLI::Option* option, const std::string& what);

    const Syntax& m_syntax;
    ParsedCommandLine m_parsed;
};

ParsedCommandLine Reader::Read() {
    CheckSyntax();
    ReadTest();
    ReadPath();
    ReadReports();
    CheckConflicts();
    CheckDifferentFiles();
    ReadAction();
    return std::move(m_parsed);
}

void Reader::Wrong(const CLI::Option* option, const std::string& what) {
    m_parsed.problems.push_back(option->get_name() + ": " + what);
}

void Reader::CheckSyntax() {
    for (const std::string& extra : m_syntax.app.remaining()) {
        m_parsed.problems.push_back((extra.starts_with('-') ? "unknown option: " : "unexpected argument: ") + extra);
    }
    for (const CLI::Option* option : m_syntax.app.get_options()) {
        const bool isFlag = option->get_items_expected_max() == 0;
        for (const std::string& value : option->results()) {
            if (isFlag && value != "true") {
                Wrong(option, "takes no value");
            }
        }
        if (!isFlag && option->count() > 1) {
            Wrong(option, "is given more than once");
        }
    }
}

/// The value of an option that is there; a missing or empty one is a problem.
std::optional<std::string> Reader::ValueOf(const CLI::Option* option) {
    if (option->count() == 0) {
        return std::nullopt;
    }
    std::string value = option->results().front();
    if (value.empty()) {
        Wrong(option, "needs a value");
        return std::nullopt;
    }
    return value;
}

template <typename Number>
void Reader::ReadNumber(const CLI::Option* option, const Range& range, Number& out, const char* word,
                        Number wordValue) {
    const std::optional<std::string> value = ValueOf(option);
    if (!value) {
        return;
    }
    if (word != nullptr && *value == word) {
        out = wordValue;
        return;
    }
    const std::optional<std::int64_t> number = ParseNumber(*value);
    if (number && *number >= range.lowest && *number <= range.highest) {
        out = static_cast<Number>(*number);
        return;
    }
    std::string expected =
        "a whole number from " + std::to_string(range.lowest) + " to " + std::to_string(range.highest);
    if (word != nullptr) {
        expected += std::string(" or the word ") + word;
    }
    Wrong(option, "'" + *value + "' is not " + expected);
}

template <std::size_t N>
void Reader::ReadName(const CLI::Option* option, const std::array<NamedValue, N>& names, std::int32_t& out) {
    const std::optional<std::string> value = ValueOf(option);
    if (!value) {
        return;
    }
    std::string known;
    for (const NamedValue& candidate : names) {
        if (candidate.name == *value) {
            out = candidate.value;
            return;
        }
        known += (known.empty() ? "" : ", ") + std::string(candidate.name);
    }
    Wrong(option, "'" + *value + "' is none of " + known);
}

std::optional<TypedPath> Reader::ReadFile(const CLI::Option* option, std::size_t roomForName) {
    const std::optional<std::string> value = ValueOf(option);
    if (!value) {
        return std::nullopt;
    }
    TypedPath path = ResolveTypedPath(*value);
    if (path.colon.empty()) {
        Wrong(option, "'" + *value + "' has no colon form");
    } else if (path.colon.size() + roomForName > kLongestPath) {
        Wrong(option, TextFormat::Print("the path is too long: its colon form has %zu characters, and %zu is the most",
                                        path.colon.size(), kLongestPath - roomForName));
    }
    return path;
}

void Reader::ReadTest() {
    IOTestParameters& test = m_parsed.options.plan.parameters;
    test.m_standardTestID = kCustomTestID;
    ReadPreset();
    ReadName(m_syntax.mode, kModes, test.m_readWriteMethod);
    ReadNumber(m_syntax.transferKB, kTransferRange, test.m_transferSizeKB);
    ReadNumber(m_syntax.rateKBps, kRateRange, test.m_transferRateKBps, "unlimited", kUnlimitedRate);
    ReadNumber(m_syntax.limitMB, kLimitRange, test.m_maxFileSizeMB);
    ReadNumber(m_syntax.minutes, kMinutesRange, test.m_durationMinutes);
    test.m_loop = m_syntax.loop->count() > 0;
    test.NormalizeStandardParameters();
    // Of what a preset settles, these stay the user's: they do not change the load that it stands for.
    ReadName(m_syntax.method, kMethods, test.m_fileAccessMethod);
    test.m_noCache = m_syntax.cache->count() == 0;
    test.m_sharedFileInPath = m_syntax.sharedFile->count() > 0;

    TestPlan& plan = m_parsed.options.plan;
    ReadNumber(m_syntax.thresholdMS, kThresholdRange, plan.thresholdMS);
    ReadNumber(m_syntax.thresholdWarnings, kWarningsRange, plan.thresholdWarnings, "unlimited",
               TestPlan::kNoWarningLimit);
}

void Reader::ReadPreset() {
    if (const std::optional<std::string> value = ValueOf(m_syntax.preset)) {
        if (const std::optional<std::int32_t> id = FindPreset(*value)) {
            m_parsed.options.plan.parameters.m_standardTestID = *id;
        } else {
            Wrong(m_syntax.preset, "'" + *value + "' is no preset's number or name; --list-presets shows them");
        }
    }
}

void Reader::ReadPath() {
    TestPlan& plan = m_parsed.options.plan;
    const bool isFile = plan.parameters.m_sharedFileInPath;
    if (const std::optional<TypedPath> path = ReadFile(m_syntax.path, isFile ? 0 : ScratchFileNames::kNameRoom)) {
        plan.parameters.SetPathValue(path->colon.c_str());
        plan.nativePath = path->native;
    } else if (m_syntax.path->count() == 0) {
        ReadDefaultPath();
    }
}

/// The default test path is the working directory only while that has a colon form which is short enough.
void Reader::ReadDefaultPath() {
    TestPlan& plan = m_parsed.options.plan;
    const TypedPath folder = ResolveTypedPath(".");
    if (plan.parameters.m_drivePath != folder.colon ||
        folder.colon.size() + ScratchFileNames::kNameRoom > kLongestPath) {
        Wrong(m_syntax.path, "is needed here: the working directory's own path is too long");
    }
    plan.nativePath = folder.native;
}

void Reader::ReadReports() {
    CommandLineOptions& options = m_parsed.options;
    options.plan.outputLog = ReadFile(m_syntax.outputLog);
    options.plan.errorLog = ReadFile(m_syntax.errorLog);
    if (const std::optional<std::string> value = ValueOf(m_syntax.json)) {
        options.jsonToStandardOutput = *value == "-" || *value == "/dev/stdout";
        if (!options.jsonToStandardOutput) {
            options.json = ResolveTypedPath(*value);
        }
    }
    options.isQuiet = m_syntax.quiet->count() > 0;
}

void Reader::CheckConflicts() {
    if (m_syntax.preset->count() > 0) {
        for (const CLI::Option* option : {m_syntax.mode, m_syntax.transferKB, m_syntax.rateKBps, m_syntax.limitMB}) {
            if (option->count() > 0) {
                Wrong(option, "cannot be combined with --preset, which settles it");
            }
        }
    }
    if (m_syntax.thresholdWarnings->count() > 0 && m_syntax.thresholdMS->count() == 0) {
        Wrong(m_syntax.thresholdWarnings, "needs --threshold-ms");
    }
    if (m_syntax.sharedFile->count() > 0 && m_syntax.path->count() == 0) {
        Wrong(m_syntax.sharedFile, "needs --path, which names the file");
    }
    if (m_syntax.listPresets->count() > 0 && m_syntax.listVolumes->count() > 0) {
        Wrong(m_syntax.listVolumes, "cannot be combined with --list-presets");
    }
}

/// Each of them would empty or overwrite the other.
void Reader::CheckDifferentFiles() {
    const CommandLineOptions& options = m_parsed.options;
    std::vector<std::pair<const CLI::Option*, std::string>> files;
    const auto add = [&](const CLI::Option* option, const std::optional<std::string>& native) {
        if (!native || *native == "/dev/null") {
            return;
        }
        for (const auto& [other, path] : files) {
            if (path == *native) {
                Wrong(option, "names the same file as " + other->get_name());
            }
        }
        files.emplace_back(option, *native);
    };
    const auto addTyped = [&](const CLI::Option* option, const std::optional<TypedPath>& path) {
        add(option, path ? path->native : std::nullopt);
    };
    if (options.plan.parameters.m_sharedFileInPath) {
        add(m_syntax.path, options.plan.nativePath);
    }
    addTyped(m_syntax.outputLog, options.plan.outputLog);
    addTyped(m_syntax.errorLog, options.plan.errorLog);
    addTyped(m_syntax.json, options.json);
}

void Reader::ReadAction() {
    using Action = CommandLineOptions::Action;
    Action& action = m_parsed.options.action;
    if (m_syntax.listPresets->count() > 0) {
        action = Action::ListPresets;
    } else if (m_syntax.listVolumes->count() > 0) {
        action = Action::ListVolumes;
    } else if (m_syntax.version->count() > 0) {
        action = Action::ShowVersion;
    }
    if (m_syntax.help->count() > 0) {
        action = Action::ShowHelp;
    }
}

}  // namespace

const char* ModeName(std::int32_t readWriteMethod) {
    return NameOf(kModes, readWriteMethod);
}

const char* MethodName(std::int32_t fileAccessMethod) {
    return NameOf(kMethods, fileAccessMethod);
}

ParsedCommandLine ParseCommandLine(const std::vector<std::string>& arguments) {
    Syntax syntax;
    try {
        syntax.app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError& problem) {
        return {.options = {}, .problems = {problem.what()}};
    }
    return Reader(syntax).Read();
}

std::string HelpText() {
    std::string text = Syntax().app.help();
    for (std::size_t gap = text.find("\n\n\n"); gap != std::string::npos; gap = text.find("\n\n\n", gap)) {
        text.erase(gap, 1);
    }
    return text;
}

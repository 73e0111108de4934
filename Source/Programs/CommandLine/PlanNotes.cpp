#include "Programs/CommandLine/PlanNotes.h"

#include "Programs/CommandLine/TextFormat.h"

#include <cstdint>
#include <optional>

namespace {

constexpr double kNoteworthy = 0.05;  ///< of the target rate
constexpr std::uint64_t kSampleBlockKB = 4096;

std::optional<std::string> NoteOnWriteLimit(const TestPlan& plan) {
    const std::uint32_t limit = plan.parameters.m_maxFileSizeMB;
    if (!plan.Writes() || limit < 4096 || plan.IsSelfTest()) {
        return std::nullopt;
    }
    const std::uint32_t wrapped = limit % 4096;
    if (wrapped == 0) {
        return TextFormat::Print(
            "the limit of %u MB wraps to 0 when writing, which keeps it in 32 bits: nothing will be written", limit);
    }
    return TextFormat::Print("the limit of %u MB wraps to %u MB when writing, which keeps it in 32 bits", limit,
                             wrapped);
}

std::optional<std::string> NoteOnInterval(const TestPlan& plan) {
    const std::uint32_t interval = plan.PacingIntervalMS();
    const std::uint32_t rate = plan.parameters.m_transferRateKBps;
    if (!plan.HasTargetRate()) {
        return std::nullopt;
    }
    if (interval == 0) {
        return TextFormat::Print(
            "transfers of %u KB at %u KB/s would start more often than once a millisecond: the test is "
            "not paced, and only its average is judged",
            plan.parameters.m_transferSizeKB, rate);
    }
    const double paced = plan.parameters.m_transferSizeKB * 1000.0 / interval;
    if (paced > rate * (1.0 + kNoteworthy)) {
        return TextFormat::Print("the pacing interval is cut to %u ms, which asks for %.0f KB/s instead of %u KB/s",
                                 interval, paced, rate);
    }
    return std::nullopt;
}

/// KB and intervals of one pass over a file on storage that takes no time at all.
struct Pass {
    std::uint64_t kilobytes;
    std::uint64_t intervals;
};

Pass WritePass(const TestPlan& plan) {
    const std::uint64_t file = std::uint64_t{plan.parameters.m_maxFileSizeMB} % 4096 * 1024;
    const std::uint64_t transfer = plan.parameters.m_transferSizeKB;
    return {file, (file + transfer - 1) / transfer};
}

/// The reading that finds the end of the file takes an interval too. C streams do not count a last, short reading.
Pass ReadPass(const TestPlan& plan) {
    const std::uint64_t transfer = plan.parameters.m_transferSizeKB;
    std::uint64_t file = std::uint64_t{plan.parameters.m_maxFileSizeMB} * 1024;
    if (plan.parameters.m_fileAccessMethod == kAccessPosix) {
        return {file / transfer * transfer, file / transfer + 1};
    }
    file = (file + kSampleBlockKB - 1) / kSampleBlockKB * kSampleBlockKB;
    return {file, (file + transfer - 1) / transfer + 1};
}

std::optional<std::string> NoteOnPasses(const TestPlan& plan, const Pass& pass, const char* direction) {
    if (pass.kilobytes == 0 && pass.intervals != 0) {
        return TextFormat::Print("%s will count nothing: a transfer is larger than the file", direction);
    }
    const std::uint32_t interval = plan.PacingIntervalMS();
    if (interval == 0 || pass.intervals == 0) {
        return std::nullopt;
    }
    const double best = static_cast<double>(pass.kilobytes) * 1000.0 / static_cast<double>(pass.intervals * interval);
    const double share = best / plan.parameters.m_transferRateKBps;
    if (share >= 1.0 - kNoteworthy) {
        return std::nullopt;
    }
    return TextFormat::Print(
        "%s can reach %.0f %% of the target rate at the most, because the end of each file costs a part of "
        "an interval; a larger --limit-mb, a multiple of the transfer size, helps",
        direction, share * 100.0);
}

}  // namespace

std::vector<std::string> NotesOn(const TestPlan& plan) {
    std::vector<std::string> notes;
    const auto add = [&](std::optional<std::string> note) {
        if (note) {
            notes.push_back(std::move(*note));
        }
    };
    add(NoteOnWriteLimit(plan));
    add(NoteOnInterval(plan));
    if (plan.IsSelfTest()) {
        return notes;
    }
    if (plan.Writes()) {
        add(NoteOnPasses(plan, WritePass(plan), "writing"));
    }
    if (plan.Reads() && !plan.parameters.m_sharedFileInPath) {
        add(NoteOnPasses(plan, ReadPass(plan), "reading"));
    }
    return notes;
}

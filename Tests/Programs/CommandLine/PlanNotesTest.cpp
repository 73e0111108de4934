#include "Programs/CommandLine/PlanNotes.h"

#include <gmock/gmock.h>

#include <tuple>

using testing::Each;
using testing::StartsWith;

TEST(PlanNotesTest, SettingsThatComeOutDifferentlyAreTold) {
    using Case =
        std::tuple<ReadWriteMethod, FileAccessMethod, std::uint32_t, std::uint32_t, std::uint32_t, std::string>;
    // The note begins so; it is empty for none.
    for (const auto& [mode, method, transferKB, rateKBps, limitMB, note] :
         {Case{kWritesThenReads, kAccessAutomatic, 1024, 4096, 100, ""},
          Case{kWritesOnly, kAccessAutomatic, 1024, 4096, 5000, "the limit of 5000 MB wraps to 904 MB when writing"},
          Case{kWritesOnly, kAccessAutomatic, 1, 4096, 100, "transfers of 1 KB at 4096 KB/s would start more often"},
          Case{kWritesOnly, kAccessAutomatic, 256, 150'000, 100,
               "the pacing interval is cut to 1 ms, which asks for 256000 KB/s"},
          Case{kWritesOnly, kAccessAutomatic, 8192, 8192, 9, "writing can reach 56 % of the target rate"},
          Case{kReadsOnly, kAccessAutomatic, 8192, 8192, 16, "reading can reach 67 % of the target rate"},
          Case{kReadsOnly, kAccessPosix, 8192, 8192, 100, "reading can reach 92 % of the target rate"},
          Case{kReadsOnly, kAccessPosix, 8192, kUnlimitedRate, 4, "reading will count nothing"},
          Case{kWritesThenReads, kAccessSelfTest, 8192, 8192, 4, ""}}) {
        TestPlan plan;
        plan.parameters.m_readWriteMethod = mode;
        plan.parameters.m_fileAccessMethod = method;
        plan.parameters.m_transferSizeKB = transferKB;
        plan.parameters.m_transferRateKBps = rateKBps;
        plan.parameters.m_maxFileSizeMB = limitMB;
        EXPECT_EQ(NotesOn(plan).size(), note.empty() ? 0U : 1U) << transferKB << " " << rateKBps;
        EXPECT_THAT(NotesOn(plan), Each(StartsWith(note)));
    }
}

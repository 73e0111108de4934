#include "CoreClasses/IOTestParameterCollectionMgr.h"

#include "CoreClasses/IOTestParameters.h"

#include <gtest/gtest.h>

TEST(IOTestParameterCollectionMgrTest, HoldsTheSeventeenPresets) {
    struct Row {
        const char* name;
        std::int32_t method;
        std::uint32_t sizeKB;
        std::uint32_t rateKBps;
        std::uint32_t fileMB;
    };
    IOTestParameterCollectionMgr* collection = IOTestParameterCollectionMgr::GetSingleton();
    EXPECT_EQ(collection, IOTestParameterCollectionMgr::GetSingleton());
    int id = 0;
    for (const Row& row : {Row{"Profile-A Reads (~ 4 MB/second)", 2, 1024, 4096, 100},
                           {"Profile-A Writes (~ 4 MB/second)", 1, 1024, 4096, 100},
                           {"Profile-B Reads (~ 8 MB/second)", 2, 1024, 8192, 100},
                           {"Profile-B Writes (~ 8 MB/second)", 1, 1024, 8192, 100},
                           {"Profile-C Reads (~ 18 MB/second)", 2, 8192, 18432, 200},
                           {"Profile-C Writes (~ 18 MB/second)", 1, 8192, 18432, 200},
                           {"Profile-D Reads (~ 27 MB/second)", 2, 8192, 27648, 200},
                           {"Profile-D Writes (~ 27 MB/second)", 1, 8192, 27648, 200},
                           {"Profile-E Writes (~ 3.8 MB/sec)", 1, 1024, 3891, 100},
                           {"Profile-F Writes (~ 5.5 MB/sec)", 1, 1024, 5632, 100},
                           {"Profile-G Writes (~ 3.3 MB/sec)", 1, 1024, 3379, 100},
                           {"Profile-H Reads (~ 5 MB/sec)", 2, 1024, 5120, 100},
                           {"Profile-H Writes (~ 5 MB/sec)", 1, 1024, 5120, 100},
                           {"Profile-C Dual Reads (~ 36 MB/second)", 2, 8192, 36864, 400},
                           {"Profile-D Dual Reads (~ 54 MB/second)", 2, 8192, 55296, 800},
                           {"Unlimited Reads (8192KB)", 2, 8192, 0xFFFF'FFFF, 800},
                           {"Unlimited Writes (8192KB)", 1, 8192, 0xFFFF'FFFF, 800}}) {
        IOTestParameters copy;
        copy.m_sharedFileInPath = copy.m_reservedFlagA = true;
        copy.m_reservedFlagB = copy.m_noCache = false;
        copy.m_fileAccessMethod = 3;
        copy.m_minWritesPerFragment = 9;
        ASSERT_TRUE(collection->GetCopyOfStandardParametersByID(id, copy));
        EXPECT_EQ(copy.m_testName, row.name);
        EXPECT_EQ(copy.m_standardTestID, id++);
        EXPECT_EQ(copy.m_readWriteMethod, row.method) << row.name;
        EXPECT_EQ(copy.m_transferSizeKB, row.sizeKB) << row.name;
        EXPECT_EQ(copy.m_transferRateKBps, row.rateKBps) << row.name;
        EXPECT_EQ(copy.m_maxFileSizeMB, row.fileMB) << row.name;
        EXPECT_TRUE(!copy.m_sharedFileInPath && !copy.m_reservedFlagA && copy.m_reservedFlagB && copy.m_noCache);
        EXPECT_TRUE(copy.m_fileAccessMethod == kAccessAutomatic && copy.m_minWritesPerFragment == 5);
    }
    EXPECT_EQ(collection->GetList()->GetSize(), id);
    IOTestParameters unchanged;
    unchanged.m_testName = "Mine";
    EXPECT_FALSE(collection->GetCopyOfStandardParametersByID(-1, unchanged));
    EXPECT_FALSE(collection->GetCopyOfStandardParametersByID(17, unchanged));
    EXPECT_EQ(unchanged.m_testName, "Mine");
    IOTestParameterCollectionMgr::DestroySingleton();
}

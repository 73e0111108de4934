#include "CoreClasses/IOTestParameterCollectionMgr.h"

#include "CoreClasses/IOTestParameters.h"

#include <gtest/gtest.h>

#include <string>

TEST(IOTestParameterCollectionMgrTest, HoldsTheSeventeenPresets) {
    IOTestParameterCollectionMgr* collection = IOTestParameterCollectionMgr::GetSingleton();
    EXPECT_EQ(collection, IOTestParameterCollectionMgr::GetSingleton());
    IOTestParameters copy;
    std::string table = "\n";
    for (int id = 0; collection->GetCopyOfStandardParametersByID(id, copy); ++id) {
        EXPECT_EQ(copy.m_standardTestID, id);
        table += std::string(copy.m_testName.View()) + ", " + std::to_string(copy.m_readWriteMethod) + ", " +
                 std::to_string(copy.m_transferSizeKB) + ", " + std::to_string(copy.m_transferRateKBps) + ", " +
                 std::to_string(copy.m_maxFileSizeMB) + '\n';
        EXPECT_TRUE(!copy.m_sharedFileInPath && !copy.m_reservedFlagA && copy.m_reservedFlagB && copy.m_noCache);
        EXPECT_TRUE(copy.m_fileAccessMethod == kAccessAutomatic && copy.m_minWritesPerFragment == 5);
        copy.m_sharedFileInPath = copy.m_reservedFlagA = true;
        copy.m_reservedFlagB = copy.m_noCache = false;
        copy.m_fileAccessMethod = 3;
        copy.m_minWritesPerFragment = 9;
    }
    EXPECT_EQ(table, R"(
Profile-A Reads (~ 4 MB/second), 2, 1024, 4096, 100
Profile-A Writes (~ 4 MB/second), 1, 1024, 4096, 100
Profile-B Reads (~ 8 MB/second), 2, 1024, 8192, 100
Profile-B Writes (~ 8 MB/second), 1, 1024, 8192, 100
Profile-C Reads (~ 18 MB/second), 2, 8192, 18432, 200
Profile-C Writes (~ 18 MB/second), 1, 8192, 18432, 200
Profile-D Reads (~ 27 MB/second), 2, 8192, 27648, 200
Profile-D Writes (~ 27 MB/second), 1, 8192, 27648, 200
Profile-E Writes (~ 3.8 MB/sec), 1, 1024, 3891, 100
Profile-F Writes (~ 5.5 MB/sec), 1, 1024, 5632, 100
Profile-G Writes (~ 3.3 MB/sec), 1, 1024, 3379, 100
Profile-H Reads (~ 5 MB/sec), 2, 1024, 5120, 100
Profile-H Writes (~ 5 MB/sec), 1, 1024, 5120, 100
Profile-C Dual Reads (~ 36 MB/second), 2, 8192, 36864, 400
Profile-D Dual Reads (~ 54 MB/second), 2, 8192, 55296, 800
Unlimited Reads (8192KB), 2, 8192, 4294967295, 800
Unlimited Writes (8192KB), 1, 8192, 4294967295, 800
)");
    EXPECT_FALSE(collection->GetCopyOfStandardParametersByID(-1, copy));
    EXPECT_EQ(copy.m_fileAccessMethod, 3) << "unchanged";
    IOTestParameterCollectionMgr::DestroySingleton();
}

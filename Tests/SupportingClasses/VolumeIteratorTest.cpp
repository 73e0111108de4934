#include "SupportingClasses/VolumeIterator.h"

#include "Platform/Volumes.h"

#include <gtest/gtest.h>

TEST(VolumeIteratorTest, WalksTheMountedVolumesInOrderAndStaysAtItsEnd) {
    const VolumeTable table = VolumeTable::Mounted();
    const VolumeIterator end;
    VolumeIterator iterator;
    std::uint32_t count = 0;
    for (const Volume& volume : table.Volumes()) {
        const VolumeIterator before = iterator++;
        ASSERT_NE(iterator, end);
        EXPECT_EQ(before->volumeIndex, count) << "a copy stays where it is";
        EXPECT_EQ(iterator.VolumeIndex(), ++count);
        EXPECT_EQ(iterator.VolumeRefNum(), -static_cast<int>(count));
        EXPECT_EQ(LStr255(std::string_view(volume.name)).View(),
                  std::string_view(reinterpret_cast<const char*>(iterator.VolumeName() + 1), *iterator.VolumeName()));
    }
    EXPECT_GT(count, 0U);
    for (int step = 0; step < 2; ++step) {
        EXPECT_EQ(++iterator, end);
        EXPECT_EQ(iterator->result, VolumeIterator::kNoSuchVolume);
        EXPECT_EQ(iterator->volumeIndex, count + 1) << "no further request";
    }
}

#include "SupportingClasses/VolumeIterator.h"

#include "Platform/Volumes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::string NameOf(VolumeIterator& volume) {
    const unsigned char* name = volume.VolumeName();
    return {reinterpret_cast<const char*>(name + 1), name[0]};
}

}  // namespace

TEST(VolumeIteratorTest, WalksTheMountedVolumesInOrder) {
    const VolumeTable table = VolumeTable::Mounted();
    std::vector<std::string> expected;
    for (const Volume& volume : table.Volumes()) {
        expected.push_back(volume.name);
    }
    std::vector<std::string> names;
    const VolumeIterator end;
    VolumeIterator volume;
    EXPECT_EQ(volume, end);
    for (++volume; volume != end; ++volume) {
        names.push_back(NameOf(volume));
        EXPECT_EQ(volume.VolumeIndex(), names.size());
        EXPECT_EQ(volume->volumeIndex, names.size());
        EXPECT_EQ(volume.VolumeRefNum(), -static_cast<int>(names.size()));
        EXPECT_EQ((*volume).result, 0);
    }
    EXPECT_EQ(names, expected);
    EXPECT_EQ(names.at(0), "Root");
}

TEST(VolumeIteratorTest, StaysAtItsEndWithoutFurtherRequests) {
    const VolumeIterator end;
    VolumeIterator volume;
    for (++volume; volume != end; ++volume) {
    }
    const std::uint32_t index = volume->volumeIndex;
    EXPECT_EQ(volume->result, VolumeIterator::kNoSuchVolume);
    const VolumeIterator before = volume++;
    EXPECT_EQ(before, end);
    EXPECT_EQ(volume, end);
    EXPECT_EQ(volume->volumeIndex, index);
    EXPECT_EQ(NameOf(volume), "");
}

TEST(VolumeIteratorTest, ACopyWalksOnByItself) {
    VolumeIterator volume;
    ++volume;
    const std::string name = NameOf(volume);
    VolumeIterator copy(volume);
    VolumeIterator assigned;
    assigned = volume;
    EXPECT_EQ(copy, volume);
    EXPECT_EQ(NameOf(copy), name);
    EXPECT_NE(copy.VolumeName(), volume.VolumeName()) << "each iterator has a buffer of its own";
    ++copy;
    EXPECT_NE(copy, volume);
    EXPECT_EQ(copy->volumeIndex, 2U);
    EXPECT_EQ(volume->volumeIndex, 1U);
    EXPECT_EQ(NameOf(assigned), name);
    EXPECT_EQ(assigned++, volume);
    EXPECT_EQ(assigned, copy);
}

#include "Platform/Volumes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <utility>
#include <vector>

using testing::ElementsAre;

namespace {

/// Each entry is a volume of its own, known by its device.
MountFacts EachIsAVolume(const MountEntry& entry) {
    return {.isFolderWithCapacity = true, .identity = entry.device};
}

std::vector<std::string> NamesAndPlaces(const VolumeTable& table) {
    std::vector<std::string> described;
    for (const Volume& volume : table.Volumes()) {
        described.push_back(volume.name + " at " + volume.mountPoint);
    }
    return described;
}

VolumeTable UsualTable() {
    return VolumeTable::FromMountInfo("26 1 8:2 / / rw,relatime shared:1 - ext4 /dev/sda2 rw\n"
                                      "27 26 8:17 / /media/Raid rw - xfs /dev/sdb1 rw\n"
                                      "28 27 8:33 / /media/Raid/in\\040Raid rw - xfs /dev/sdc1 rw\n"
                                      "29 26 8:49 / /mnt/a:b rw - xfs /dev/sdd1 rw\n",
                                      EachIsAVolume);
}

}  // namespace

TEST(VolumesTest, ReadsAwkwardMountTables) {
    // Early mounts stand before the root; there are none or several optional fields; pseudo file systems are no
    // volumes.
    const auto table =
        VolumeTable::FromMountInfo("21 26 0:20 / /sys rw shared:7 - sysfs sysfs rw\n"
                                   "22 26 0:21 / /run rw shared:2 master:1 propagate_from:3 - tmpfs tmpfs rw\n"
                                   "26 1 8:2 / / rw shared:1 - ext4 /dev/sda2 rw\n"
                                   "30 26 8:3 / /media/My\\040Disk\\0111 rw - vfat /dev/sdb1 rw\n"
                                   "31 26 8:4 / /media/back\\134slash rw - vfat /dev/sdb2 rw\n"
                                   "32 26 8:5 / /mnt/\\04 rw - vfat /dev/sdb3 rw\n"
                                   "33 26 0:50 / /run/user/1000/gvfs rw - fuse.gvfsd-fuse gvfsd-fuse rw\n"
                                   "34 26 0:51 / /srv/data rw - nfs4 server:/data rw\n"
                                   "cut off\n"
                                   "35 26 8:6 / /no/separator rw shared:1 ext4 /dev/sdc rw\n"
                                   "36 26 8:7 / relative rw - ext4 /dev/sdd rw\n"
                                   "\n"
                                   "37 26 8:8 / /last rw - btrfs /dev/sde rw",
                                   EachIsAVolume);
    EXPECT_THAT(NamesAndPlaces(table), ElementsAre("Root at /", "run at /run", "My Disk\t1 at /media/My Disk\t1",
                                                   "back\\slash at /media/back\\slash", "\\04 at /mnt/\\04",
                                                   "data at /srv/data", "last at /last"));
    EXPECT_EQ(table.Volumes()[5].fileSystemType, "nfs4");
}

TEST(VolumesTest, TakenNamesGetANumber) {
    const auto table = VolumeTable::FromMountInfo("1 0 8:1 / / rw - ext4 a rw\n"
                                                  "2 1 8:2 / /a/Media rw - ext4 a rw\n"
                                                  "3 1 8:3 / /b/Media\\0402 rw - ext4 a rw\n"
                                                  "4 1 8:4 / /c/Media rw - ext4 a rw\n"
                                                  "5 1 8:5 / /d/Media rw - ext4 a rw\n"
                                                  "6 1 8:6 / /Root rw - ext4 a rw\n"
                                                  "7 1 8:7 / /media rw - ext4 a rw\n",
                                                  EachIsAVolume);
    EXPECT_THAT(NamesAndPlaces(table),
                ElementsAre("Root at /", "Media at /a/Media", "Media 2 at /b/Media 2", "Media 3 at /c/Media",
                            "Media 4 at /d/Media", "Root 2 at /Root", "media at /media"));
}

TEST(VolumesTest, MountsWithoutCapacityRepeatedOnesAndHiddenOnesAreLeftOut) {
    std::vector<std::string> asked;
    const auto table = VolumeTable::FromMountInfo(
        "1 0 0:1 / / rw - rootfs rootfs rw\n"
        "2 1 8:1 / / rw - ext4 a rw\n"
        "3 2 8:2 / /disk rw - ext4 a rw\n"
        "4 2 8:2 /sub /elsewhere rw - ext4 a rw\n"
        "5 2 8:3 /hosts /etc/hosts rw - ext4 a rw\n"
        "6 2 8:4 / /over rw - ext4 first rw\n"
        "7 6 8:5 / /over rw - xfs second rw\n"
        "8 2 0:9 / /proc rw - proc proc rw\n"
        "9 2 8:1 /home /home2 rw - ext4 a rw\n",
        [&](const MountEntry& entry) {
            asked.push_back(entry.mountPoint);
            return MountFacts{.isFolderWithCapacity = entry.mountPoint != "/etc/hosts", .identity = entry.device};
        });
    EXPECT_THAT(NamesAndPlaces(table), ElementsAre("Root at /", "disk at /disk", "over at /over"));
    EXPECT_EQ(table.Volumes()[0].fileSystemType, "ext4");
    EXPECT_EQ(table.Volumes()[2].fileSystemType, "xfs");
    EXPECT_THAT(asked, testing::Not(testing::Contains("/proc")));
}

TEST(VolumesTest, ThereIsARootEvenIfNoTableShowsIt) {
    const auto none = [](const MountEntry&) { return MountFacts{}; };
    for (const char* text : {"", "\n\n", "1 0 8:1 / /other rw - ext4 a rw\n", "1 0 0:3 / / rw - proc none rw\n"}) {
        EXPECT_THAT(NamesAndPlaces(VolumeTable::FromMountInfo(text, none)), ElementsAre("Root at /")) << text;
    }
    EXPECT_EQ(VolumeTable::FromMountInfo("", none).ToNative("Root:tmp:a"), "/tmp/a");
}

TEST(VolumesTest, ConvertsBothWays) {
    const VolumeTable table = UsualTable();
    const std::vector<std::pair<std::string, std::string>> pairs = {
        {"/etc/fstab", "Root:etc:fstab"},
        {"/media/Raid/Tests/a.mov", "Raid:Tests:a.mov"},
        {"/media/Raid/in Raid/b", "in Raid:b"},
        {"/media/Raid/in Raids/b", "Raid:in Raids:b"},
        {"/media/Raider", "Root:media:Raider"},
        {"/mnt/a:b/c", "a/b:c"},
        {"/mnt/a:b/1:2/3", "a/b:1/2:3"},
        {"/.hidden/...", "Root:.hidden:..."},
        {"/ ", "Root: "},
        {"/\xff\xc3", "Root:\xff\xc3"},
    };
    for (const auto& [native, colon] : pairs) {
        EXPECT_EQ(table.ToColon(native), colon);
        EXPECT_EQ(table.ToNative(colon), native);
        EXPECT_EQ(table.ToNative(colon + ':'), native) << "a ':' at the end means the same place";
    }
}

TEST(VolumesTest, VolumeRootsAndFoldersMayEndInAColon) {
    const VolumeTable table = UsualTable();
    EXPECT_EQ(table.ToColon("/"), "Root:");
    EXPECT_EQ(table.ToColon("/media/Raid"), "Raid:");
    EXPECT_EQ(table.ToColon("/media/Raid/"), "Raid:");
    EXPECT_EQ(table.ToColon("/media/Raid/Tests/"), "Raid:Tests:");
    EXPECT_EQ(table.ToNative("Raid"), "/media/Raid");
    EXPECT_EQ(table.ToNative("Raid:"), "/media/Raid");
    EXPECT_EQ(table.ToNative("Root"), "/");
    EXPECT_EQ(table.ToNative("Root:"), "/");
    EXPECT_EQ(table.ToColon("//media//Raid/./x"), "Raid:x");
}

TEST(VolumesTest, WhatNamesNoFileIsNotConverted) {
    const VolumeTable table = UsualTable();
    const std::string longest(NAME_MAX, 'n');
    const std::string nul("Root:a\0b", 8);
    for (const std::string& colon :
         {std::string(), std::string(":"), std::string(":Root:a"), std::string("Nowhere:a"), std::string("root:a"),
          std::string("Root::a"), std::string("Root:a::b"), std::string("Root::"), std::string("Root:a::"),
          std::string("Root:."), std::string("Root:..:a"), std::string("Raid:..:..:etc"), nul,
          "Root:" + longest + 'n'}) {
        EXPECT_EQ(table.ToNative(colon), std::nullopt) << colon;
    }
    for (const std::string& native : {std::string(), std::string("a/b"), std::string("./a"), std::string("/a\0b", 4)}) {
        EXPECT_EQ(table.ToColon(native), std::nullopt) << native;
    }

    std::string path = "Root";
    for (int i = 0; i < 15; ++i) {
        path += ':' + longest;
    }
    const std::string almost = path + ':' + std::string(PATH_MAX - 1 - 15 * (NAME_MAX + 1) - 1, 'x');
    EXPECT_EQ(table.ToNative(almost).value().size(), static_cast<std::size_t>(PATH_MAX - 1));
    EXPECT_EQ(table.ToNative(almost + 'x'), std::nullopt);
}

TEST(VolumesTest, AMountHidesWhatWasMountedBelowIt) {
    const auto table = VolumeTable::FromMountInfo("1 1 8:1 / / rw - ext4 a rw\n"
                                                  "2 1 8:2 / /a/b rw - ext4 b rw\n"
                                                  "3 1 8:3 / /a rw - ext4 c rw\n",
                                                  // Asked by path, both answer with what is visible there.
                                                  [](const MountEntry& entry) {
                                                      const bool isRoot = entry.mountPoint == "/";
                                                      return MountFacts{.isFolderWithCapacity = true,
                                                                        .identity = isRoot ? "8:1" : "8:3"};
                                                  });
    EXPECT_THAT(NamesAndPlaces(table), ElementsAre("Root at /", "a at /a"));
}

TEST(VolumesTest, EarlyMountsMovedIntoTheRootStayVisible) {
    const auto table = VolumeTable::FromMountInfo("1 1 0:1 / / rw - rootfs rootfs rw\n"
                                                  "22 26 0:21 / /run rw - tmpfs tmpfs rw\n"
                                                  "23 22 0:22 / /run/user rw - tmpfs tmpfs rw\n"
                                                  "26 1 8:2 / / rw - ext4 a rw\n"
                                                  "30 1 8:9 / /buried rw - ext4 b rw\n"
                                                  "31 30 8:10 / /buried/deep rw - ext4 c rw\n",
                                                  EachIsAVolume);
    EXPECT_THAT(NamesAndPlaces(table), ElementsAre("Root at /", "run at /run", "user at /run/user"));
}

TEST(VolumesTest, TheMountedVolumesBeginWithTheRoot) {
    const VolumeTable table = VolumeTable::Mounted();
    ASSERT_FALSE(table.Volumes().empty());
    EXPECT_EQ(table.Volumes()[0].mountPoint, "/");
    for (const Volume& volume : table.Volumes()) {
        EXPECT_EQ(table.ToNative(volume.name), volume.mountPoint);
        EXPECT_EQ(table.ToColon(volume.mountPoint), volume.name + ':');
    }
}

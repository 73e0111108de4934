#include "Platform/Volumes.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// A volume is known by its device.
MountFacts FactsOf(const MountEntry& entry) {
    EXPECT_NE(entry.mountPoint, "/proc") << "a pseudo file system is not asked";
    return {.isFolderWithCapacity = entry.device != "none", .identity = entry.device};
}

}  // namespace

// A path under test must never come to mean another place because somebody else mounts or unmounts a disk.
TEST(VolumesTest, AVolumeKeepsItsNameWhileOthersOfTheSameNameComeAndGo) {
    const std::string root = "26 1 8:2 / / rw - ext4 /dev/sda2 rw\n";
    const std::string first = "27 26 8:17 / /media/Disk rw - xfs /dev/sdb1 rw\n";
    const std::string second = "28 26 8:33 / /mnt/Disk rw - xfs /dev/sdc1 rw\n";
    VolumeNames names;
    const auto tableOf = [&](const std::string& text) { return VolumeTable::FromMountInfo(text, FactsOf, names); };
    for (const std::string& mounts : {root + first + second, root + second, root + second + first}) {
        EXPECT_EQ(tableOf(mounts).ToNative("Disk 2:a"), "/mnt/Disk/a") << mounts;
    }
    EXPECT_EQ(tableOf(root + second).ToNative("Disk:a"), std::nullopt) << "not mounted now";
}

TEST(VolumesTest, ReadsAwkwardMountTables) {
    for (const auto& [text, expected] :
         {// Early mounts stand before the root; there are none or several optional fields.
          std::pair{"22 26 0:21 / /run rw shared:2 master:1 propagate_from:3 - tmpfs tmpfs rw\n"
                    "26 1 8:2 / / rw shared:1 - ext4 /dev/sda2 rw\n"
                    "30 26 8:3 / /media/My\\040Disk\\0111 rw - vfat /dev/sdb1 rw\n"
                    "32 26 8:5 / /mnt/\\04 rw - vfat /dev/sdb3 rw\n"
                    "33 26 0:50 / /run/user/1000/gvfs rw - fuse.gvfsd-fuse gvfsd-fuse rw\n"
                    "cut off\n"
                    "35 26 8:6 / /no/separator rw shared:1 ext4 /dev/sdc rw\n"
                    "37 26 8:8 / /last rw - btrfs /dev/sde rw",
                    "ext4 Root at /, tmpfs run at /run, vfat My Disk\t1 at /media/My Disk\t1, "
                    "vfat \\04 at /mnt/\\04, btrfs last at /last, "},
          // Taken names get a number.
          {"1 0 8:1 / / rw - ext4 a rw\n2 1 8:2 / /a/Media rw - ext4 a rw\n3 1 8:3 / /b/Media\\0402 rw - ext4 a rw\n"
           "4 1 8:4 / /c/Media rw - ext4 a rw\n6 1 8:6 / /Root rw - ext4 a rw\n7 1 8:7 / /media rw - ext4 a rw\n",
           "ext4 Root at /, ext4 Media at /a/Media, ext4 Media 2 at /b/Media 2, ext4 Media 3 at /c/Media, "
           "ext4 Root 2 at /Root, ext4 media at /media, "},
          // Without capacity, repeated, hidden by a mount at the same place.
          {"1 0 0:1 / / rw - rootfs rootfs rw\n2 1 8:1 / / rw - ext4 a rw\n3 2 8:2 / /disk rw - ext4 a rw\n"
           "4 2 8:2 /sub /elsewhere rw - ext4 a rw\n6 2 8:4 / /over rw - ext4 first rw\n"
           "7 6 8:5 / /over rw - xfs second rw\n8 2 0:9 / /proc rw - proc proc rw\n"
           "5 2 none /hosts /etc/hosts rw - ext4 a rw\n9 2 8:1 /home /home2 rw - ext4 a rw\n",
           "ext4 Root at /, ext4 disk at /disk, xfs over at /over, "},
          // Hidden by a mount above it: asked by path, both answer with what is visible there.
          {"1 1 8:1 / / rw - ext4 a rw\n2 1 8:3 / /a/b rw - ext4 b rw\n3 1 8:3 / /a rw - ext4 c rw\n",
           "ext4 Root at /, ext4 a at /a, "},
          // Early mounts moved into the root stay visible.
          {"1 1 0:1 / / rw - rootfs rootfs rw\n22 26 0:21 / /run rw - tmpfs tmpfs rw\n"
           "23 22 0:22 / /run/user rw - tmpfs tmpfs rw\n26 1 8:2 / / rw - ext4 a rw\n"
           "30 1 8:9 / /buried rw - ext4 b rw\n31 30 8:10 / /buried/deep rw - ext4 c rw\n",
           "ext4 Root at /, tmpfs run at /run, tmpfs user at /run/user, "}}) {
        std::string described;
        const VolumeTable table = VolumeTable::FromMountInfo(text, FactsOf);
        for (const Volume& volume : table.Volumes()) {
            described += volume.fileSystemType + ' ' + volume.name + " at " + volume.mountPoint + ", ";
        }
        EXPECT_EQ(described, expected);
    }
}

TEST(VolumesTest, ThereIsARootEvenIfNoTableShowsIt) {
    for (const char* text : {"", "1 0 none / / rw - proc none rw\n"}) {
        const VolumeTable table = VolumeTable::FromMountInfo(text, FactsOf);
        EXPECT_EQ(table.Volumes().size(), 1U) << text;
        EXPECT_EQ(table.ToNative("Root:tmp:a"), "/tmp/a") << text;
    }
}

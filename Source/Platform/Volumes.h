#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A mounted file system with a capacity, as colon paths name it.
struct Volume {
    /// Last component of the mount point, "Root" for the root file system; made unique with a number. A ':' of the
    /// native name stands as '/'.
    std::string name;
    std::string mountPoint;      ///< native, absolute, without a trailing '/' except for the root itself
    std::string fileSystemType;  ///< as the kernel names it: "ext4", "tmpfs", "nfs4"
};

/// One line of the kernel's mount table.
struct MountEntry {
    std::string device;  ///< "major:minor"
    std::string mountPoint;
    std::string fileSystemType;
};

/// What the table needs to know of a mounted file system besides its line in the mount table.
struct MountFacts {
    bool isFolderWithCapacity = false;
    std::string identity;  ///< equal for two mounts of the same file system
};

/// The names given to mount points. A name stays with its mount point, so that a volume which comes or goes never makes
/// the path of another one mean a different place. Any thread.
class VolumeNames {
public:
    /// The name that the mount point has been given, or a free one, which is its name from now on.
    [[nodiscard]] std::string NameOf(const std::string& mountPoint);

private:
    std::mutex m_lock;
    std::map<std::string, std::string> m_names;  ///< by mount point; guarded by m_lock
};

/// The mounted volumes at one moment, in mount order with the root file system first, and the conversion between
/// native paths and colon paths (`Volume:Folder:file`) over them. A value: copy and use it on any thread.
class VolumeTable {
public:
    using Examine = std::function<MountFacts(const MountEntry&)>;

    /// The volumes mounted now, by the names that their mount points had in earlier tables of this program. File
    /// systems that live on another machine or in a user process are taken to have a capacity without being asked,
    /// because the asking may hang.
    [[nodiscard]] static VolumeTable Mounted();

    /// The volumes that the text of a mount table (the format of /proc/self/mountinfo) describes; `examine` is asked
    /// about each entry that is not a known pseudo file system. Lines that cannot be read are passed over. `names` has
    /// the names of earlier tables, which are kept.
    [[nodiscard]] static VolumeTable FromMountInfo(std::string_view text, const Examine& examine, VolumeNames& names);
    [[nodiscard]] static VolumeTable FromMountInfo(std::string_view text, const Examine& examine);

    [[nodiscard]] const std::vector<Volume>& Volumes() const& { return m_volumes; }
    void Volumes() && = delete;  // would dangle

    /// The native form of a colon path, without a trailing '/'. None for an unknown volume, for an empty component
    /// other than the last, for the components "." and "..", and for a result longer than the system allows.
    [[nodiscard]] std::optional<std::string> ToNative(std::string_view colonPath) const;

    /// The colon form of an absolute native path; a trailing '/' becomes a trailing ':', and so does a volume's root.
    /// Symbolic links are kept as they are, except that a path with ".." is resolved first. None for a relative path.
    [[nodiscard]] std::optional<std::string> ToColon(std::string_view nativePath) const;

    /// The volume that holds an absolute native path: the one with the longest matching mount point.
    [[nodiscard]] const Volume* HoldingVolume(std::string_view nativePath) const;

private:
    std::vector<Volume> m_volumes;
};

#include "Platform/Volumes.h"

#include <algorithm>
#include <array>
#include <climits>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>

#include <sys/stat.h>
#include <sys/statvfs.h>

namespace {

constexpr std::string_view kRootVolumeName = "Root";

constexpr auto kPseudoFileSystems = std::to_array<std::string_view>({"autofs",
                                                                     "binfmt_misc",
                                                                     "bpf",
                                                                     "cgroup",
                                                                     "cgroup2",
                                                                     "configfs",
                                                                     "debugfs",
                                                                     "devpts",
                                                                     "efivarfs",
                                                                     "fusectl",
                                                                     "fuse.gvfsd-fuse",
                                                                     "fuse.lxcfs",
                                                                     "fuse.portal",
                                                                     "hugetlbfs",
                                                                     "mqueue",
                                                                     "nsfs",
                                                                     "proc",
                                                                     "pstore",
                                                                     "rpc_pipefs",
                                                                     "securityfs",
                                                                     "selinuxfs",
                                                                     "smackfs",
                                                                     "sysfs",
                                                                     "tracefs",
                                                                     "usbfs"});

constexpr auto kRemoteFileSystems = std::to_array<std::string_view>(
    {"9p", "acfs", "afs", "beegfs", "ceph", "cifs", "coda", "davfs", "fuse", "glusterfs", "gpfs", "lustre", "ncpfs",
     "nfs", "nfs4", "orangefs", "smb3", "smbfs", "virtiofs"});

template <std::size_t N>
bool Contains(const std::array<std::string_view, N>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool MayHangWhenAsked(std::string_view fileSystemType) {
    return fileSystemType.starts_with("fuse.") || Contains(kRemoteFileSystems, fileSystemType);
}

/// The mount table writes blanks, tabs, line ends and backslashes of a path as a backslash and three octal digits.
std::string DecodeOctalEscapes(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    const auto isOctal = [](char c) { return c >= '0' && c <= '7'; };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 3 < text.size() && isOctal(text[i + 1]) && isOctal(text[i + 2]) &&
            isOctal(text[i + 3])) {
            decoded += static_cast<char>((text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 + (text[i + 3] - '0'));
            i += 3;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

/// A line of the mount table with what tells which mounts hide others.
struct MountLine {
    MountEntry entry;
    std::string id;
    std::string parent;
};

/// A line reads: id parent device root mountPoint options [optional fields] - type source superOptions.
std::optional<MountLine> ParseLine(const std::string& line) {
    std::istringstream fields(line);
    MountLine parsed;
    std::string root;
    std::string mountPoint;
    if (!(fields >> parsed.id >> parsed.parent >> parsed.entry.device >> root >> mountPoint)) {
        return std::nullopt;
    }
    std::string field;
    while (fields >> field && field != "-") {
    }
    if (!(fields >> parsed.entry.fileSystemType)) {
        return std::nullopt;
    }
    if (parsed.parent == parsed.id) {
        parsed.parent.clear();  // the topmost root names itself as its parent
    }
    parsed.entry.mountPoint = DecodeOctalEscapes(mountPoint);
    return parsed;
}

MountFacts ExamineMounted(const MountEntry& entry) {
    if (MayHangWhenAsked(entry.fileSystemType)) {
        return {.isFolderWithCapacity = true, .identity = entry.device};
    }
    struct stat status {};
    struct statvfs space {};
    if (::stat(entry.mountPoint.c_str(), &status) != 0 || !S_ISDIR(status.st_mode) ||
        ::statvfs(entry.mountPoint.c_str(), &space) != 0) {
        return {};
    }
    return {.isFolderWithCapacity = space.f_blocks > 0, .identity = "dev " + std::to_string(status.st_dev)};
}

/// Whether `path` is `folder` or lies below it.
bool LiesIn(std::string_view path, std::string_view folder) {
    return folder == "/" || path == folder || (path.starts_with(folder) && path[folder.size()] == '/');
}

/// A mount hides the one under it at the same place, and what its parent has mounted further down. The order of the
/// table does not tell: early mounts that were moved into the root stand before it.
bool Hides(const MountLine& cover, const MountLine& other) {
    const bool isSamePlace = cover.entry.mountPoint == other.entry.mountPoint;
    return isSamePlace ? cover.parent == other.id
                       : cover.parent == other.parent && LiesIn(other.entry.mountPoint, cover.entry.mountPoint);
}

std::vector<MountEntry> VisibleEntries(const std::vector<MountLine>& lines) {
    std::set<std::string> buried;  // ids of mounts that lie below a cover, with everything mounted in them
    for (bool found = true; found;) {
        found = false;
        for (const MountLine& line : lines) {
            const auto hidesIt = [&](const MountLine& cover) {
                return cover.entry.mountPoint != line.entry.mountPoint && Hides(cover, line);
            };
            if (!buried.contains(line.id) &&
                (buried.contains(line.parent) || std::any_of(lines.begin(), lines.end(), hidesIt))) {
                buried.insert(line.id);
                found = true;
            }
        }
    }
    std::vector<MountEntry> visible;
    for (const MountLine& line : lines) {
        const auto hidesIt = [&](const MountLine& cover) { return Hides(cover, line); };
        if (!buried.contains(line.id) && std::none_of(lines.begin(), lines.end(), hidesIt)) {
            // A later mount hides an earlier one at the same place, whatever its parent is said to be.
            std::erase_if(visible, [&](const MountEntry& e) { return e.mountPoint == line.entry.mountPoint; });
            visible.push_back(line.entry);
        }
    }
    return visible;
}

std::vector<MountEntry> ParseMountInfo(std::string_view text) {
    std::vector<MountLine> parsed;
    std::istringstream lines{std::string(text)};
    for (std::string line; std::getline(lines, line);) {
        if (auto read = ParseLine(line); read && read->entry.mountPoint.starts_with('/')) {
            parsed.push_back(std::move(*read));
        }
    }
    return VisibleEntries(parsed);
}

bool IsConvertibleComponent(std::string_view component) {
    return !component.empty() && component != "." && component != ".." && component.size() <= NAME_MAX &&
           component.find('\0') == std::string_view::npos;
}

std::string Swapped(std::string_view text, char from, char to) {
    std::string swapped(text);
    std::replace(swapped.begin(), swapped.end(), from, to);
    return swapped;
}

/// Resolves "." and ".." and doubled slashes. Only a path with ".." asks the file system, where links matter.
std::string Normalised(std::string_view nativePath) {
    const std::filesystem::path path(nativePath);
    const bool climbs = std::any_of(path.begin(), path.end(), [](const auto& part) { return part == ".."; });
    if (climbs) {
        std::error_code failed;
        const auto resolved = std::filesystem::weakly_canonical(path, failed);
        if (!failed) {
            return resolved.string();
        }
    }
    return path.lexically_normal().string();
}

}  // namespace

std::string VolumeNames::NameOf(const std::string& mountPoint) {
    const std::scoped_lock lock(m_lock);
    if (const auto known = m_names.find(mountPoint); known != m_names.end()) {
        return known->second;
    }
    const std::string last = mountPoint.substr(mountPoint.rfind('/') + 1);
    const std::string wanted = last.empty() ? std::string(kRootVolumeName) : Swapped(last, ':', '/');
    const auto isTaken = [this](const std::string& name) {
        return std::any_of(m_names.begin(), m_names.end(), [&](const auto& given) { return given.second == name; });
    };
    std::string name = wanted;
    for (int number = 2; isTaken(name); ++number) {
        name = wanted + ' ' + std::to_string(number);
    }
    m_names.emplace(mountPoint, name);
    return name;
}

VolumeTable VolumeTable::Mounted() {
    std::ifstream file("/proc/self/mountinfo", std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    // Never destroyed: a thread that hangs in the storage may still convert a path while the process ends.
    static VolumeNames* const names = std::make_unique<VolumeNames>().release();
    return FromMountInfo(text.str(), ExamineMounted, *names);
}

VolumeTable VolumeTable::FromMountInfo(std::string_view text, const Examine& examine) {
    VolumeNames names;
    return FromMountInfo(text, examine, names);
}

VolumeTable VolumeTable::FromMountInfo(std::string_view text, const Examine& examine, VolumeNames& names) {
    std::vector<MountEntry> entries = ParseMountInfo(text);
    auto root = std::find_if(entries.begin(), entries.end(), [](const auto& e) { return e.mountPoint == "/"; });
    if (root == entries.end()) {
        // A changed root need not be a mount point; every native path starts there all the same.
        entries.insert(entries.begin(), MountEntry{.device = "", .mountPoint = "/", .fileSystemType = ""});
    } else {
        std::rotate(entries.begin(), root, root + 1);
    }

    VolumeTable table;
    std::set<std::string> seen;
    for (const MountEntry& entry : entries) {
        const bool isRoot = entry.mountPoint == "/";
        if (!isRoot && Contains(kPseudoFileSystems, entry.fileSystemType)) {
            continue;
        }
        const MountFacts facts = examine(entry);
        if (isRoot || (facts.isFolderWithCapacity && !seen.contains(facts.identity))) {
            seen.insert(facts.identity);
            table.m_volumes.push_back({names.NameOf(entry.mountPoint), entry.mountPoint, entry.fileSystemType});
        }
    }
    return table;
}

std::optional<std::string> VolumeTable::ToNative(std::string_view colonPath) const {
    const std::string_view name = colonPath.substr(0, colonPath.find(':'));
    const auto volume =
        std::find_if(m_volumes.begin(), m_volumes.end(), [&](const Volume& v) { return v.name == name; });
    if (volume == m_volumes.end()) {
        return std::nullopt;
    }
    std::string native = volume->mountPoint == "/" ? "" : volume->mountPoint;
    std::string_view rest = colonPath.substr(std::min(colonPath.size(), name.size() + 1));
    while (!rest.empty()) {
        const std::string_view component = rest.substr(0, rest.find(':'));
        if (!IsConvertibleComponent(component)) {
            return std::nullopt;
        }
        native += '/';
        native += Swapped(component, '/', ':');
        rest.remove_prefix(std::min(rest.size(), component.size() + 1));
    }
    if (native.size() >= PATH_MAX) {
        return std::nullopt;
    }
    return native.empty() ? "/" : native;
}

std::optional<std::string> VolumeTable::ToColon(std::string_view nativePath) const {
    if (!nativePath.starts_with('/') || nativePath.find('\0') != std::string_view::npos) {
        return std::nullopt;
    }
    const std::string native = Normalised(nativePath);
    const Volume* volume = HoldingVolume(native);
    if (volume == nullptr) {
        return std::nullopt;
    }
    std::string_view rest(native);
    rest.remove_prefix(std::min(rest.size(), volume->mountPoint.size()));
    while (rest.starts_with('/')) {
        rest.remove_prefix(1);
    }
    std::string colon = volume->name + ':';
    for (const char c : rest) {
        colon += c == '/' ? ':' : (c == ':' ? '/' : c);
    }
    return colon;
}

const Volume* VolumeTable::HoldingVolume(std::string_view nativePath) const {
    const Volume* best = nullptr;
    for (const Volume& volume : m_volumes) {
        if (LiesIn(nativePath, volume.mountPoint) &&
            (best == nullptr || volume.mountPoint.size() > best->mountPoint.size())) {
            best = &volume;
        }
    }
    return best;
}

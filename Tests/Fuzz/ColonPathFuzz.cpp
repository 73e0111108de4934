#include "Fuzz/FuzzSupport.h"
#include "Platform/Volumes.h"

#include <algorithm>

#include <limits.h>

// The input is taken for a colon path and for a native path.

namespace {

using Fuzz::Require;
using Fuzz::Split;

bool IsName(const std::string& component) {
    return !component.empty() && component != "." && component != ".." && component.size() <= NAME_MAX &&
           component.find('\0') == std::string::npos;
}

/// Whether the system takes the path and it names one place.
bool IsPlain(const std::string& native) {
    const std::vector<std::string> parts = Split(native, '/');
    const bool isOfNames = parts.front().empty() && std::all_of(parts.begin() + 1, parts.end(), IsName);
    return native == "/" || (isOfNames && native.size() < PATH_MAX);
}

std::string Bare(const std::string& colon) {
    return colon.ends_with(':') ? colon.substr(0, colon.size() - 1) : colon;
}

void CheckColonPath(const VolumeTable& table, const std::string& colon) {
    const std::vector<std::string> parts = Split(Bare(colon), ':');
    const std::vector<Volume>& known = table.Volumes();
    const auto volume = std::find_if(known.begin(), known.end(), [&](const Volume& v) { return v.name == parts[0]; });
    const std::optional<std::string> native = table.ToNative(colon);
    if (!native) {
        Require(volume == known.end() || !std::all_of(parts.begin() + 1, parts.end(), IsName) ||
                    colon.size() + volume->mountPoint.size() >= PATH_MAX,
                "a colon path is refused for a reason", colon);
        return;
    }
    Require(volume != known.end() && IsPlain(*native), "a path that can be used comes out", *native);
    Require((*native + '/').starts_with(volume->mountPoint + (volume->mountPoint == "/" ? "" : "/")),
            "it stays in its volume", *native);
    const std::optional<std::string> back = table.ToColon(*native);
    Require(back && table.ToNative(*back) == native, "the way back leads to the same place", colon);
    Require(Bare(*back) == Bare(colon) || table.HoldingVolume(*native)->name != parts[0], "and by the same path",
            colon);
}

void CheckNativePath(const VolumeTable& table, const std::string& native) {
    const std::optional<std::string> colon = table.ToColon(native);
    const bool isUsable = native.starts_with('/') && native.find('\0') == std::string::npos;
    Require(colon.has_value() == isUsable, "absolute native paths have a colon form", native);
    const std::optional<std::string> back = table.ToNative(colon.value_or(""));
    Require(!back || IsPlain(*back), "nothing climbs", native);
    std::string plain;
    for (const std::string& component : Split(native, '/')) {
        plain += component.empty() || component == "." ? "" : '/' + component;
    }
    plain += plain.empty() ? "/" : "";
    if (isUsable && IsPlain(plain)) {
        Require(back == plain, "a native path comes back", native);
    }
}

}  // namespace

void Fuzz::Run(const std::string& input) {
    static const VolumeTable table =
        VolumeTable::FromMountInfo("21 1 8:1 / / rw - ext4 /dev/a rw\n22 21 8:2 / /mnt/Media rw - ext4 b rw\n"
                                   "23 22 8:3 / /mnt/Media/Deep:er rw - ext4 c rw\n"
                                   "24 21 8:4 / /srv/Media rw - ext4 d rw\n25 21 8:5 / /a\\040b rw - xfs e rw\n",
                                   [](const MountEntry& entry) {
                                       return MountFacts{true, entry.device};
                                   });
    CheckColonPath(table, input);
    CheckNativePath(table, input);
}

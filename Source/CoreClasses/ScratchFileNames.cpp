#include "CoreClasses/ScratchFileNames.h"

#include "CoreClasses/IOTestParameters.h"
#include "Platform/FileSystem.h"
#include "Platform/Volumes.h"

#include <cerrno>
#include <optional>

namespace {

constexpr std::int32_t kTries = 13000;

std::int32_t Sum(std::int32_t number, std::int32_t step) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(number) + static_cast<std::uint32_t>(step));
}

}  // namespace

CString ScratchFileNames::Folder(const IOTestParameters& parameters) {
    CString folder = parameters.m_drivePath;
    if (parameters.m_sharedFileInPath) {
        folder.StripFileName();
    }
    if (!folder.EndsWith(":")) {
        folder += ":";
    }
    return folder;
}

bool ScratchFileNames::TakeFree(const CString& folder, IsTaken isTaken, mode_t permissions, std::int32_t& nextNumber,
                                CString& name) {
    const VolumeTable volumes = VolumeTable::Mounted();  // once, not for each of thousands of names
    for (std::int32_t i = 0; i < kTries; ++i) {
        CString candidate = folder;
        candidate += "IOT";
        candidate += Sum(nextNumber, i);
        candidate += ".tio";
        // A name that cannot be converted does not exist.
        const std::optional<std::string> nativePath = volumes.ToNative(candidate.View());
        if (nativePath && isTaken(*nativePath)) {
            continue;
        }
        if (nativePath && FileSystem::CreateNew(*nativePath, permissions) == EEXIST && isTaken(*nativePath)) {
            continue;  // another test was quicker
        }
        nextNumber = Sum(nextNumber, i + 1);
        name = candidate;
        return true;
    }
    return false;
}

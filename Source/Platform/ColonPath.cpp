#include "Platform/ColonPath.h"

#include "Platform/Volumes.h"

#include <filesystem>
#include <system_error>

namespace {

/// Path texts hold 255 characters, one of them for the ':' that callers append.
constexpr std::size_t kLongestDefaultVolume = 254;

}  // namespace

std::optional<std::string> ColonPath::ToNative(std::string_view colonPath) {
    return VolumeTable::Mounted().ToNative(colonPath);
}

std::optional<std::string> ColonPath::FromNative(std::string_view nativePath) {
    return VolumeTable::Mounted().ToColon(nativePath);
}

std::string ColonPath::FromTyped(std::string_view typed) {
    return FromNative(typed).value_or(std::string(typed));
}

std::string ColonPath::DefaultVolume() {
    std::error_code failed;
    const std::string folder = std::filesystem::current_path(failed).string();
    std::string colon = failed ? "" : FromNative(folder).value_or("");
    if (colon.ends_with(':')) {
        colon.pop_back();
    }
    return colon.empty() || colon.size() > kLongestDefaultVolume ? "Root" : colon;
}

#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Conversion between the program's colon paths and native ones, over the volumes mounted at the moment of the call.
/// `VolumeTable` has the rules.
namespace ColonPath {

/// The native path to hand to the system, or none when the path cannot be converted.
[[nodiscard]] std::optional<std::string> ToNative(std::string_view colonPath);

/// The colon form of an absolute native path, or none.
[[nodiscard]] std::optional<std::string> FromNative(std::string_view nativePath);

/// What a person typed as a path: a native path (one that begins with '/') in its colon form, anything else, and a
/// native path that has none, unchanged.
[[nodiscard]] std::string FromTyped(std::string_view typed);

/// The working directory in colon form without a trailing ':', "Root" when it has none or a longer one than a path
/// text can hold.
[[nodiscard]] std::string DefaultVolume();

}  // namespace ColonPath

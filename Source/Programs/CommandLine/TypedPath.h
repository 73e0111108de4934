#pragma once

#include <optional>
#include <string>
#include <string_view>

/// A path as a person typed it on the command line, in both forms.
struct TypedPath {
    std::string colon;                  ///< empty when a native path has none
    std::optional<std::string> native;  ///< none when a colon path cannot be converted with the volumes mounted now

    /// Both forms for a message: "Data:Tests: (/mnt/Data/Tests)".
    [[nodiscard]] std::string Text() const;
};

/// Takes a path that begins with '/' or with "./" or "../", or that has no ':', for a native one (a relative one
/// counts from the working directory), and any other for a colon path.
[[nodiscard]] TypedPath ResolveTypedPath(std::string_view typed);

/// Both forms of a path for a message, or the one that there is.
[[nodiscard]] std::string BothForms(const std::string& colon, const std::optional<std::string>& native);

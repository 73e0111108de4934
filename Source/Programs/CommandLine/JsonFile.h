#pragma once

#include "Platform/FileDescriptor.h"

#include <optional>
#include <string>
#include <string_view>

/// The file that the JSON document goes to. A regular file is replaced in one step, so that it holds one whole document
/// at any moment from the first on; anything else (a pipe, a device) is opened once and gets the last document alone.
class JsonFile {
public:
    /// Makes sure that `nativePath` can be written, and writes `document` where it can be replaced later. Answers why
    /// not.
    [[nodiscard]] std::optional<std::string> Open(const std::string& nativePath, std::string_view document);

    /// Writes the last document. Answers why not.
    [[nodiscard]] std::optional<std::string> Finish(std::string_view document);

private:
    [[nodiscard]] std::optional<std::string> ReplaceFile(std::string_view document) const;

    std::string m_path;        ///< of the regular file, behind all links
    FileDescriptor m_special;  ///< open when the file is not a regular one
};

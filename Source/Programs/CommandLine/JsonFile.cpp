#include "Programs/CommandLine/JsonFile.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr mode_t kPermissions = 0666;

std::string Reason(int errorNumber) {
    return std::generic_category().message(errorNumber);
}

/// 0 or the system's error number.
int WriteAll(const FileDescriptor& file, std::string_view text) {
    while (!text.empty()) {
        const TransferResult result = file.Write(text.data(), text.size());
        if (result.bytes <= 0) {
            return result.bytes < 0 ? result.errorNumber : EIO;
        }
        text.remove_prefix(static_cast<std::size_t>(result.bytes));
    }
    return 0;
}

}  // namespace

std::optional<std::string> JsonFile::Open(const std::string& nativePath, std::string_view document) {
    std::error_code failed;
    const std::filesystem::file_status status = std::filesystem::status(nativePath, failed);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        const int error = m_special.Open(nativePath, O_WRONLY);
        return error != 0 ? std::optional(Reason(error)) : std::nullopt;
    }
    const std::filesystem::path target = std::filesystem::weakly_canonical(nativePath, failed);
    m_path = failed ? nativePath : target.string();
    return ReplaceFile(document);
}

std::optional<std::string> JsonFile::Finish(std::string_view document) {
    if (!m_special.IsOpen()) {
        return ReplaceFile(document);
    }
    const int error = WriteAll(m_special, document);
    return error != 0 ? std::optional(Reason(error)) : std::nullopt;
}

std::optional<std::string> JsonFile::ReplaceFile(std::string_view document) const {
    const std::string temporary = m_path + ".new-" + std::to_string(::getpid());
    FileDescriptor file;
    int error = file.Open(temporary, O_WRONLY | O_CREAT | O_TRUNC, kPermissions);
    if (error != 0) {
        return Reason(error);
    }
    std::error_code failed;
    const std::filesystem::file_status present = std::filesystem::status(m_path, failed);
    if (std::filesystem::exists(present)) {
        std::filesystem::permissions(temporary, present.permissions(), failed);
    }
    error = WriteAll(file, document);
    const int closeError = file.Close();
    error = error != 0 ? error : closeError;
    if (error == 0) {
        std::filesystem::rename(temporary, m_path, failed);
        if (!failed) {
            return std::nullopt;
        }
    }
    const std::string reason = error != 0 ? Reason(error) : failed.message();
    std::filesystem::remove(temporary, failed);
    return reason;
}

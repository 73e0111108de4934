#pragma once

#include "Platform/ColonPath.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

/// A new, empty folder of its own for a test, removed with everything in it. Throws when it cannot be made.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string path =
            (std::filesystem::canonical(std::filesystem::temp_directory_path()) / "gaugeline-XXXXXX").string();
        if (::mkdtemp(path.data()) == nullptr) {
            throw std::runtime_error("no temporary folder " + path);
        }
        m_path = path;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// Native path of the folder, or of something in it.
    [[nodiscard]] std::string Native(std::string_view name = {}) const {
        return name.empty() ? m_path : m_path + '/' + std::string(name);
    }

    /// Colon path of the folder, without a ':' at its end, or of something in it.
    [[nodiscard]] std::string Colon(std::string_view name = {}) const {
        return ColonPath::FromNative(Native(name)).value();
    }

private:
    std::string m_path;
};

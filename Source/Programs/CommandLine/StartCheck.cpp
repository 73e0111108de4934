#include "Programs/CommandLine/StartCheck.h"

#include "CoreClasses/COutputMgr.h"
#include "Platform/FileDescriptor.h"
#include "Platform/FileSystem.h"

#include <filesystem>
#include <system_error>

#include <fcntl.h>

namespace {

constexpr const char* kCannotBeConverted =
    " is no path of this system: no volume has this name, or a component cannot be converted "
    "(--list-volumes shows the volumes)";

constexpr mode_t kLogPermissions = 0666;

std::string Reason(std::error_code error) {
    return error ? " (" + error.message() + ")" : "";
}

std::optional<std::string> ProblemWithFolder(const TestPlan& plan) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(*plan.nativePath, error);
    if (std::filesystem::is_directory(status)) {
        return std::nullopt;
    }
    if (std::filesystem::exists(status)) {
        return plan.PathText() + " is not a folder; --shared-file reads an existing file";
    }
    return plan.PathText() + " cannot be used" + Reason(error);
}

/// A file that is not there yet is made in a folder that is.
std::optional<std::string> ProblemWithSharedFile(const TestPlan& plan) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(*plan.nativePath, error);
    if (std::filesystem::is_directory(status)) {
        return plan.PathText() + " is a folder; --shared-file needs a file";
    }
    if (std::filesystem::exists(status)) {
        return std::nullopt;
    }
    const std::filesystem::file_status folder = std::filesystem::status(FileSystem::FolderOf(*plan.nativePath), error);
    if (std::filesystem::is_directory(folder)) {
        return std::nullopt;
    }
    return plan.PathText() + " cannot be used: its folder is not there" + Reason(error);
}

/// Opens it the way a log is opened, but leaves its content alone.
std::optional<std::string> ProblemWithLog(const std::optional<TypedPath>& log, const char* which) {
    if (!log) {
        return std::nullopt;
    }
    if (!log->native) {
        return std::string(which) + " " + log->Text() + kCannotBeConverted;
    }
    FileDescriptor file;
    const int error = file.Open(*log->native, O_RDWR | O_CREAT, kLogPermissions);
    if (error != 0) {
        return std::string(which) + " " + log->Text() + " cannot be opened" +
               Reason(std::error_code(error, std::generic_category()));
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::string> StartCheck::ProblemWithPath(const TestPlan& plan) {
    if (plan.IsSelfTest()) {
        return std::nullopt;  // it touches no file
    }
    if (!plan.nativePath) {
        return plan.PathText() + kCannotBeConverted;
    }
    return plan.parameters.m_sharedFileInPath ? ProblemWithSharedFile(plan) : ProblemWithFolder(plan);
}

std::optional<std::string> StartCheck::OpenLogs(const TestPlan& plan, COutputMgr& output) {
    for (const auto& problem :
         {ProblemWithLog(plan.errorLog, "the error log"), ProblemWithLog(plan.outputLog, "the output log")}) {
        if (problem) {
            return problem;
        }
    }
    if (plan.errorLog && !output.SetErrorFile(plan.errorLog->colon.c_str())) {
        return "the error log " + plan.errorLog->Text() + " cannot be opened";
    }
    if (plan.outputLog && !output.SetOutputFile(plan.outputLog->colon.c_str())) {
        return "the output log " + plan.outputLog->Text() + " cannot be opened";
    }
    return std::nullopt;
}

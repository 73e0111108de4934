#include "GUI/PathDescription.h"

#include "Framework/Base/LThread.h"
#include "Framework/UI/LApplication.h"
#include "Framework/UI/LWindow.h"
#include "Framework/UI/MainThread.h"
#include "Framework/UI/StandardAlert.h"
#include "Platform/ColonPath.h"
#include "Platform/FileDescriptor.h"
#include "Platform/FileSystem.h"

#include <cerrno>
#include <cstring>
#include <memory>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace {

std::string Reason(int error) {
    return std::generic_category().message(error);
}

std::string Room(const std::string& nativePath) {
    const auto bytes = FileSystem::FreeBytes(nativePath);
    return bytes ? std::to_string(*bytes >> 20) + " MB free" : "free space unknown";
}

std::string DescribeFile(const std::string& native) {
    if (::access(native.c_str(), F_OK) != 0) {
        return "The file is not there yet; the test will make it.";
    }
    if (::access(native.c_str(), R_OK | W_OK) != 0) {
        return "The file cannot be opened: " + Reason(errno) + ".";
    }
    return "The file is there and will be read as it is.";
}

std::string DescribeFolder(const std::string& native) {
    if (::access(native.c_str(), F_OK) != 0) {
        return "The folder cannot be reached: " + Reason(errno) + ".";
    }
    if (::access(native.c_str(), W_OK | X_OK) != 0) {
        return "The folder cannot be written: " + Reason(errno) + "; " + Room(native) + ".";
    }
    return "The folder can be written; " + Room(native) + ".";
}

/// The answers that are still awaited: a number for each question, and the latest question counts.
int& LatestQuestion() {
    static int question = 0;
    return question;
}

/// Asks the storage about a path and hands the answer to the main thread.
class PathQuestion final : public LThread {
public:
    PathQuestion(LWindow& window, PaneIDT pane, std::string path, bool isFile)
        : LThread("path-question"), m_window(&window), m_pane(pane), m_path(std::move(path)), m_isFile(isFile),
          m_number(++LatestQuestion()) {}

    void* Run() override {
        const std::string answer = PathDescription::Of(m_path, m_isFile);
        static_cast<void>(MainThread::RunAndWait([&] { Deliver(answer); }));
        return nullptr;
    }

private:
    void Deliver(const std::string& answer) const {
        if (m_number == LatestQuestion() && LApplication::Instance().IsOpen(m_window)) {
            m_window->SetDescriptorForPaneID(m_pane, LStr255(std::string_view(answer)));
        }
    }

    LWindow* m_window;  ///< looked at only while the application has it open
    PaneIDT m_pane;
    std::string m_path;
    bool m_isFile;
    int m_number;
};

}  // namespace

std::string PathDescription::Of(const std::string& path, bool isFile) {
    const auto native = ColonPath::ToNative(ColonPath::FromTyped(path));
    if (!native) {
        return "There is no such volume or path.";
    }
    return isFile ? DescribeFile(*native) : DescribeFolder(*native);
}

void PathDescription::Show(LWindow& window, PaneIDT pane, const CString& path, bool isFile) {
    CString trimmed = path;
    trimmed.TrimLeft();
    trimmed.TrimRight();
    try {
        LThread::Resume(std::make_unique<PathQuestion>(window, pane, std::string(trimmed.View()), isFile));
    } catch (const std::system_error&) {
        window.SetDescriptorForPaneID(pane, LStr255());  // the note is a help, not a need
    }
}

void PathDescription::TellUnwritableLog(LWindow& window, const CString& path) {
    const auto native = ColonPath::ToNative(path.View());
    FileDescriptor file;
    const int error = native ? file.Open(*native, O_RDWR | O_CREAT, 0666) : ENOENT;
    const std::string explanation = std::string(path.View()) + ": " +
                                    (error != 0 ? Reason(error) : "it cannot be opened") +
                                    ". The test can run without this log.";
    StandardAlert::Show(window, "The log file cannot be written.", explanation);
}

void PathDescription::TellIncompleteLog(LWindow& window, const CString& path) {
    StandardAlert::Show(window, "The log file is not complete.",
                        std::string(path.View()) + ": its storage did not take all lines.");
}

#include "GUI/CLogFilesDlg.h"

#include "Framework/UI/ControlLinks.h"
#include "Framework/UI/Drawing.h"
#include "Framework/UI/FileDialogs.h"
#include "GUI/Commands.h"
#include "Platform/ColonPath.h"

#include <filesystem>

namespace {

constexpr PaneIDT kOutputField = 8;
constexpr PaneIDT kErrorField = 9;

enum LogFilesMessage : MessageT {
    kMessageLogFilesOK = 136,
    kMessageLogFilesCancel = 137,
    kMessageChooseOutput = 138,
    kMessageChooseError = 139
};

constexpr RGBColor kBevelDark{30583, 30583, 30583};

}  // namespace

CLogFilesDlg::CLogFilesDlg(LStream* stream) : LDialogBox(stream) {}

void CLogFilesDlg::FinishCreateSelf() {
    LinkListenerToControls(*this, *this);
}

void CLogFilesDlg::OpenFor(const CString& errorFilePath, const CString& outputFilePath) {
    m_errorFilePath = errorFilePath;
    m_outputFilePath = outputFilePath;
    SetDescriptorForPaneID(kErrorField, m_errorFilePath);
    SetDescriptorForPaneID(kOutputField, m_outputFilePath);
    Show();
    Select();
}

void CLogFilesDlg::ListenToMessage(MessageT message, void* /*ioParam*/) {
    switch (message) {
        case kMessageLogFilesOK:
            Confirm();
            break;
        case kMessageLogFilesCancel:
            CloseWindow();
            break;
        case kMessageChooseOutput:
            DoSaveFile(kOutputField);
            break;
        case kMessageChooseError:
            DoSaveFile(kErrorField);
            break;
        default:
            break;
    }
}

void CLogFilesDlg::Confirm() {
    m_errorFilePath = ColonPath::FromTyped(GetDescriptorForPaneID(kErrorField).View()).c_str();
    m_outputFilePath = ColonPath::FromTyped(GetDescriptorForPaneID(kOutputField).View()).c_str();
    ProcessCommand(kCommandLogPathsAccepted);
    CloseWindow();
}

void CLogFilesDlg::DoSaveFile(PaneIDT field) {
    const char* title =
        field == kErrorField ? "Select Error File Name and Location" : "Select Log File Name and Location";
    const std::string start = ColonPath::ToNative(GetDescriptorForPaneID(field).View()).value_or("");
    FileDialogs::AskSaveFile(*this, title, start, [this, field](const std::string& nativePath) {
        SetDescriptorForPaneID(field, GetFullPath(nativePath));
    });
}

LStr255 CLogFilesDlg::GetFullPath(const std::string& nativePath) {
    std::string colon = ColonPath::FromNative(nativePath).value_or("");
    std::error_code ignored;
    if (!colon.empty() && !colon.ends_with(':') && std::filesystem::is_directory(nativePath, ignored)) {
        colon += ':';
    }
    return colon.size() <= LStr255::kMaxLength ? LStr255(std::string_view(colon)) : LStr255();
}

/// Each field sits in a sunken bevel.
void CLogFilesDlg::FrameField(PaneIDT field) {
    const LPane* pane = FindPaneByID(field);
    if (pane == nullptr) {
        return;
    }
    const Rect inside = pane->FrameInSuperView();
    const Rect bevel = Drawing::SetRect(inside.left - 3, inside.top - 3, inside.right + 3, inside.bottom + 3);
    Drawing::RGBForeColor(kBevelDark);
    Drawing::PenNormal();
    Drawing::FrameRect(bevel);
    Drawing::RGBForeColor(kWhite);
    Drawing::PenSize(2, 2);
    Drawing::MoveTo(bevel.left, bevel.bottom - 2);
    Drawing::LineTo(bevel.right - 2, bevel.bottom - 2);
    Drawing::LineTo(bevel.right - 2, bevel.top);
}

void CLogFilesDlg::DrawSelf() {
    const Drawing::StateSaver saved;
    FrameField(kOutputField);
    FrameField(kErrorField);
    Drawing::RGBBackColor(kWhite);
}

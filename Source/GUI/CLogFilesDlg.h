#pragma once

#include "Framework/Base/LListener.h"
#include "Framework/UI/LWindow.h"
#include "SupportingClasses/CString.h"

#include <string>

/// The window in which the user names the two log files. It touches no file: when confirmed, it keeps the two paths and
/// sends command 3000 to the settings window, which reads them.
class CLogFilesDlg final : public LDialogBox, public LListener {
public:
    explicit CLogFilesDlg(LStream* stream);

    /// Shows the window with the paths in use.
    void OpenFor(const CString& errorFilePath, const CString& outputFilePath);

    /// Colon paths as confirmed; empty for no log.
    [[nodiscard]] const CString& ErrorFilePath() const { return m_errorFilePath; }
    [[nodiscard]] const CString& OutputFilePath() const { return m_outputFilePath; }

    void ListenToMessage(MessageT message, void* ioParam) override;

    /// Lets the user pick a file, whose full path goes into the field with that id.
    void DoSaveFile(PaneIDT field);

    /// The colon path of a native one, with a ':' at the end for a folder; the file need not exist. Empty when it has
    /// none of at most 255 characters.
    [[nodiscard]] static LStr255 GetFullPath(const std::string& nativePath);

    void DrawSelf() override;

protected:
    void FinishCreateSelf() override;

private:
    void Confirm();
    void FrameField(PaneIDT field);

    CString m_errorFilePath;
    CString m_outputFilePath;
};

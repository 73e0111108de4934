#include "GUI/CProgramInfoDlg.h"

#include "Framework/UI/ControlLinks.h"
#include "SupportingClasses/CString.h"

namespace {

constexpr MessageT kMessageInfoOK = 140;

struct InfoText {
    PaneIDT pane;
    int string;
};

constexpr InfoText kTexts[] = {{3, 3}, {6, 26}, {7, 27}, {4, 2}};

}  // namespace

CProgramInfoDlg::CProgramInfoDlg(LStream* stream) : LDialogBox(stream) {}

void CProgramInfoDlg::FinishCreateSelf() {
    LinkListenerToControls(*this, *this);
    CString text;
    for (const InfoText& info : kTexts) {
        text.LoadString(info.string);
        SetDescriptorForPaneID(info.pane, text);
    }
}

void CProgramInfoDlg::ListenToMessage(MessageT message, void* /*ioParam*/) {
    if (message == kMessageInfoOK) {
        CloseWindow();
    }
}

#include "CoreClasses/CIOTester.h"

#include "Framework/Base/LException.h"
#include "Framework/UI/LStdButton.h"
#include "Framework/UI/TRegistrar.h"
#include "GUI/CIOTesterDlg.h"
#include "GUI/CLogFilesDlg.h"
#include "GUI/CPicture.h"
#include "GUI/CProgramInfoDlg.h"
#include "GUI/CScroll.h"
#include "GUI/CSettingsDlg.h"
#include "GUI/CShutDownDlg.h"
#include "GUI/CSlider.h"
#include "GUI/Commands.h"
#include "GUI/DigiString.h"
#include "GUI/Graph.h"
#include "GUI/LColorEditView.h"
#include "GUI/LEditPopupMenu.h"
#include "GUI/LEditPopupView.h"

namespace {

constexpr int kMainLayout = 2128;
constexpr int kAboutLayout = 2132;
constexpr PaneIDT kAboutButton = 5;

}  // namespace

CIOTester::CIOTester() {
    RegisterClasses();
}

void CIOTester::RegisterClasses() {
    PaneClasses::RegisterFrameworkClasses();
    TRegistrar<CIOTesterDlg>::Register("IOTD");
    TRegistrar<CSettingsDlg>::Register("SetD");
    TRegistrar<CLogFilesDlg>::Register("LogD");
    TRegistrar<CProgramInfoDlg>::Register("InfD");
    TRegistrar<CShutDownDlg>::Register("ShtD");
    TRegistrar<LEditPopupMenu>::Register("EPop");
    TRegistrar<LEditPopupView>::Register("PopV");
    TRegistrar<LColorEditView>::Register("EdtV");
    TRegistrar<DigiString>::Register("Digi");
    TRegistrar<CScroll>::Register("Scrl");
    TRegistrar<CSlider>::Register("Sldr");
    TRegistrar<Graph>::Register("Grph");
    TRegistrar<CPicture>::Register("LPic");
}

void CIOTester::StartUp() {
    ObeyCommand(kCommandNew, nullptr);
}

void CIOTester::DisplayLost() {
    if (m_mainWindow != nullptr) {
        m_mainWindow->EndTest();
    }
}

bool CIOTester::ObeyCommand(CommandT command, void* ioParam) {
    switch (command) {
        case kCommandAbout:
            ShowAbout();
            return true;
        case kCommandNew:
            InitializeWindow();
            return true;
        case kCommandQuitNow:
            if (ioParam == nullptr) {
                DoQuit(SaveOption::Ask);
            } else {
                LApplication::DoQuit(SaveOption::Ask);
            }
            return true;
        default:
            return LApplication::ObeyCommand(command, ioParam);
    }
}

bool CIOTester::FindCommandStatus(CommandT command) {
    return command == kCommandNew || LApplication::FindCommandStatus(command);
}

void CIOTester::InitializeWindow() {
    m_mainWindow = ThrowIfNil(dynamic_cast<CIOTesterDlg*>(LWindow::CreateWindow(kMainLayout, this)), "the main window");
    m_mainWindow->Show();
}

void CIOTester::ShowAbout() {
    LWindow* about = LWindow::CreateWindow(kAboutLayout, this);
    ThrowIfNil(FindPane<LStdButton>(*about, kAboutButton), "the button of the About box")->AddListener(this);
    about->Show();
}

void CIOTester::DoQuit(SaveOption option) {
    if (m_mainWindow != nullptr) {
        m_mainWindow->DoClose();
    } else {
        LApplication::DoQuit(option);
    }
}

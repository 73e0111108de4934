#include "CoreClasses/COutputMgr.h"
#include "Framework/Base/LThread.h"
#include "Framework/UI/LApplication.h"
#include "Framework/UI/MainThread.h"
#include "Framework/UI/TRegistrar.h"
#include "Fuzz/FuzzSupport.h"
#include "GUI/CSettingsDlg.h"
#include "GUI/LColorEditView.h"
#include "GUI/LEditPopupMenu.h"
#include "GUI/LEditPopupView.h"
#include "Platform/ColonPath.h"

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>

#include <charconv>
#include <memory>

// The input has what is pasted into the settings window's fields, one a line: the numbers in the order of the table,
// then the path. A byte on the first line picks the form: the custom one shows when it is above 'Z'.

namespace {

using Fuzz::Require;

struct NumberField {
    PaneIDT group;
    std::int64_t least;
    std::int64_t most;  ///< what the worker makes of it fits 32 bits
    const char* complaint;
    std::uint32_t IOTestParameters::*stored;
};

constexpr NumberField kNumbers[] = {
    {300, 1, UINT32_MAX / 60, "Duration must", &IOTestParameters::m_durationMinutes},
    {600, 1, UINT32_MAX / 1024, "Transfer size must", &IOTestParameters::m_transferSizeKB},
    {800, 1, UINT32_MAX, "File size limit must", &IOTestParameters::m_maxFileSizeMB},
    {700, 2, UINT32_MAX - 1, "Transfer rate must", &IOTestParameters::m_transferRateKBps}};
constexpr std::size_t kLongestPath = 255 - std::string_view(":IOT12999.tio").size();
constexpr PaneIDT kPath = 200;

/// The settings window on a platform without a screen.
struct Program {
    Program() {
        PaneClasses::RegisterFrameworkClasses();
        TRegistrar<CSettingsDlg>::Register("SetD");
        TRegistrar<LEditPopupMenu>::Register("EPop");
        TRegistrar<LEditPopupView>::Register("PopV");
        TRegistrar<LColorEditView>::Register("EdtV");
        dialog = dynamic_cast<CSettingsDlg*>(LWindow::CreateWindow(2129, &application));
        dialog->OpenFor({}, output);
        MainThread::StopPasses();  // the window's question about its first path is let go
        static_cast<void>(LThread::JoinFinished(1000));
    }

    [[nodiscard]] LEditPopupView& Group(PaneIDT id) { return dynamic_cast<LEditPopupView&>(*dialog->FindPaneByID(id)); }
    [[nodiscard]] std::string Shown(PaneIDT id) { return Group(id).Field().GetDescriptor().CStr(); }
    void Enter(PaneIDT id, const std::string& text) {
        auto& edit = dynamic_cast<QLineEdit&>(*Group(id).Field().Peer());
        edit.clear();
        edit.insert(QString::fromStdString(text));
    }

    int argumentCount = 0;
    QApplication qt{argumentCount, nullptr};
    LApplication application;
    COutputMgr output;
    CSettingsDlg* dialog = nullptr;
};

/// The whole number at the start of the text; none counts as 0.
std::int64_t NumberIn(const std::string& text) {
    std::string_view rest = text;
    rest.remove_prefix(std::min(rest.size(), rest.find_first_not_of(" \t\n\v\f\r")));
    rest.remove_prefix(rest.starts_with('+') ? 1 : 0);
    std::int64_t number = 0;
    if (std::from_chars(rest.data(), rest.data() + rest.size(), number).ec == std::errc::result_out_of_range) {
        number = rest.starts_with('-') ? INT64_MIN : INT64_MAX;
    }
    return number;
}

std::string TakeReport() {
    std::string text;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* box = qobject_cast<QMessageBox*>(widget); box != nullptr && box->isVisible()) {
            text += box->informativeText().toStdString();
            box->close();
        }
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return text;
}

/// Answers whether the field has a number that a test can have; `stored` is what the window has if it took the entries.
bool CheckNumber(const NumberField& field, const std::string& shown, const std::string& report, std::int64_t stored) {
    const bool isUnlimited = field.least == 2 && shown == "unlimited";
    const std::int64_t typed = isUnlimited ? UINT32_MAX : NumberIn(shown);
    const bool isRight = isUnlimited || (typed >= field.least && typed <= field.most);
    Require((report.find(field.complaint) == std::string::npos) == isRight, "what is wrong is told", shown);
    Require(!report.empty() || stored == typed, "the number is the one that shows", shown);
    return isRight;
}

}  // namespace

void Fuzz::Run(const std::string& input) {
    static const bool hasPlatform = qputenv("QT_QPA_PLATFORM", "offscreen");
    static Program& program = *std::make_unique<Program>().release();  // Qt does not outlive the main function
    const std::vector<std::string> lines = Split(input, '\n');
    if (!hasPlatform || lines.size() != 6 || lines[0].size() != 1) {
        return;
    }
    const bool isCustom = static_cast<unsigned char>(lines[0][0]) > 'Z';
    if (program.dialog->bGetCustomWindow() != isCustom) {
        program.dialog->AdjustSettingWindow();
    }
    for (std::size_t i = 0; i < 4; ++i) {
        program.Enter(kNumbers[i].group, lines[i + 1]);
    }
    program.Enter(kPath, lines[5]);

    std::string path = program.Shown(kPath);
    path.erase(path.find_last_not_of(' ') + 1);
    path = ColonPath::FromTyped(path.substr(std::min(path.size(), path.find_first_not_of(' '))));
    const bool isSaved = program.dialog->SaveSettings();
    const std::string report = TakeReport();
    Require(isSaved == report.empty(), "it is stored or refused", report);
    bool isRight = !path.empty() && path.size() <= kLongestPath;
    Require((report.find("Path for testing must") == std::string::npos) == isRight, "a wrong path is told", path);
    const IOTestParameters& test = program.dialog->Parameters();
    for (const NumberField& field : kNumbers) {
        if (isCustom || &field == kNumbers) {
            isRight = CheckNumber(field, program.Shown(field.group), report, test.*field.stored) && isRight;
        }
    }
    Require(isSaved == isRight && (!isSaved || test.m_drivePath == path), "it is stored when it is right", path);
}

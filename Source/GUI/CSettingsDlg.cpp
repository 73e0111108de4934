#include "GUI/CSettingsDlg.h"

#include "CoreClasses/COutputMgr.h"
#include "CoreClasses/ScratchFileNames.h"
#include "Framework/Base/LException.h"
#include "Framework/UI/ControlLinks.h"
#include "Framework/UI/FileDialogs.h"
#include "Framework/UI/LApplication.h"
#include "Framework/UI/LStdButton.h"
#include "Framework/UI/StandardAlert.h"
#include "GUI/CLogFilesDlg.h"
#include "GUI/Commands.h"
#include "GUI/EditPopupMessages.h"
#include "GUI/LColorEditView.h"
#include "GUI/LEditPopupMenu.h"
#include "GUI/LEditPopupView.h"
#include "GUI/PathDescription.h"
#include "Platform/ColonPath.h"
#include "SupportingClasses/VolumeIterator.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr int kLogFilesLayout = 2134;
constexpr int kFormDifference = 220;
constexpr int kStandardFormDrop = 110;

/// How long the user's typing rests before the storage is asked about the path.
constexpr std::uint32_t kDescribeDelayMS = 250;

enum GroupID : PaneIDT {
    kTestGroup = 100,
    kPathGroup = 200,
    kDurationGroup = 300,
    kAccessGroup = 400,
    kReadWriteGroup = 500,
    kSizeGroup = 600,
    kRateGroup = 700,
    kLimitGroup = 800
};

enum ControlID : PaneIDT {
    kCorvaneBox = 1,
    kReservedABox = 3,
    kLoopBox = 4,
    kSharedFileBox = 5,
    kLogFilesButton = 12,
    kFormButton = 13,
    kReservedBBox = 21,
    kNoCacheBox = 22,
    kPathNote = 30,
    kCustomView = 90
};

enum SettingsMessage : MessageT {
    kMessageSettingsOK = 132,
    kMessageSettingsCancel = 133,
    kMessageLogFiles = 134,
    kMessageSwitchForm = 135,
    kMessageChoosePath = 141
};

constexpr int kWrongEntriesString = 22;

constexpr const char* kUnlimited = "unlimited";

/// Items of the rate popup, in KB/s.
constexpr std::array<std::uint32_t, 9> kRateItems{128, 384, 1024, 3072, 4096, 8192, 16384, 32768, kUnlimitedRate};

/// String-list entries of the popups for the access and the read-write method, by the value that an item stands for.
constexpr std::array<int, 4> kAccessStrings{12, 5, 28, 29};
constexpr std::array<int, 3> kReadWriteStrings{6, 11, 7};

constexpr std::array<const char*, 4> kAccessTexts{"Automatically Select", "MAC File API", "Self-Test", "Posix-Test"};
constexpr std::array<const char*, 3> kReadWriteTexts{"Writes, then Reads (Sequentially)", "Writes Only", "Reads Only"};

template <std::size_t N>
const char* TextOr(const std::array<const char*, N>& texts, std::int32_t value) {
    const bool isKnown = value >= 0 && value < static_cast<std::int32_t>(N);
    return texts[isKnown ? static_cast<std::size_t>(value) : 0];
}

/// A number that a test can be asked for, and how a wrong one is told.
struct NumberEntry {
    std::uint32_t lowest;
    std::uint32_t highest;
    const char* tooLow;
    const char* tooHigh;
};

constexpr NumberEntry kMinutesEntry{1, kMaxDurationMinutes, "Duration must be at least 1 Minute.  ",
                                    "Duration must be at most 71582788 Minutes.  "};
constexpr NumberEntry kSizeEntry{1, kMaxTransferSizeKB, "Transfer size must be at least 1 KB.  ",
                                 "Transfer size must be at most 4194303 KB.  "};
constexpr NumberEntry kRateEntry{2, kMaxTransferRateKBps, "Transfer rate must be at least 2 KB/s.  ",
                                 "Transfer rate must be at most 4294967294 KB/s.  "};
constexpr NumberEntry kLimitEntry{1, std::numeric_limits<std::uint32_t>::max(),
                                  "File size limit must be at least 1 MB.  ",
                                  "File size limit must be at most 4294967295 MB.  "};

/// The whole number at the start of a text, as atoi reads it but held within 64 bits; 0 when there is none.
long long LeadingNumber(const LStr255& text) {
    return std::strtoll(text.CStr(), nullptr, 10);
}

LStr255 Decimal(std::uint32_t number) {
    return LStr255(std::string_view(std::to_string(number)));
}

}  // namespace

struct CSettingsDlg::Entries {
    /// Adds a complaint; the first one's group gets the keyboard.
    void Refuse(PaneIDT group, std::string_view complaint) {
        report += complaint;
        firstWrong = firstWrong != 0 ? firstWrong : group;
    }

    std::uint32_t minutes = 0;
    std::string path;  ///< in colon form
    std::uint32_t transferSizeKB = 0;
    std::uint32_t rateKBps = 0;
    std::uint32_t limitMB = 0;
    std::string report{"Errors found in settings were as follows: "};
    PaneIDT firstWrong = 0;
};

CSettingsDlg::CSettingsDlg(LStream* stream) : LDialogBox(stream) {}

LEditPopupView& CSettingsDlg::Group(PaneIDT id) {
    return *ThrowIfNil(FindPane<LEditPopupView>(*this, id), "group " + std::to_string(id) + " of the settings window");
}

LControl& CSettingsDlg::Control(PaneIDT id) {
    return *ThrowIfNil(FindPane<LControl>(*this, id), "control " + std::to_string(id) + " of the settings window");
}

LStr255 CSettingsDlg::FieldText(PaneIDT group) {
    return Group(group).Field().GetDescriptor();
}

void CSettingsDlg::SetField(PaneIDT group, const LStr255& text) {
    Group(group).Field().SetDescriptor(text);
}

void CSettingsDlg::SetFieldAndTick(PaneIDT group, const LStr255& text) {
    SetField(group, text);
    Group(group).Field().BroadcastMessage(kMatchPopupToField);
}

void CSettingsDlg::EnableField(PaneIDT group, bool isEnabled) {
    LColorEditView& field = Group(group).Field();
    isEnabled ? field.Enable() : field.Disable();
}

bool CSettingsDlg::IsTicked(PaneIDT checkBox) {
    return Control(checkBox).GetValue() != 0;
}

void CSettingsDlg::Tick(PaneIDT checkBox, bool isTicked) {
    Control(checkBox).SetValue(isTicked ? 1 : 0);
}

void CSettingsDlg::FinishCreateSelf() {
    PopulateAllLists();
    LinkListenerToControls(*this, *this);
    PopulateDriveList();
    PopulateProtocolList();
    PopulateReadWriteChoices();
    ShowTestParametersInControls(true);
}

void CSettingsDlg::PopulateAllLists() {
    EnableField(kTestGroup, false);
    SetFieldAndTick(kTestGroup, LStr255("Profile-A Reads (~ 4 MB/second)"));
    SetFieldAndTick(kPathGroup, LStr255("MacintoshHD:"));
    SetFieldAndTick(kDurationGroup, LStr255("2"));
    EnableField(kAccessGroup, false);
    EnableField(kReadWriteGroup, false);
    const auto setIfEmpty = [this](PaneIDT group, const char* text) {
        if (FieldText(group).Length() == 0) {
            SetFieldAndTick(group, LStr255(text));
        }
    };
    setIfEmpty(kAccessGroup, "Automatically Select");
    setIfEmpty(kReadWriteGroup, "Reads Only");
    setIfEmpty(kSizeGroup, "1024");
    setIfEmpty(kRateGroup, "4096 (4 MB / s)");
    setIfEmpty(kLimitGroup, "100");
}

void CSettingsDlg::PopulateDriveList() {
    LEditPopupMenu& popup = Group(kPathGroup).Popup();
    VolumeIterator volume;
    const VolumeIterator end;
    for (++volume; !(volume == end); ++volume) {
        LStr255 item(std::string_view(reinterpret_cast<const char*>(volume.VolumeName()) + 1, volume.VolumeName()[0]));
        item += ":";
        popup.AppendItem(item);
    }
}

void CSettingsDlg::PopulateProtocolList() {
    LEditPopupMenu& popup = Group(kAccessGroup).Popup();
    for (std::size_t i = 0; i < kAccessStrings.size(); ++i) {
        CString text;
        text.LoadString(kAccessStrings[i]);
        popup.SetItemText(static_cast<std::int32_t>(i) + 1, text);
    }
}

void CSettingsDlg::PopulateReadWriteChoices() {
    LEditPopupMenu& popup = Group(kReadWriteGroup).Popup();
    for (std::size_t i = 0; i < kReadWriteStrings.size(); ++i) {
        CString text;
        text.LoadString(kReadWriteStrings[i]);
        popup.SetItemText(static_cast<std::int32_t>(i) + 1, text);
    }
}

void CSettingsDlg::OpenFor(const IOTestParameters& parameters, COutputMgr& outputMgr) {
    m_parameters = parameters;
    m_outputMgr = &outputMgr;
    ShowTestParametersInControls(true);
    vSetCustomWindow(true);
    if (m_parameters.m_standardTestID == kCustomTestID) {
        SetField(kTestGroup, LStr255("Custom"));
        Group(kTestGroup).Popup().Disable();
    } else {
        AdjustSettingWindow();
        MoveBy(0, kStandardFormDrop);
    }
    DescribePath();
    Show();
    Select();
}

void CSettingsDlg::ShowTestParametersInControls(bool showAll) {
    m_parameters.NormalizeStandardParameters();
    if (showAll) {
        SetField(kTestGroup, m_parameters.m_testName);
        Group(kTestGroup).Popup().BroadcastMessage(kMatchPopupToField);
        SetField(kDurationGroup, Decimal(m_parameters.m_durationMinutes));
        SetField(kPathGroup, m_parameters.m_drivePath);
        Tick(kLoopBox, m_parameters.m_loop);
        Tick(kCorvaneBox, m_parameters.m_pathIsCorvane);
        Tick(kReservedABox, m_parameters.m_reservedFlagA);
    }
    if (m_parameters.m_standardTestID == kCustomTestID) {
        ShowCustomSettings();
    }
    m_outputMgr != nullptr ? Control(kLogFilesButton).Enable() : Control(kLogFilesButton).Disable();
}

void CSettingsDlg::ShowCustomSettings() {
    ShowTransferRate();
    SetField(kSizeGroup, Decimal(m_parameters.m_transferSizeKB));
    SetField(kLimitGroup, Decimal(m_parameters.m_maxFileSizeMB));
    Tick(kSharedFileBox, m_parameters.m_sharedFileInPath);
    Tick(kReservedBBox, m_parameters.m_reservedFlagB);
    Tick(kNoCacheBox, m_parameters.m_noCache);
    Group(kAccessGroup).Popup().SetValue(m_parameters.m_fileAccessMethod + 1);
    SetField(kAccessGroup, LStr255(TextOr(kAccessTexts, m_parameters.m_fileAccessMethod)));
    Group(kReadWriteGroup).Popup().SetValue(m_parameters.m_readWriteMethod + 1);
    SetField(kReadWriteGroup, LStr255(TextOr(kReadWriteTexts, m_parameters.m_readWriteMethod)));
}

/// A rate of the popup is shown by its item, whose text then goes into the field; any other is shown as a number.
void CSettingsDlg::ShowTransferRate() {
    const std::uint32_t rate = m_parameters.m_transferRateKBps;
    const auto* const found = std::find(kRateItems.begin(), kRateItems.end(), rate);
    if (found == kRateItems.end()) {
        SetField(kRateGroup, Decimal(rate));
        return;
    }
    if (rate == kUnlimitedRate) {
        SetField(kRateGroup, LStr255(kUnlimited));
    }
    LEditPopupMenu& popup = Group(kRateGroup).Popup();
    const auto item = static_cast<std::int32_t>(found - kRateItems.begin()) + 1;
    if (item == 1) {
        popup.SetValue(2);  // so that item 1 is a change even when it is what shows already
    }
    popup.SetValue(item);
}

void CSettingsDlg::AdjustSettingWindow() {
    m_customWindow ? SwitchToStandardForm() : SwitchToCustomForm();
    AdjustTabOrder();
}

void CSettingsDlg::SwitchToStandardForm() {
    LControl& button = Control(kFormButton);
    LEditPopupMenu& tests = Group(kTestGroup).Popup();
    const Rect frame = CalcLocalFrameRect();
    ResizeWindowTo(frame.Width(), frame.Height() - kFormDifference);
    button.SetDescriptor(LStr255("Custom Test>>>"));
    tests.Enable();
    if (m_parameters.m_standardTestID == kCustomTestID) {
        tests.SetValue(1);
    }
    tests.BroadcastMessage(kPopupItemPicked);
    m_customWindow = false;
}

void CSettingsDlg::SwitchToCustomForm() {
    LControl& button = Control(kFormButton);
    LEditPopupMenu& tests = Group(kTestGroup).Popup();
    const Rect frame = CalcLocalFrameRect();
    ResizeWindowTo(frame.Width(), frame.Height() + kFormDifference);
    button.SetDescriptor(LStr255("<<<Standard Test"));
    m_customWindow = true;
    tests.Disable();
    SetField(kTestGroup, LStr255("Custom"));
    EnableField(kTestGroup, false);
}

/// What the standard form does not show cannot be reached by the keyboard either.
void CSettingsDlg::AdjustTabOrder() {
    for (const PaneIDT group : {kSizeGroup, kRateGroup, kLimitGroup}) {
        EnableField(group, m_customWindow);
    }
    LPane& customView = *ThrowIfNil(FindPaneByID(kCustomView), "the custom part of the settings window");
    m_customWindow ? customView.Show() : customView.Hide();
}

void CSettingsDlg::ListenToMessage(MessageT message, void* /*ioParam*/) {
    switch (message) {
        case kMessageSettingsOK:
            if (SaveSettings()) {
                DoClose();
            }
            break;
        case kMessageSettingsCancel:
            DoClose();
            break;
        case kMessageLogFiles:
            if (m_outputMgr != nullptr) {
                OpenLogFiles();
            }
            break;
        case kMessageSwitchForm:
            AdjustSettingWindow();
            break;
        case kMessageChoosePath:
            ChoosePath();
            break;
        case kFieldEdited:
        case kPopupItemPicked:
            m_describeTask.Start(kDescribeDelayMS, [this] { DescribePath(); });
            break;
        default:
            break;
    }
}

CSettingsDlg::Entries CSettingsDlg::ReadEntries() {
    Entries entries;
    const auto number = [&](PaneIDT group, const NumberEntry& entry) {
        const long long value = LeadingNumber(FieldText(group));
        if (value < entry.lowest) {
            entries.Refuse(group, entry.tooLow);
        } else if (value > entry.highest) {
            entries.Refuse(group, entry.tooHigh);
        }
        return static_cast<std::uint32_t>(value);
    };
    entries.minutes = number(kDurationGroup, kMinutesEntry);
    ReadPath(entries);
    if (m_customWindow) {
        entries.transferSizeKB = number(kSizeGroup, kSizeEntry);
        entries.rateKBps =
            FieldText(kRateGroup) == LStr255(kUnlimited) ? kUnlimitedRate : number(kRateGroup, kRateEntry);
        entries.limitMB = number(kLimitGroup, kLimitEntry);
    }
    return entries;
}

void CSettingsDlg::ReadPath(Entries& entries) {
    CString typed(FieldText(kPathGroup));
    typed.TrimLeft();
    typed.TrimRight();
    entries.path = ColonPath::FromTyped(typed.View());
    const bool namesFile = m_customWindow && IsTicked(kSharedFileBox);
    const std::size_t longest = CString::kMaxLength - (namesFile ? 0 : ScratchFileNames::kNameRoom);
    if (entries.path.empty()) {
        entries.Refuse(kPathGroup, "Path for testing must not be empty.  ");
    } else if (entries.path.size() > longest) {
        entries.Refuse(kPathGroup, "Path for testing must not be longer than " + std::to_string(longest) +
                                       " characters in its colon form.  ");
    }
}

bool CSettingsDlg::SaveSettings() {
    const Entries entries = ReadEntries();
    if (entries.firstWrong != 0) {
        RefuseEntries(entries);
        return false;
    }
    Store(entries);
    ProcessCommand(kCommandSettingsAccepted);
    return true;
}

void CSettingsDlg::RefuseEntries(const Entries& entries) {
    CString message;
    message.LoadString(kWrongEntriesString);
    StandardAlert::Show(*this, message, entries.report);
    LColorEditView& field = Group(entries.firstWrong).Field();
    field.TakeFocus();
    field.SelectAll();
}

void CSettingsDlg::Store(const Entries& entries) {
    if (m_customWindow) {
        m_parameters.m_standardTestID = kCustomTestID;
    } else {
        m_parameters.m_standardTestID = Group(kTestGroup).Popup().GetValue() - 1;
        m_parameters.m_testName = FieldText(kTestGroup).View();
    }
    m_parameters.NormalizeStandardParameters();
    m_parameters.m_durationMinutes = entries.minutes;
    m_parameters.SetPathValue(entries.path.c_str());
    m_parameters.m_loop = IsTicked(kLoopBox);
    m_parameters.m_pathIsCorvane = IsTicked(kCorvaneBox);
    if (!m_customWindow) {
        return;
    }
    m_parameters.m_fileAccessMethod = Group(kAccessGroup).Popup().GetValue() - 1;
    m_parameters.m_readWriteMethod = Group(kReadWriteGroup).Popup().GetValue() - 1;
    m_parameters.m_transferSizeKB = entries.transferSizeKB;
    m_parameters.m_transferRateKBps = entries.rateKBps;
    m_parameters.m_maxFileSizeMB = entries.limitMB;
    m_parameters.m_sharedFileInPath = IsTicked(kSharedFileBox);
    m_parameters.m_reservedFlagB = IsTicked(kReservedBBox);
    m_parameters.m_noCache = IsTicked(kNoCacheBox);
    m_parameters.m_reservedFlagA = IsTicked(kReservedABox);
}

void CSettingsDlg::DoClose() {
    if (LApplication::Instance().IsOpen(m_logFilesDlg)) {
        m_logFilesDlg->CloseWindow();
    }
    LDialogBox::DoClose();
}

void CSettingsDlg::OpenLogFiles() {
    if (LApplication::Instance().IsOpen(m_logFilesDlg)) {
        m_logFilesDlg->Select();
        return;
    }
    auto* dialog = dynamic_cast<CLogFilesDlg*>(CreateWindow(kLogFilesLayout, this));
    m_logFilesDlg = ThrowIfNil(dialog, "the log-files window");
    m_logFilesDlg->OpenFor(CString(m_outputMgr->GetErrFilePath()), CString(m_outputMgr->GetOutFilePath()));
}

bool CSettingsDlg::ObeyCommand(CommandT command, void* ioParam) {
    if (command != kCommandLogPathsAccepted) {
        return LDialogBox::ObeyCommand(command, ioParam);
    }
    ReopenLogs();
    return true;
}

void CSettingsDlg::ReopenLogs() {
    const CLogFilesDlg& chosen = *ThrowIfNil(m_logFilesDlg, "the log-files window");
    m_outputMgr->CloseFiles();
    const std::vector<CString> incomplete = m_outputMgr->TakeIncompleteLogs();
    std::vector<CString> unwritable;
    if (!m_outputMgr->SetErrorFile(chosen.ErrorFilePath().CStr()) && chosen.ErrorFilePath().GetLength() != 0) {
        unwritable.push_back(chosen.ErrorFilePath());
    }
    if (!m_outputMgr->SetOutputFile(chosen.OutputFilePath().CStr()) && chosen.OutputFilePath().GetLength() != 0) {
        unwritable.push_back(chosen.OutputFilePath());
    }
    // An alert that comes before the log-files window is closed loses the keyboard when that is.
    m_tellTask.Start(0, [this, incomplete, unwritable] {
        for (const CString& log : incomplete) {
            PathDescription::TellIncompleteLog(*this, log);
        }
        for (const CString& log : unwritable) {
            PathDescription::TellUnwritableLog(*this, log);
        }
    });
}

void CSettingsDlg::ChoosePath() {
    const std::string start = ColonPath::ToNative(FieldText(kPathGroup).View()).value_or("");
    FileDialogs::AskFolder(*this, "Select Folder To Test", start, [this](const std::string& nativePath) {
        SetFieldAndTick(kPathGroup, LStr255(std::string_view(ColonPath::FromTyped(nativePath + '/'))));
        DescribePath();
    });
}

void CSettingsDlg::DescribePath() {
    PathDescription::Show(*this, kPathNote, CString(FieldText(kPathGroup)), IsTicked(kSharedFileBox));
}

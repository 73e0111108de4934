#pragma once

#include "CoreClasses/IOTestParameters.h"
#include "Framework/Base/LListener.h"
#include "Framework/UI/LTimerTask.h"
#include "Framework/UI/LWindow.h"

#include <cstdint>
#include <string>

class CLogFilesDlg;
class COutputMgr;
class LControl;
class LEditPopupView;

/// The settings window: edits a copy of the test's parameters and, when its entries are valid, stores them there and
/// tells the main window (command 2000). A short standard form, and a custom form 220 pixels taller with the settings
/// that a preset otherwise fixes. Modeless; each opening makes a new window.
class CSettingsDlg final : public LDialogBox, public LListener {
public:
    explicit CSettingsDlg(LStream* stream);

    /// Shows the window for these parameters: the custom form for a custom test, else the standard form. `outputMgr`
    /// outlives the window.
    void OpenFor(const IOTestParameters& parameters, COutputMgr& outputMgr);

    /// The edited record: what was opened, until a `SaveSettings` succeeds.
    [[nodiscard]] const IOTestParameters& Parameters() const { return m_parameters; }

    /// The log-files window goes with it.
    void DoClose() override;

    void ListenToMessage(MessageT message, void* ioParam) override;
    /// Command 3000: the log paths have been accepted; both files are closed and opened anew.
    bool ObeyCommand(CommandT command, void* ioParam) override;

    void ShowTestParametersInControls(bool showAll);
    void ShowCustomSettings();
    /// Switches between the standard and the custom form.
    void AdjustSettingWindow();
    void AdjustTabOrder();

    /// Checks the entries and stores them. False, with one alert that lists everything wrong and nothing stored, when
    /// they are not valid.
    bool SaveSettings();

    [[nodiscard]] bool bGetCustomWindow() const { return m_customWindow; }
    void vSetCustomWindow(bool isCustom) { m_customWindow = isCustom; }

protected:
    void FinishCreateSelf() override;

private:
    /// What the fields say, read and checked.
    struct Entries;

    void PopulateAllLists();
    void PopulateDriveList();
    void PopulateProtocolList();
    void PopulateReadWriteChoices();

    void SwitchToStandardForm();
    void SwitchToCustomForm();
    void ShowTransferRate();
    [[nodiscard]] Entries ReadEntries();
    void ReadPath(Entries& entries);
    void Store(const Entries& entries);
    void RefuseEntries(const Entries& entries);

    void OpenLogFiles();
    void ReopenLogs();
    void ChoosePath();
    void DescribePath();

    [[nodiscard]] LEditPopupView& Group(PaneIDT id);
    [[nodiscard]] LControl& Control(PaneIDT id);
    [[nodiscard]] LStr255 FieldText(PaneIDT group);
    void SetField(PaneIDT group, const LStr255& text);
    void SetFieldAndTick(PaneIDT group, const LStr255& text);
    void EnableField(PaneIDT group, bool isEnabled);
    [[nodiscard]] bool IsTicked(PaneIDT checkBox);
    void Tick(PaneIDT checkBox, bool isTicked);

    IOTestParameters m_parameters;
    COutputMgr* m_outputMgr = nullptr;
    bool m_customWindow = false;
    CLogFilesDlg* m_logFilesDlg = nullptr;
    LTimerTask m_describeTask;
    LTimerTask m_tellTask;
};

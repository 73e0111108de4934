#pragma once

#include "Framework/Base/LBroadcaster.h"
#include "Framework/Base/LCommander.h"

/// The numbers by which windows, controls and menus are wired.

/// Commands of the program, besides the framework's.
enum ProgramCommand : CommandT {
    kCommandQuitNow = 1000,           ///< with a parameter: quit without asking the main window
    kCommandSettingsAccepted = 2000,  ///< from the settings window to the main window
    kCommandLogPathsAccepted = 3000   ///< from the log-files window to the settings window
};

/// Messages of the main window's controls.
enum MainWindowMessage : MessageT {
    kMessageSettings = 128,
    kMessageMinimise = 130,
    kMessageClose = 131,
    kMessageStart = 250,
    kMessageStop = 350,
    kMessageScrolled = 550,
    kMessageScrollBack = 560,
    kMessageScrollForward = 570,
    kMessageTimeSpan = 650
};

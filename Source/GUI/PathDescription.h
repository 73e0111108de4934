#pragma once

#include "Framework/UI/LPane.h"
#include "SupportingClasses/CString.h"

#include <string>

class LWindow;

/// What windows tell about a path that the user typed, before anything is done with it.
namespace PathDescription {

/// In one sentence: whether the place exists and can be written, and how much room it has. Asks the storage, and so may
/// block for as long as that does. `isFile`: the path names a file to read.
[[nodiscard]] std::string Of(const std::string& path, bool isFile);

/// Shows the description in a text pane of the window as soon as the storage has answered; asks on a thread of its own.
/// A later call for the same window makes an earlier answer void.
void Show(LWindow& window, PaneIDT pane, const CString& path, bool isFile);

/// Tells at once, in an alert of the window, that a log cannot be written, with the path and the system's reason.
void TellUnwritableLog(LWindow& window, const CString& path);

/// Tells in an alert of the window that a log which has been closed lacks lines.
void TellIncompleteLog(LWindow& window, const CString& path);

}  // namespace PathDescription

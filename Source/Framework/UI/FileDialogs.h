#pragma once

#include <functional>
#include <string>

class LWindow;

/// The system's dialogs for choosing files, modal to one window. They return at once; the answer comes by callback, on
/// the main thread, and not at all when the user cancels or the window goes.
namespace FileDialogs {

using Chosen = std::function<void(const std::string& nativePath)>;

/// A file to write; it need not exist yet. `startPath` (native) may be empty.
void AskSaveFile(LWindow& window, const std::string& title, const std::string& startPath, Chosen chosen);

/// An existing folder.
void AskFolder(LWindow& window, const std::string& title, const std::string& startPath, Chosen chosen);

}  // namespace FileDialogs

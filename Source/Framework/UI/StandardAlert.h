#pragma once

#include "Framework/Base/LStr255.h"

#include <functional>

class LWindow;

/// A plain alert with one OK button: what happened, and what to do next.
namespace StandardAlert {

/// Shows the alert in the middle of its window, which takes no input until it is answered; returns at once. A window
/// shows one alert at a time, in the order of the calls. `answered` is called when the user has closed it, and never
/// when the window goes before. Throws `LNilPointerException` for a window that is not built.
void Show(LWindow& window, TextArgument message, TextArgument explanation, std::function<void()> answered = {});

}  // namespace StandardAlert

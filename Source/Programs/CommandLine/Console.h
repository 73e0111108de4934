#pragma once

#include <cstddef>
#include <functional>
#include <ostream>
#include <string_view>

/// The two streams of the headless program: results go to `out`, progress and diagnostics to `err`.
struct Console {
    std::ostream& out;
    std::ostream& err;
    bool outHasColour = false;
    bool errHasColour = false;
    bool errIsLive = false;                     ///< `err` is a terminal on which a line can be redrawn
    std::function<std::size_t()> errColumns{};  ///< its present width; asked only when it is live

    /// The process's own. Colours only on terminals, and not with NO_COLOR set or on a dumb terminal.
    [[nodiscard]] static Console System();
};

enum class Colour { Plain, Green, Yellow, Red };

/// The text in that colour, or as it is where there are no colours.
[[nodiscard]] std::string Coloured(std::string_view text, Colour colour, bool hasColour);
